#include "platform/gtk/GTKWindow.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "orvane/commons/ScopedFlag.h"
#include "platform/appkit/NSBackingStore.h"
#include "platform/appkit/NSControl.h"
#include "platform/appkit/NSDrop.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSView.h"
#include "platform/corevideo/CVDisplay.h"
#include "platform/gtk/GTKAccessibility.h"
#include "platform/gtk/GTKControl.h"
#include "platform/gtk/GTKDesktop.h"
#include "platform/gtk/GTKDrop.h"
#include "platform/gtk/GTKFontSettings.h"
#include "platform/gtk/GTKPointer.h"
#include "platform/gtk/GTKPresentation.h"
#include "platform/gtk/GTKRenderer.h"
#include "platform/gtk/GTKRoot.h"
#include "platform/gtk/GTKScroll.h"
#include "platform/gtk/GTKView.h"
#include "platform/gtk/GTKWrappers.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::platform {

GTKWindow::GTKWindow(CGSize size, std::optional<double> scale) {
    chooseRenderer(*gdk_display_get_default());
    applyFontSettings();
    NSControl::setWidgetSource(&GTKControl::isKindRegistered);
    root_ = std::make_unique<GTKRoot>(
        size, scale,
        GTKRoot::Delegate{[this] { choosePresentation(); },
                          [this] {
                              resized_ = true;
                              scheduleDisplay();
                          },
                          [this](double time) { beginFrame(time); },
                          [this](const NSEvent& event) { sendEvent(event); },
                          [this](const NSEvent& event) { return sendUnhandledKey(event); },
                          [this](GtkWidget* focused) { focusDidMove(focused); },
                          [this](bool isForward) { return tabPressed(isForward); }});
    scroll_ = std::make_unique<GTKScroll>(
        *root_, [this](const NSEvent& event) { return sendEvent(event); });
    pointer_ =
        std::make_unique<GTKPointer>(*root_, [this](const NSEvent& event) { sendEvent(event); });
    drop_ = std::make_unique<GTKDrop>(GTK_WIDGET(root_->gobj()),
                                      [this](const NSDrop& drop) { return sendDrop(drop); });
    desktop_ = std::make_unique<GTKDesktop>(GTK_WIDGET(root_->gobj()));
    if (!NSDesktop::hasCurrent()) {
        NSDesktop::setCurrent(desktop_.get());
    }
    display_ = std::make_unique<CVDisplay>([this] { scheduleDisplay(); });
}

GTKWindow::~GTKWindow() {
    GTKWindow::setAccessibility(nullptr);
    setContentView(nullptr);
    root_->setPresentation(nullptr);
}

bool GTKWindow::initialize() {
    disableSoftwareGL();
    if (gtk_init_check() == FALSE) {
        return false;
    }
    registerWindowWrappers();
    // Assistive technology calls the program by this name.
    if (g_get_prgname() == nullptr) {
        g_set_prgname(program_invocation_short_name);
    }
    return true;
}

Gtk::Widget& GTKWindow::widget() {
    return *root_;
}

double GTKWindow::backingScaleFactor() const {
    return root_->pixelsPerPoint();
}

CGSize GTKWindow::contentSize() const {
    return root_->size();
}

void GTKWindow::setResizeHandler(std::function<void(CGSize)> handler) {
    resizeHandler_ = std::move(handler);
}

void GTKWindow::scheduleDisplay() {
    root_->requestFrame();
}

void GTKWindow::beginFrame(double frameTime) {
    // The pass shows the time of the frame, so that motion is even however late the pass runs.
    const double time = CAVirtualClock::current() != nullptr ? CACurrentMediaTime() : frameTime;
    if (std::exchange(resized_, false)) {
        if (presentation_) {
            presentation_->resize(contentSize(), backingScaleFactor());
        }
        if (resizeHandler_) {
            resizeHandler_(contentSize());
        }
        backingPropertiesDidChange();
    }
    // The links' callbacks come first: the pass shows what they change.
    const bool refreshWanted = display_->refresh(time);
    displayIfNeeded(time);
    if (refreshWanted) {
        scheduleDisplay();
    }
}

