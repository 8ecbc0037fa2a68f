#include "platform/gtk/GTKPicturePresentation.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "platform/appkit/NSView.h"
#include "platform/appkit/NSWindow.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/gtk/GTKControl.h"
#include "platform/gtk/GTKRoot.h"
#include "platform/gtk/toExtent.h"
#include "platform/gtk/toGskTransform.h"
#include "platform/gtk/toRoundedRect.h"

namespace orvane::platform {

namespace {

// The limit of Cairo's images, in pixels.
constexpr int kLongestSide = 32767;

graphene_rect_t toGraphene(const CGRect& rect) {
    const CGRect r = standardized(rect);
    return {{static_cast<float>(r.origin.x), static_cast<float>(r.origin.y)},
            {static_cast<float>(r.size.width), static_cast<float>(r.size.height)}};
}

}  // namespace

GTKPicturePresentation::GTKPicturePresentation(GTKRoot& root)
    : root_(root), shield_(std::make_unique<GTKShield>(root, [this](CGPoint point) {
          return routePointer(point);
      })) {
    clipControls();
}

GTKPicturePresentation::~GTKPicturePresentation() {
    for (const auto& [view, control] : controls_) {
        control.realization->widget().unparent();
    }
}

void GTKPicturePresentation::add(NSView& view) {
    compositor_.add(view);
}

void GTKPicturePresentation::setControl(NSView& view, GTKControl* control) {
    compositor_.setNative(view, control != nullptr);
    if (const auto found = controls_.find(&view); found != controls_.end()) {
        found->second.realization->widget().unparent();
        controls_.erase(found);
        root_.queue_draw();
        clipControls();
    }
    if (control != nullptr) {
        // In front of all widgets but the shield. GTK asks the last child first who takes the
        // pointer.
        gtk_widget_insert_before(control->widget().gobj(), root_.gobj(), shield_->gobj());
        controls_.emplace(&view, Control{control, {}, {}});
        clipControls();
    }
}

// The pictures end at the root's edges; only widgets can reach beyond them. A clip costs time in
// every frame.
void GTKPicturePresentation::clipControls() {
    const auto overflow = controls_.empty() ? Gtk::Overflow::VISIBLE : Gtk::Overflow::HIDDEN;
    if (root_.get_overflow() != overflow) {
        root_.set_overflow(overflow);
    }
}

void GTKPicturePresentation::remove(NSView& view) {
    setControl(view, nullptr);
    compositor_.remove(view);
    if (&view == contentView_) {
        contentView_ = nullptr;
    }
}

void GTKPicturePresentation::reorder(NSView& superview) {
    compositor_.reorder(superview);
}

void GTKPicturePresentation::change(NSView& view, unsigned changes, double) {
    if ((changes & (kNSViewGeometryChanged | kNSViewHiddenChanged | kNSViewOpacityChanged)) != 0) {
        compositor_.change(view);
    }
    if ((changes & kNSViewBackgroundChanged) != 0) {
        compositor_.recolor(view);
    }
}

void GTKPicturePresentation::paint(NSView& view, std::span<const NSBackingRect> rects) {
    compositor_.painted(view, rects);
}

void GTKPicturePresentation::resize(CGSize size, double scale) {
    const int width = std::clamp(toExtent(size.width * scale), 1, kLongestSide);
    const int height = std::clamp(toExtent(size.height * scale), 1, kLongestSide);
    if (compositor_.bounds() != NSBackingRect{0, 0, width, height} ||
        compositor_.scale() != scale) {
        compositor_.setImage(width, height, scale);
    }
    root_.queue_allocate();
}

void GTKPicturePresentation::present(NSView* contentView, double time) {
    contentView_ = contentView;
    const std::span<const NSBackingRect> composed = compositor_.compose(contentView, time);
    if (composed.empty() && controls_.empty()) {
        return;
    }
    while (pictures_.size() > compositor_.pictureCount()) {
        pictures_.pop_back();
    }
    while (pictures_.size() < compositor_.pictureCount()) {
        pictures_.emplace_back();
    }
    for (std::size_t i = 0; i < pictures_.size(); ++i) {
        OffscreenCompositor::Picture picture = compositor_.picture(i);
        pictures_[i].show(std::move(picture.pixels), picture.area, picture.isOpaque,
                          compositor_.scale());
    }
    if (!composed.empty()) {
        damage_.set(composed, compositor_.scale());
        root_.queue_draw();
    }
    if (!controls_.empty()) {
        takeControls();
    }
}

// Takes over where the controls are, and in which order.
void GTKPicturePresentation::takeControls() {
    bool isMoved = false;
    for (auto& [view, control] : controls_) {
        const OffscreenCompositor::NativePlace place = OffscreenCompositor::placeOfNative(*view);
        const CGSize size = view->frame().size;
        isMoved = isMoved || place != control.place || size != control.size;
        control.place = place;
        control.size = size;
    }
    if (isMoved) {
        root_.queue_allocate();
        root_.queue_draw();
    }
}

bool GTKPicturePresentation::routePointer(CGPoint point) const {
    if (contentView_ == nullptr || controls_.empty()) {
        return false;
    }
    const NSView* const hit = contentView_->hitTest(point);
    if (hit == nullptr || !controls_.contains(hit)) {
        return hit != nullptr;
    }
    for (const auto& [view, control] : controls_) {
        Gtk::Widget& widget = control.realization->widget();
        if (widget.get_can_target() != (view == hit)) {
            widget.set_can_target(view == hit);
        }
    }
    return false;
}

void GTKPicturePresentation::allocate() {
    const CGSize size = root_.size();
    gtk_widget_allocate(shield_->gobj(), toExtent(size.width), toExtent(size.height), -1, nullptr);
    for (const auto& [view, control] : controls_) {
        allocateControl(control);
    }
}

void GTKPicturePresentation::allocateControl(const Control& control) const {
    Gtk::Widget& widget = control.realization->widget();
    const double pointsPerPixel = 1 / compositor_.scale();
    const CGAffineTransform place =
        control.place.toImage.concat({pointsPerPixel, 0, 0, pointsPerPixel, 0, 0});
    const bool isShown = control.place.isShown && canShow(place) &&
                         !std::isnan(control.size.width) && !std::isnan(control.size.height);
    widget.set_child_visible(isShown);
    if (isShown) {
        // GTK does not allocate less than the minimum size: the widget then extends beyond its
        // view.
        GtkRequisition least;
        gtk_widget_get_preferred_size(widget.gobj(), &least, nullptr);
        gtk_widget_allocate(widget.gobj(), std::max(toExtent(control.size.width), least.width),
                            std::max(toExtent(control.size.height), least.height), -1,
                            toGskTransform(place));
    }
}

void GTKPicturePresentation::snapshotControl(const Control& control, GtkSnapshot* snapshot) const {
    const OffscreenCompositor::NativePlace& place = control.place;
    const double pointsPerPixel = 1 / compositor_.scale();
    const auto toRoot = [&](const OffscreenClip& mask) {
        return mask.toImage.concat({pointsPerPixel, 0, 0, pointsPerPixel, 0, 0});
    };
    if (place.visible.isEmpty() ||
        !std::ranges::all_of(place.masks,
                             [&](const OffscreenClip& mask) { return canShow(toRoot(mask)); })) {
        return;
    }
    const bool isCut = place.visible != compositor_.bounds();
    if (isCut) {
        const graphene_rect_t visible = toGraphene(place.visible.toPoints(compositor_.scale()));
        gtk_snapshot_push_clip(snapshot, &visible);
    }
    for (const OffscreenClip& mask : place.masks) {
        const GskRoundedRect inside =
            toRoundedRect(mask.rect, {mask.cornerRadius, mask.cornerRadius});
        GskTransform* const transform = toGskTransform(toRoot(mask));
        GskTransform* const inverse = gsk_transform_invert(gsk_transform_ref(transform));
        // Only the clip is under the transform.
        gtk_snapshot_save(snapshot);
        gtk_snapshot_transform(snapshot, transform);
        gtk_snapshot_push_rounded_clip(snapshot, &inside);
        gtk_snapshot_transform(snapshot, inverse);
        gsk_transform_unref(inverse);
        gsk_transform_unref(transform);
    }
    if (place.opacity < 1) {
        gtk_snapshot_push_opacity(snapshot, place.opacity);
    }
    gtk_widget_snapshot_child(root_.Gtk::Widget::gobj(), control.realization->widget().gobj(),
                              snapshot);
    if (place.opacity < 1) {
        gtk_snapshot_pop(snapshot);
    }
    for (std::size_t i = 0; i < place.masks.size(); ++i) {
        gtk_snapshot_pop(snapshot);
        gtk_snapshot_restore(snapshot);
    }
    if (isCut) {
        gtk_snapshot_pop(snapshot);
    }
}

void GTKPicturePresentation::snapshot(GtkSnapshot* snapshot) {
    // In drawing order.
    std::vector<const Control*> controls;
    for (const auto& [view, control] : controls_) {
        controls.push_back(&control);
    }
    std::ranges::sort(controls, {}, [](const Control* control) { return control->place.picture; });
    if (const std::optional<CGColor> color = compositor_.backdropColor()) {
        const CGRect area = compositor_.bounds().toPoints(compositor_.scale());
        const graphene_rect_t bounds = {
            {0, 0}, {static_cast<float>(area.size.width), static_cast<float>(area.size.height)}};
        const GdkRGBA rgba = {static_cast<float>(color->red), static_cast<float>(color->green),
                              static_cast<float>(color->blue), 1};
        gtk_snapshot_append_color(snapshot, &rgba, &bounds);
    }
    std::size_t next = 0;
    for (std::size_t i = 0; i < pictures_.size(); ++i) {
        for (; next < controls.size() && controls[next]->place.picture <= static_cast<int>(i);
             ++next) {
            snapshotControl(*controls[next], snapshot);
        }
        pictures_[i].append(snapshot);
    }
    damage_.append(snapshot);
}

}  // namespace orvane::platform
