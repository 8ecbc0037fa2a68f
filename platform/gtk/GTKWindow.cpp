#include "platform/gtk/GTKWindow.h"

#include <gtk/gtk.h>

#include <utility>

#include "platform/appkit/NSView.h"
#include "platform/gtk/GTKControl.h"
#include "platform/gtk/GTKRoot.h"
#include "platform/gtk/GTKView.h"

namespace orvane::platform {

GTKWindow::GTKWindow(CGSize size, std::optional<double> scale)
    : root_(std::make_unique<GTKRoot>(
          size, GTKRoot::Delegate{[this] {
                                      resized_ = true;
                                      scheduleDisplay();
                                  },
                                  [this] { backingPropertiesDidChange(); },
                                  [this](const NSEvent& event) { sendEvent(event); }})),
      scale_(scale) {}

GTKWindow::~GTKWindow() {
    if (labelsTimer_ != 0) {
        g_source_remove(labelsTimer_);
    }
    setContentView(nullptr);
}

Gtk::Widget& GTKWindow::widget() {
    return *root_;
}

double GTKWindow::backingScaleFactor() const {
    return scale_ ? *scale_ : static_cast<double>(root_->get_scale_factor());
}

CGSize GTKWindow::contentSize() const {
    return root_->size();
}

void GTKWindow::setResizeHandler(std::function<void(CGSize)> handler) {
    resizeHandler_ = std::move(handler);
}

void GTKWindow::scheduleDisplay() {
    if (std::exchange(scheduled_, true) || ticking_) {
        return;
    }
    root_->add_tick_callback([this](const Glib::RefPtr<Gdk::FrameClock>&) { return tick(); });
}

bool GTKWindow::tick() {
    ticking_ = true;
    scheduled_ = false;
    if (std::exchange(resized_, false)) {
        if (resizeHandler_) {
            resizeHandler_(contentSize());
        }
        backingPropertiesDidChange();
    }
    displayIfNeeded();
    ticking_ = false;
    return scheduled_;
}

void GTKWindow::didAddView(NSView& view) {
    auto owned = std::make_unique<GTKView>(view);
    GTKView& widget = *owned;
    Gtk::Widget* const parent = view.superview() != nullptr
                                    ? static_cast<Gtk::Widget*>(GTKView::of(*view.superview()))
                                    : root_.get();
    view.setRealization(std::move(owned));
    widget.set_parent(*parent);
    widget.takePlace(view, displayTime());
    widget.takeOpacity(view, displayTime());
    widget.takeBackground(view);
}

void GTKWindow::didReorderSubviews(NSView& superview) {
    GTKView::of(superview)->takeOrder(superview);
}

void GTKWindow::didChangeView(NSView& view, unsigned changes) {
    GTKView& widget = *GTKView::of(view);
    if ((changes & (kNSViewGeometryChanged | kNSViewHiddenChanged)) != 0) {
        widget.takePlace(view, displayTime());
    }
    if ((changes & kNSViewOpacityChanged) != 0) {
        widget.takeOpacity(view, displayTime());
    }
    if ((changes & kNSViewBackgroundChanged) != 0) {
        widget.takeBackground(view);
    }
    if ((changes & kNSViewStateChanged) != 0) {
        widget.takeControlState();
    }
}

void GTKWindow::didPaintView(NSView& view, std::span<const NSBackingRect> rects) {
    GTKView::of(view)->takeTiles(view, rects);
}

void GTKWindow::setAccessibilityLabels(std::function<std::vector<NSAccessibilityLabel>()> labels) {
    labels_ = std::move(labels);
}

void GTKWindow::present() {
    // Gathering the labels may take a walk through all that is shown: not for each frame.
    constexpr unsigned delay = 250;  // milliseconds
    if (labels_ && labelsTimer_ == 0) {
        labelsTimer_ = g_timeout_add(
            delay,
            [](void* self) -> gboolean {
                auto& window = *static_cast<GTKWindow*>(self);
                window.labelsTimer_ = 0;
                window.root_->setLabels(window.labels_());
                return G_SOURCE_REMOVE;
            },
            this);
    }
}

bool GTKWindow::showsNatively(const NSView& view) const {
    return GTKControl::realizes(view);
}

bool GTKWindow::writePNG(const std::string& path) const {
    GtkNative* const native = gtk_widget_get_native(root_->gobj());
    if (native == nullptr || gtk_native_get_renderer(native) == nullptr) {
        return false;
    }
    const double scale = backingScaleFactor();
    const auto [width, height] = contentSize();
    GdkPaintable* const shown = gtk_widget_paintable_new(root_->gobj());
    GtkSnapshot* const snapshot = gtk_snapshot_new();
    gtk_snapshot_scale(snapshot, static_cast<float>(scale), static_cast<float>(scale));
    gdk_paintable_snapshot(shown, snapshot, width, height);
    GskRenderNode* const node = gtk_snapshot_free_to_node(snapshot);
    g_object_unref(shown);
    if (node == nullptr) {
        return false;
    }
    const graphene_rect_t viewport = {
        {0, 0}, {static_cast<float>(width * scale), static_cast<float>(height * scale)}};
    GdkTexture* const texture =
        gsk_renderer_render_texture(gtk_native_get_renderer(native), node, &viewport);
    gsk_render_node_unref(node);
    const bool written = gdk_texture_save_to_png(texture, path.c_str()) != FALSE;
    g_object_unref(texture);
    return written;
}

}  // namespace orvane::platform