// The renderer of the window that the root is in is known when the root is realized, and may be
// another when the root was put into another window.
void GTKWindow::choosePresentation() {
    const GTKRendererKind kind = rendererKind(*root_);
    if (presentation_ && kind == kind_) {
        return;
    }
    kind_ = kind;
    std::vector<NSView*> views;  // superviews first
    if (NSView* const content = contentView()) {
        views.push_back(content);
    }
    for (std::size_t i = 0; i < views.size(); ++i) {
        for (const std::shared_ptr<NSView>& subview : views[i]->subviews()) {
            views.push_back(subview.get());
        }
    }
    if (presentation_) {
        for (std::size_t i = views.size(); i-- > 0;) {
            presentation_->remove(*views[i]);
            views[i]->setRealization(nullptr);
        }
    }
    root_->setPresentation(nullptr);
    presentation_ = GTKPresentation::create(kind, *root_);
    root_->setPresentation(presentation_.get());
    presentation_->resize(contentSize(), backingScaleFactor());
    for (NSView* const view : views) {
        presentation_->add(*view);
        presentation_->setControl(*view, controlOf(*view));
    }
    for (NSView* const view : views) {
        presentation_->reorder(*view);
        if (const NSBackingStore* const store = view->backingStore()) {
            presentation_->paint(*view, {&store->area(), 1});
        }
    }
    backingPropertiesDidChange();
    if (firstResponder() != nullptr) {
        didChangeFirstResponder();
    }
}

GTKControl* GTKWindow::controlOf(const NSView& view) const {
    const auto found = controls_.find(const_cast<NSView*>(&view));
    return found != controls_.end() ? found->second.get() : nullptr;
}

void GTKWindow::didAddView(NSView& view) {
    if (GTKControl::isRegistered(view)) {
        controls_.emplace(&view, nullptr);
    }
    if (presentation_) {
        presentation_->add(view);
        if (&view == firstResponder()) {  // it was moved within the window
            didChangeFirstResponder();
        }
    }
}

void GTKWindow::willRemoveView(NSView& view) {
    // The view may come back, and is then still the first responder.
    const bool wasMovingFocus = std::exchange(isMovingFocus_, true);
    if (presentation_) {
        presentation_->remove(view);
        view.setRealization(nullptr);
    }
    controls_.erase(&view);
    isMovingFocus_ = wasMovingFocus;
}

void GTKWindow::didExposeNativeView(NSView& view, double distance) {
    // In points. A control at the border must not get and lose its widget in turn.
    constexpr double kNear = 200;
    constexpr double kFar = 400;
    if (distance <= kNear) {
        realize(view);
    } else if (distance > kFar && &view != firstResponder()) {
        release(view);
    }
}

// Returns the control's widget, which is created if there is none. Null if the view has none.
GTKControl* GTKWindow::realize(NSView& view) {
    const auto found = controls_.find(&view);
    if (found == controls_.end() || !presentation_) {
        return nullptr;
    }
    std::unique_ptr<GTKControl>& control = found->second;
    if (!control) {
        control = GTKControl::create(view);
        if (!control) {
            controls_.erase(found);  // it paints itself
            backingPropertiesDidChange();
            return nullptr;
        }
        control->stateDidChange();
        presentation_->setControl(view, control.get());
    }
    return control.get();
}

void GTKWindow::release(NSView& view) {
    const auto found = controls_.find(&view);
    if (found == controls_.end() || !found->second) {
        return;
    }
    const bool wasMovingFocus = std::exchange(isMovingFocus_, true);
    presentation_->setControl(view, nullptr);
    found->second.reset();
    isMovingFocus_ = wasMovingFocus;
}

void GTKWindow::didReorderSubviews(NSView& superview) {
    if (presentation_) {
        presentation_->reorder(superview);
    }
}

void GTKWindow::didChangeView(NSView& view, unsigned changes) {
    if (presentation_) {
        presentation_->change(view, changes, displayTime());
    }
    if ((changes & kNSViewStateChanged) != 0) {
        if (GTKControl* const control = controlOf(view)) {
            control->stateDidChange();
        }
    }
}

// ---- the keyboard ----

void GTKWindow::didChangeFirstResponder() {
    if (isMovingFocus_ || !presentation_) {
        return;
    }
    const commons::ScopedFlag moving(isMovingFocus_);
    NSView* const first = firstResponder();
    GTKControl* const control = first != nullptr ? realize(*first) : nullptr;
    if (control != nullptr) {
        control->stateDidChange();  // a widget that is disabled takes no focus
        control->grabFocus();
        return;
    }
    // Without a first responder, the focus must leave the controls; but it is not taken from
    // another widget of the program.
    GtkRoot* const toplevel = gtk_widget_get_root(GTK_WIDGET(root_->gobj()));
    GtkWidget* const focused = toplevel != nullptr ? gtk_root_get_focus(toplevel) : nullptr;
    if (first != nullptr || (focused != nullptr &&
                             gtk_widget_is_ancestor(focused, GTK_WIDGET(root_->gobj())) != FALSE)) {
        grabFocusForViews();
    }
}

