#include "platform/gtk/GTKTexturePresentation.h"

#include <memory>
#include <utility>

#include "platform/appkit/NSView.h"
#include "platform/appkit/NSWindow.h"
#include "platform/gtk/GTKRoot.h"
#include "platform/gtk/GTKView.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::platform {

void GTKTexturePresentation::add(NSView& view) {
    auto owned = std::make_unique<GTKView>();
    GTKView& widget = *owned;
    Gtk::Widget* const parent = view.superview() != nullptr
                                    ? static_cast<Gtk::Widget*>(GTKView::of(*view.superview()))
                                    : &root_;
    view.setRealization(std::move(owned));
    widget.set_parent(*parent);
    change(view, kNSViewGeometryChanged | kNSViewOpacityChanged | kNSViewBackgroundChanged,
           CACurrentMediaTime());
}

void GTKTexturePresentation::setControl(NSView& view, GTKControl* control) {
    GTKView::of(view)->setControl(control);
}

void GTKTexturePresentation::reorder(NSView& superview) {
    GTKView::of(superview)->takeOrder(superview);
}

void GTKTexturePresentation::change(NSView& view, unsigned changes, double time) {
    GTKView& widget = *GTKView::of(view);
    if ((changes & (kNSViewGeometryChanged | kNSViewHiddenChanged)) != 0) {
        widget.takePlace(view, time);
    }
    if ((changes & kNSViewOpacityChanged) != 0) {
        widget.takeOpacity(view, time);
    }
    if ((changes & kNSViewBackgroundChanged) != 0) {
        widget.takeBackground(view);
    }
}

void GTKTexturePresentation::paint(NSView& view, std::span<const NSBackingRect> rects) {
    GTKView::of(view)->takeTiles(view, rects);
}

void GTKTexturePresentation::resize(CGSize, double) {
    root_.queue_allocate();
}

void GTKTexturePresentation::allocate() {
    for (Gtk::Widget* child = root_.get_first_child(); child != nullptr;
         child = child->get_next_sibling()) {
        if (GTKView* const content = GTKView::in(*child)) {
            content->allocate();
        }
    }
}

void GTKTexturePresentation::snapshot(GtkSnapshot* snapshot) {
    GTKView::snapshotChildren(root_, snapshot);
}

}  // namespace orvane::platform
