#pragma once

#include <gtkmm/widget.h>

#include <memory>
#include <span>

#include "platform/appkit/NSBackingRect.h"
#include "platform/appkit/NSView.h"
#include "platform/gtk/GTKTiles.h"

namespace orvane::platform {

class GTKControl;

// The widget that shows one view: its background, its pixels or the desktop's own control, then the
// widgets of its subviews. GTK moves, turns, fades, stacks and picks it; none of that paints.
//
// GTK lays out and draws outside the display pass, when views may have changed again or gone. So
// the widget keeps all that it shows and looks at no view then. Main thread only.
class GTKView final : public Gtk::Widget, public NSViewRealization {
public:
    // What the view shows at a time is taken over later, by the operations below.
    explicit GTKView(NSView& view);
    ~GTKView() override;

    // The widget of a view that is in a GTKWindow; null for another.
    static GTKView* of(const NSView& view);

    // ---- taking the view over, as it shows at a media time ----
    void takePlace(const NSView& view, double time);
    void takeOpacity(const NSView& view, double time);
    void takeBackground(const NSView& view);
    void takeControlState();
    void takeTiles(const NSView& view, std::span<const NSBackingRect> rects);
    // Puts the widgets of the subviews into their drawing order.
    void takeOrder(const NSView& view);

    // ---- for the parent's layout and drawing ----
    // Lays the widget out in its parent's coordinates.
    void allocate();
    // Draws the widgets in `parent`, each with its opacity as a group.
    static void snapshotChildren(Gtk::Widget& parent, const Glib::RefPtr<Gtk::Snapshot>& snapshot);

protected:
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    void layParentOut();
    static void snapshotGroup(Gtk::Widget& parent, GTKView& view, double opacity,
                              const Glib::RefPtr<Gtk::Snapshot>& snapshot);
    // Draws a view together with the views that it replaces in a cross-fade.
    static void snapshotFade(Gtk::Widget& parent, GTKView& topmost,
                             const Glib::RefPtr<Gtk::Snapshot>& snapshot);
    // Records which sibling the view replaces in a cross-fade; null for none.
    void linkFade(GTKView* from);

    CGSize size_;
    CGAffineTransform transform_;  // to the superview
    bool shown_ = false;
    double opacity_ = 1;
    // The siblings that this view replaces, and that replaces it, in a cross-fade. The links are
    // always mutual, and the destructor removes them.
    GTKView* fadesFrom_ = nullptr;
    GTKView* fadesInto_ = nullptr;
    CGColor background_;
    GTKTiles tiles_;
    std::unique_ptr<GTKControl> control_;
};

}  // namespace orvane::platform