void GTKWindow::focusDidMove(GtkWidget* focused) {
    if (isMovingFocus_) {
        return;
    }
    // Assistive technology has given the keyboard to an element.
    if (const std::uint64_t element = accessibility_ ? accessibility_->elementOf(focused) : 0) {
        const commons::ScopedFlag moving(isMovingFocus_);
        accessibility_->focus(element);
        return;
    }
    NSView* target = nullptr;
    for (const auto& [view, control] : controls_) {
        GtkWidget* const widget = control ? control->widget().gobj() : nullptr;
        if (focused != nullptr && widget != nullptr &&
            (focused == widget || gtk_widget_is_ancestor(focused, widget) != FALSE)) {
            target = view;
            break;
        }
    }
    // The root itself has the focus for the views that paint.
    NSView* const first = firstResponder();
    if (first != nullptr && focused == GTK_WIDGET(root_->gobj()) && controlOf(*first) == nullptr) {
        target = first;
    }
    {
        const commons::ScopedFlag moving(isMovingFocus_);
        makeFirstResponder(target);
    }
    if (firstResponder() != target) {  // the view that was told has chosen another one
        didChangeFirstResponder();
    }
}

bool GTKWindow::tabPressed(bool isForward) {
    if (!selectKeyView(isForward, false)) {
        return false;
    }
    // What the view did about it must be in the widget before the next key.
    if (const NSView* const first = firstResponder()) {
        if (GTKControl* const control = controlOf(*first)) {
            control->stateDidChange();
        }
    }
    return true;
}

void GTKWindow::didPaintView(NSView& view, std::span<const NSBackingRect> rects) {
    if (presentation_) {
        presentation_->paint(view, rects);
    }
}

// ---- accessibility ----

void GTKWindow::setAccessibility(NSAccessibility* content) {
    if (accessibilityTimer_ != 0) {
        g_source_remove(std::exchange(accessibilityTimer_, 0));
    }
    root_->setAccessibility(nullptr);
    {
        const commons::ScopedFlag moving(isMovingFocus_);
        accessibility_.reset();
    }
    if (content != nullptr) {
        accessibility_ = std::make_unique<GTKAccessibility>(*root_, *content);
        root_->setAccessibility(accessibility_.get());
    }
}

void GTKWindow::accessibilityDidChange() {
    updateAccessibilityLater(0);
}

void GTKWindow::updateAccessibilityLater(unsigned milliseconds) {
    if (!accessibility_ || (accessibilityTimer_ != 0 && milliseconds > 0)) {
        return;
    }
    if (accessibilityTimer_ != 0) {
        g_source_remove(accessibilityTimer_);
    }
    accessibilityTimer_ = g_timeout_add(
        milliseconds,
        [](void* self) -> gboolean {
            static_cast<GTKWindow*>(self)->accessibilityTimer_ = 0;
            static_cast<GTKWindow*>(self)->updateAccessibility();
            return G_SOURCE_REMOVE;
        },
        this);
}

void GTKWindow::updateAccessibility() {
    const double start = CACurrentMediaTime();
    const commons::ScopedFlag moving(isMovingFocus_);
    GtkRoot* const toplevel = gtk_widget_get_root(GTK_WIDGET(root_->gobj()));
    GtkWidget* const focused = toplevel != nullptr ? gtk_root_get_focus(toplevel) : nullptr;
    const bool hasViewsFocus = focused != nullptr && (focused == GTK_WIDGET(root_->gobj()) ||
                                                      accessibility_->elementOf(focused) != 0);
    accessibility_->update();
    GTKView::exposeControls(*root_);
    if (hasViewsFocus && gtk_root_get_focus(toplevel) != accessibility_->focusedWidget().gobj()) {
        grabFocusForViews();
    }
    accessibilityCost_ = (CACurrentMediaTime() - start) * 1000;
}

void GTKWindow::grabFocusForViews() {
    if (!accessibility_ || !accessibility_->focusedWidget().grab_focus()) {
        root_->grab_focus();
    }
}

void GTKWindow::present() {
    if (presentation_) {
        presentation_->present(contentView(), displayTime());
    }
    // Collecting the elements walks all objects, which is too much for each frame. However many
    // there are, it takes a fiftieth of the time at most.
    constexpr double kShortestDelay = 250;  // milliseconds
    constexpr double kShare = 0.02;
    updateAccessibilityLater(
        static_cast<unsigned>(std::max(kShortestDelay, accessibilityCost_ / kShare)));
}

void GTKWindow::didChangeCursor() {
    pointer_->setCursor(cursor());
}

bool GTKWindow::showsNatively(const NSView& view) const {
    return controls_.contains(const_cast<NSView*>(&view));
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
