#pragma once

#include <gtkmm/snapshot.h>

#include <memory>
#include <span>

#include "platform/appkit/NSBackingRect.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class GTKControl;
class GTKRoot;
enum class GTKRendererKind;
class NSView;

// How a GTKWindow shows its views. There are two ways: GTKTexturePresentation where a GPU composes,
// GTKPicturePresentation where the processor does.
//
// The window forwards what NSWindow reports about its views. GTK lays out and draws outside the
// display pass, when views may have changed or left; so a presentation keeps all that it shows, and
// allocate() and snapshot() access no view. Main thread only.
class GTKPresentation {
public:
    virtual ~GTKPresentation() = default;

    // See NSWindow::didAddView and the operations after it. add() sets the view's realization.
    virtual void add(NSView& view) = 0;
    // Shows a view by a widget; null, as at first, for a view that paints or is not shown. The
    // widget is borrowed until the next call or remove(), and has no parent before and after.
    virtual void setControl(NSView& view, GTKControl* control) = 0;
    virtual void remove(NSView&) {}
    virtual void reorder(NSView& superview) = 0;
    // `time` is the media time of the display pass.
    virtual void change(NSView& view, unsigned changes, double time) = 0;
    virtual void paint(NSView& view, std::span<const NSBackingRect> rects) = 0;
    // At the end of a display pass. `contentView` may be null.
    virtual void present(NSView*, double) {}

    // The window's content has this size in points, with so many pixels per point. Called before
    // the first view is added, and at every change.
    virtual void resize(CGSize size, double scale) = 0;
    // Lays out the widgets in the root.
    virtual void allocate() = 0;
    // Draws in the coordinates of the root.
    virtual void snapshot(GtkSnapshot* snapshot) = 0;

    // Creates the presentation that suits a renderer. The root is borrowed.
    static std::unique_ptr<GTKPresentation> create(GTKRendererKind kind, GTKRoot& root);
};

}  // namespace orvane::platform
