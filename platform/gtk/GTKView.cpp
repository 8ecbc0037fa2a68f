#include "platform/gtk/GTKView.h"

#include <gdkmm/rgba.h>
#include <gtk/gtk.h>
#include <gtkmm/snapshot.h>

#include <algorithm>
#include <cmath>

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/gtk/GTKClip.h"
#include "platform/gtk/GTKControl.h"
#include "platform/gtk/toExtent.h"
#include "platform/gtk/toGskTransform.h"
#include "platform/quartzcore/CALayer.h"

namespace orvane::platform {

namespace {

void appendChild(Gtk::Widget& parent, Gtk::Widget& child, GtkSnapshot* snapshot) {
    gtk_widget_snapshot_child(parent.gobj(), child.gobj(), snapshot);
}

}  // namespace

GTKView::GTKView() : Glib::ObjectBase("OrvaneView") {
    makePlainGroup(*this);
}

GTKView::~GTKView() {
    linkFade(nullptr);
    if (fadesInto_ != nullptr) {
        fadesInto_->linkFade(nullptr);
    }
    setControl(nullptr);
    if (get_parent() != nullptr) {
        unparent();
    }
    while (!clipWidgets_.empty()) {
        if (clipWidgets_.back()->get_parent() != nullptr) {
            clipWidgets_.back()->unparent();
        }
        clipWidgets_.pop_back();
    }
}

void GTKView::setControl(GTKControl* control) {
    if (control_ != nullptr) {
        control_->widget().unparent();
    }
    control_ = control;
    if (control_ != nullptr) {
        // Behind the widgets of the subviews.
        gtk_widget_insert_after(control_->widget().gobj(), gobj(), nullptr);
    }
}

void GTKView::makePlainGroup(Gtk::Widget& widget) {
    // The role is set on the object because gtkmm gives no access to the class's initialization.
    g_object_set(widget.gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_GROUP, nullptr);
    // Without a label, GTK would use the name of the class.
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, "",
                                   -1);
}

bool GTKView::exposeControls(Gtk::Widget& parent) {
    bool isExposed = false;
    for (Gtk::Widget* child = parent.get_first_child(); child != nullptr;
         child = child->get_next_sibling()) {
        GTKView* const view = in(*child);
        if (view == nullptr) {
            continue;
        }
        // All views in it are visited.
        const bool contains = exposeControls(*view) || view->control_ != nullptr;
        isExposed = isExposed || contains;
        if (std::exchange(view->isExposed_, contains) != contains) {
            gtk_accessible_update_state(GTK_ACCESSIBLE(view->outermost().gobj()),
                                        GTK_ACCESSIBLE_STATE_HIDDEN, contains ? FALSE : TRUE, -1);
        }
    }
    return isExposed;
}

GTKView* GTKView::of(const NSView& view) {
    return dynamic_cast<GTKView*>(view.realization());
}

void GTKView::takePlace(const NSView& view, double time) {
    const CALayer& layer = *view.layer();
    if (size_ != view.frame().size) {
        size_ = view.frame().size;
        queue_draw();  // the background covers the frame
    }
    set_overflow(view.clipsToBounds() ? Gtk::Overflow::HIDDEN : Gtk::Overflow::VISIBLE);
    if (clips_ != view.clips()) {
        takeClips(view.clips());
    }
    transform_ = layer.affineTransform(layer.presentation(time));
    shown_ = !view.isHidden() && canShow(transform_) && !std::isnan(size_.width) &&
             !std::isnan(size_.height);
    layParentOut();
}

void GTKView::takeOpacity(const NSView& view, double time) {
    const CALayerPresentation shown = view.layer()->presentation(time);
    opacity_ = std::clamp(shown.opacity, 0.0, 1.0);
    const NSView* const from = view.siblingWithLayer(shown.fadesFrom);
    linkFade(from != nullptr ? of(*from) : nullptr);
    if (Gtk::Widget* const parent = outermost().get_parent()) {
        parent->queue_draw();
    }
}

void GTKView::takeBackground(const NSView& view) {
    background_ = view.layer()->backgroundColor();
    queue_draw();
}

void GTKView::takeTiles(const NSView& view, std::span<const NSBackingRect> rects) {
    tiles_.update(view.backingStore(), rects);
    queue_draw();
}

