#pragma once

#include <gtkmm/widget.h>

#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "platform/appkit/NSBackingRect.h"
#include "platform/appkit/NSView.h"
#include "platform/gtk/GTKTiles.h"

namespace orvane::platform {

class GTKClip;
class GTKControl;

// The widget that shows one view where a GPU composes: its background, then its pixels or the
// desktop's control, then the widgets of its subviews. GTK moves, rotates, fades, orders and picks
// it; none of that paints.
//
// The operations named take... copy what the view shows, because GTK lays out and draws outside the
// display pass, when views may have changed or left. Main thread only.
class GTKView final : public Gtk::Widget, public NSViewRealization {
public:
    // Copies nothing yet.
    GTKView();
    ~GTKView() override;

    // Shows a control in front of the background. It is borrowed, and may be null.
    void setControl(GTKControl* control);
    // Returns the widget of a view, or null if the view is not shown by one.
    static GTKView* of(const NSView& view);

    // ---- copying what the view shows, at a media time ----
    void takePlace(const NSView& view, double time);
    void takeOpacity(const NSView& view, double time);
    void takeBackground(const NSView& view);
    void takeTiles(const NSView& view, std::span<const NSBackingRect> rects);
    // Puts the widgets of the subviews into their drawing order.
    void takeOrder(const NSView& view);

    // ---- called by the parent's layout and drawing ----
    // The widget in the parent: the view's own, or the outermost of its clips.
    Gtk::Widget& outermost();
    // Returns the view whose outermost widget it is; null for none.
    static GTKView* in(Gtk::Widget& outermost);
    // Lays the widget out in its parent's coordinates.
    void allocate();
    // Hides the views in `parent` from assistive technology, which finds elements instead, except
    // those that contain a control. Returns whether there are any.
    static bool exposeControls(Gtk::Widget& parent);
    // Gives a widget that only contains others a role and an empty name.
    static void makePlainGroup(Gtk::Widget& widget);
    // Draws the widgets in `parent`, each as a group with its opacity.
    static void snapshotChildren(Gtk::Widget& parent, GtkSnapshot* snapshot);

protected:
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    bool isExposed_ = true;  // to assistive technology

    void takeClips(const std::vector<NSViewClip>& clips);
    // Lays the clips out, each in the one around it. Returns what maps the superview's coordinates
    // to those of the innermost clip; none if nothing is shown.
    std::optional<CGAffineTransform> allocateClips();
    void layParentOut();
    static void snapshotGroup(Gtk::Widget& parent, GTKView& view, double opacity,
                              GtkSnapshot* snapshot);
    // Draws a view together with the views that it replaces in a cross-fade.
    static void snapshotFade(Gtk::Widget& parent, GTKView& topmost, GtkSnapshot* snapshot);
    // Records which sibling the view replaces in a cross-fade; null for none.
    void linkFade(GTKView* from);

    CGSize size_;
    CGAffineTransform transform_;  // to the superview
    std::vector<NSViewClip> clips_;
    std::vector<std::unique_ptr<GTKClip>> clipWidgets_;  // of clips_, the outermost one first
    bool shown_ = false;
    double opacity_ = 1;
    // The siblings that this view replaces, and that replaces it, in a cross-fade. The links are
    // always mutual, and the destructor removes them.
    GTKView* fadesFrom_ = nullptr;
    GTKView* fadesInto_ = nullptr;
    CGColor background_;
    GTKTiles tiles_;
    GTKControl* control_ = nullptr;
};

}  // namespace orvane::platform
