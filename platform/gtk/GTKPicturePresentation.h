#pragma once

#include <deque>
#include <map>
#include <memory>

#include "platform/gtk/GTKPicture.h"
#include "platform/gtk/GTKPresentation.h"
#include "platform/gtk/GTKShield.h"
#include "platform/offscreen/OffscreenCompositor.h"

namespace orvane::platform {

class GTKControl;

// Composes the views into pictures, as an off-screen window does, and gives GTK these and where
// they changed. Without a GPU that costs a small part of what GTK's own composing costs.
//
// Controls are widgets in the root, each between the picture of the views behind it and the picture
// of those in front of it.
class GTKPicturePresentation final : public GTKPresentation {
public:
    // The root is borrowed.
    explicit GTKPicturePresentation(GTKRoot& root);
    ~GTKPicturePresentation() override;

    void add(NSView& view) override;
    void setControl(NSView& view, GTKControl* control) override;
    void remove(NSView& view) override;
    void reorder(NSView& superview) override;
    void change(NSView& view, unsigned changes, double time) override;
    void paint(NSView& view, std::span<const NSBackingRect> rects) override;
    void present(NSView* contentView, double time) override;
    void resize(CGSize size, double scale) override;
    void allocate() override;
    void snapshot(GtkSnapshot* snapshot) override;

private:
    struct Control {
        GTKControl* realization;
        CGSize size;
        OffscreenCompositor::NativePlace place;
    };

    void clipControls();
    void takeControls();
    // Returns whether a painted view gets the pointer at a point. If a control does, makes it the
    // only one that can: GTK asks them in the order in which they were added, and knows no clips.
    bool routePointer(CGPoint point) const;
    void allocateControl(const Control& control) const;
    void snapshotControl(const Control& control, GtkSnapshot* snapshot) const;

    GTKRoot& root_;
    OffscreenCompositor compositor_{OffscreenCompositor::Backdrop::LeftToWindow};
    std::deque<GTKPicture> pictures_;
    GTKDamage damage_;
    std::map<const NSView*, Control> controls_;
    NSView* contentView_ = nullptr;  // of the last display pass; null once it left
    std::unique_ptr<GTKShield> shield_;
};

}  // namespace orvane::platform