void GTKView::takeOrder(const NSView& view) {
    // A control's widget stays behind the subviews.
    GtkWidget* previous = control_ != nullptr ? control_->widget().gobj() : nullptr;
    for (const NSView* const subview : view.subviewsInDrawingOrder()) {
        GTKView* const widget = of(*subview);
        if (widget == nullptr) {
            continue;
        }
        GtkWidget* const outermost = widget->outermost().gobj();
        if (gtk_widget_get_prev_sibling(outermost) != previous) {
            gtk_widget_insert_after(outermost, gobj(), previous);
        }
        previous = outermost;
    }
    queue_draw();
}

Gtk::Widget& GTKView::outermost() {
    return clipWidgets_.empty() ? static_cast<Gtk::Widget&>(*this) : *clipWidgets_.front();
}

GTKView* GTKView::in(Gtk::Widget& outermost) {
    Gtk::Widget* widget = &outermost;
    while (widget != nullptr && dynamic_cast<GTKClip*>(widget) != nullptr) {
        widget = widget->get_first_child();
    }
    return dynamic_cast<GTKView*>(widget);
}

void GTKView::takeClips(const std::vector<NSViewClip>& clips) {
    clips_ = clips;
    if (clips_.size() == clipWidgets_.size()) {
        return;
    }
    // The widgets are chained again, at the same place among the parent's children.
    Gtk::Widget* const parent = outermost().get_parent();
    Gtk::Widget* const next = outermost().get_next_sibling();
    unparent();
    while (!clipWidgets_.empty()) {
        clipWidgets_.back()->unparent();
        clipWidgets_.pop_back();
    }
    isExposed_ = true;  // as new widgets are
    gtk_accessible_reset_state(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_STATE_HIDDEN);
    Gtk::Widget* around = parent;
    for (std::size_t i = 0; i <= clips_.size(); ++i) {
        Gtk::Widget* widget = this;
        if (i < clips_.size()) {
            clipWidgets_.push_back(std::make_unique<GTKClip>());
            makePlainGroup(*clipWidgets_.back());
            widget = clipWidgets_.back().get();
        }
        if (i == 0 && next != nullptr) {
            gtk_widget_insert_before(widget->gobj(), parent->gobj(), next->gobj());
        } else {
            widget->set_parent(*around);
        }
        around = widget;
    }
}

void GTKView::layParentOut() {
    if (Gtk::Widget* const parent = outermost().get_parent()) {
        parent->queue_allocate();
    }
}

std::optional<CGAffineTransform> GTKView::allocateClips() {
    CGAffineTransform fromSuperview;
    for (std::size_t i = 0; i < clips_.size(); ++i) {
        const CGRect rect = standardized(clips_[i].rect);
        // The widget has a whole number of points, and is scaled to the size of the rectangle.
        const int width = toExtent(rect.size.width);
        const int height = toExtent(rect.size.height);
        const CGAffineTransform toSuperview =
            CGAffineTransform::makeScale(rect.size.width / width, rect.size.height / height)
                .concat(CGAffineTransform::makeTranslation(rect.origin.x, rect.origin.y))
                .concat(clips_[i].transform);
        const CGAffineTransform place = toSuperview.concat(fromSuperview);
        const std::optional<CGAffineTransform> inverse = toSuperview.invert();
        const double radius = clips_[i].effectiveRadius();
        clipWidgets_[i]->setCornerRadii(
            {radius * width / rect.size.width, radius * height / rect.size.height});
        const bool isShown = width > 0 && height > 0 && inverse && canShow(place);
        clipWidgets_[i]->set_child_visible(isShown);
        if (!isShown) {
            return std::nullopt;
        }
        gtk_widget_allocate(clipWidgets_[i]->gobj(), width, height, -1, toGskTransform(place));
        fromSuperview = *inverse;
    }
    return fromSuperview;
}

void GTKView::allocate() {
    const std::optional<CGAffineTransform> fromSuperview = allocateClips();
    const CGAffineTransform place =
        fromSuperview ? transform_.concat(*fromSuperview) : CGAffineTransform{0, 0, 0, 0, 0, 0};
    const bool isShown = shown_ && canShow(place);
    set_child_visible(isShown);
    if (isShown) {
        gtk_widget_allocate(gobj(), toExtent(size_.width), toExtent(size_.height), -1,
                            toGskTransform(place));
    }
}

void GTKView::measure_vfunc(Gtk::Orientation, int, int& minimum, int& natural, int& minimumBaseline,
                            int& naturalBaseline) const {
    // A view has the frame that the application gave it; GTK must not negotiate it.
    minimum = natural = 0;
    minimumBaseline = naturalBaseline = -1;
}

void GTKView::size_allocate_vfunc(int width, int height, int) {
    if (control_ != nullptr) {
        // GTK does not allocate less than the minimum size: the widget then extends beyond its
        // view.
        GtkRequisition least;
        gtk_widget_get_preferred_size(control_->widget().gobj(), &least, nullptr);
        gtk_widget_allocate(control_->widget().gobj(), std::max(width, least.width),
                            std::max(height, least.height), -1, nullptr);
    }
    for (Gtk::Widget* child = get_first_child(); child != nullptr;
         child = child->get_next_sibling()) {
        if (GTKView* const view = in(*child)) {
            view->allocate();
        }
    }
}

void GTKView::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    if (background_.alpha > 0) {
        const graphene_rect_t bounds = {
            {0, 0}, {static_cast<float>(size_.width), static_cast<float>(size_.height)}};
        const auto component = [](double value) { return static_cast<float>(value); };
        snapshot->append_color(Gdk::RGBA(component(background_.red), component(background_.green),
                                         component(background_.blue), component(background_.alpha)),
                               &bounds);
    }
    tiles_.append(snapshot->gobj());
    snapshotChildren(*this, snapshot->gobj());
}

void GTKView::snapshotChildren(Gtk::Widget& parent, GtkSnapshot* snapshot) {
    for (Gtk::Widget* child = parent.get_first_child(); child != nullptr;
         child = child->get_next_sibling()) {
        GTKView* const view = in(*child);
        if (view == nullptr) {
            appendChild(parent, *child, snapshot);  // a control's own, behind the views
        } else if (view->fadesFrom_ != nullptr && view->fadesInto_ == nullptr) {
            snapshotFade(parent, *view, snapshot);
        } else if (view->fadesInto_ == nullptr) {
            snapshotGroup(parent, *view, view->opacity_, snapshot);
        }
    }
}

void GTKView::snapshotGroup(Gtk::Widget& parent, GTKView& view, double opacity,
                            GtkSnapshot* snapshot) {
    if (opacity >= 1) {
        appendChild(parent, view.outermost(), snapshot);
    } else if (opacity > 0) {
        gtk_snapshot_push_opacity(snapshot, opacity);
        appendChild(parent, view.outermost(), snapshot);
        gtk_snapshot_pop(snapshot);
    }
}

void GTKView::snapshotFade(Gtk::Widget& parent, GTKView& topmost, GtkSnapshot* snapshot) {
    // The opacity of each view is its share. GTK mixes two pictures with shares that add up to 1:
    // the topmost view with the mixture of those below, and so on. The sum of all shares is the
    // opacity of the whole.
    double sum = 0;
    for (const GTKView* view = &topmost; view != nullptr; view = view->fadesFrom_) {
        sum += view->opacity_;
    }
    if (sum <= 0) {
        return;
    }
    gtk_snapshot_push_opacity(snapshot, std::min(sum, 1.0));
    std::vector<GTKView*> mixed;
    for (GTKView* view = &topmost; view != nullptr; view = view->fadesFrom_) {
        if (view->opacity_ >= sum || view->fadesFrom_ == nullptr) {
            appendChild(parent, view->outermost(), snapshot);  // there is nothing below
            break;
        }
        gtk_snapshot_push_cross_fade(snapshot, view->opacity_ / sum);
        sum -= view->opacity_;
        mixed.push_back(view);
    }
    // The first picture of each mixture is complete; the second one is the view itself.
    for (std::size_t i = mixed.size(); i-- > 0;) {
        gtk_snapshot_pop(snapshot);
        appendChild(parent, mixed[i]->outermost(), snapshot);
        gtk_snapshot_pop(snapshot);
    }
    gtk_snapshot_pop(snapshot);
}

void GTKView::linkFade(GTKView* from) {
    if (fadesFrom_ == from) {
        return;
    }
    if (fadesFrom_ != nullptr) {
        fadesFrom_->fadesInto_ = nullptr;
    }
    fadesFrom_ = from;
    if (from != nullptr) {
        if (from->fadesInto_ != nullptr) {
            from->fadesInto_->fadesFrom_ = nullptr;
        }
        from->fadesInto_ = this;
    }
}

}  // namespace orvane::platform
