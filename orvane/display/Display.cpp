#include "orvane/display/Display.h"

#include <deque>
#include <unordered_set>

#include "orvane/commons/eraseFromCollection.h"
#include "orvane/commons/guardedCall.h"
#include "orvane/display/Window.h"
#include "orvane/display/animation/Transition.h"
#include "orvane/display/events/InputDispatcher.h"
#include "orvane/display/events/Shortcuts.h"
#include "orvane/display/native/DisplayView.h"
#include "orvane/display/native/DrawableLayer.h"
#include "orvane/display/native/NativeLayer.h"
#include "orvane/display/native/NativeObject.h"
#include "orvane/display/native/toKeyEvent.h"
#include "orvane/display/registerFont.h"
#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/DisplayLayer.h"
#include "orvane/system/screenView.h"
#include "orvane/system/system.h"
#include "orvane/thread/dispatch.h"
#include "platform/appkit/NSDesktop.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/quartzcore/CALayer.h"
#include "platform/quartzcore/CATransaction.h"
#include "platform/quartzcore/CATransition.h"

namespace orvane::display {

using animation::Transition;
using geometry::Size;
using native::NativeLayer;
using platform::NSDesktop;
using platform::NSView;

namespace {

// Sets the display of a layer and of all layers below it, each layer before its sublayers.
void setDisplayOfSubtree(const std::shared_ptr<DisplayLayer>& layer,
                         const std::shared_ptr<Display>& display) {
    std::deque<std::shared_ptr<DisplayLayer>> waiting{layer};
    while (!waiting.empty()) {
        const std::shared_ptr<DisplayLayer> next = waiting.front();
        waiting.pop_front();
        next->setDisplay(display);
        waiting.insert(waiting.begin(), next->getSublayers().begin(), next->getSublayers().end());
    }
}

// The view of a layer; null for a layer that is not native, or whose view was not created.
std::shared_ptr<NSView> viewOf(const std::shared_ptr<DisplayLayer>& layer) {
    const auto native = std::dynamic_pointer_cast<NativeLayer>(layer);
    return native ? native->getLayerHandler() : nullptr;
}

std::shared_ptr<NSView> viewOf(const std::shared_ptr<DisplayObject>& object) {
    return object ? viewOf(object->getLayer()) : nullptr;
}

Appearance toAppearance(const platform::NSAppearance& from) {
    return {from.isDark,   from.accentColor, from.font,
            from.textSize, from.textScale,   from.reducesMotion};
}

platform::CATransition platformTransition(const Transition& transition) {
    platform::CATransition result;
    result.setStartProgress(0);
    result.setEndProgress(1);
    if (transition.type == Transition::PushFromRight) {
        result.setType(platform::CATransitionType::Push);
        result.setSubtype(platform::CATransitionSubtype::FromRight);
    } else if (transition.type == Transition::PushFromLeft) {
        result.setType(platform::CATransitionType::Push);
        result.setSubtype(platform::CATransitionSubtype::FromLeft);
    }
    result.setDuration(transition.duration);
    result.setRemovedOnCompletion(true);
    return result;
}

// Returns the first object, in pre-order, for which `matches` returns true; null for none.
template <typename Matches>
std::shared_ptr<DisplayObject> findObject(
    const std::vector<std::shared_ptr<DisplayObject>>& objects, const Matches& matches) {
    std::shared_ptr<DisplayObject> found;
    const auto visit = [&](const std::shared_ptr<DisplayObject>& object) {
        found = matches(object) ? object : nullptr;
        return found != nullptr;
    };
    for (const std::shared_ptr<DisplayObject>& object : objects) {
        ContainerObject* const container = object->asContainer();
        if (container != nullptr ? container->traverse(visit) : visit(object)) {
            break;
        }
    }
    return found;
}

}  // namespace

std::shared_ptr<Display> Display::instance() {
    if (!s_instance) {
        s_instance = std::make_shared<Display>();
    }
    return s_instance;
}

void Display::reset() {
    s_instance.reset();
}

Display::Display(Fonts fonts)
    : input_(std::make_unique<events::InputDispatcher>(objects_)),
      shortcuts_(std::make_unique<events::Shortcuts>()),
      window_(std::make_shared<Window>()) {
    initView();
    if (fonts == Fonts::Load) {
        loadFonts(system::getResourceDirectory() + "/res/fonts");
    }
}

Display::~Display() {
    dispatch_ui([this] {
        view_->setInputHandler({});
        view_.reset();
        window_->setNativeWindow(nullptr);
        if (appearance_) {
            NSDesktop::setAppearanceHandler(this, {});
        }
    });
}

void Display::initView() {
    dispatch_ui([this] {
        view_ = std::make_shared<DisplayView>();
        view_->setInputHandler({input_.get(),
                                [this](const platform::NSEvent& event) { return handleKey(event); },
                                [this] { firstResponderChanged(); },
                                [this] { window_->setNativeWindow(view_->window()); }});
        view_->setWantsLayer(true);
        view_->layer()->setBackgroundColor({0, 0, 0, 1});
    });
}

// ---- objects ----

void Display::add(const std::shared_ptr<DisplayObject>& object) {
    if (!object) {
        return;
    }
    std::shared_ptr<DisplayLayer> layer = object->getLayer();
    if (!layer) {
        layer = object->extractIntoLayer(nullptr);
    }
    attachLayer(layer);
    objects_.push_back(object);
    layer->validate(false);
}

bool Display::remove(const std::shared_ptr<DisplayObject>& object) {
    if (!object) {
        return false;
    }
    const std::shared_ptr<DisplayObject> held =
        object;  // the argument may be an element of objects_
    if (const std::shared_ptr<DisplayLayer> layer = held->getLayer()) {
        detachLayer(layer);
    }
    return commons::eraseFromCollection(objects_, held);
}

void Display::removeAll() {
    while (!objects_.empty()) {
        const std::shared_ptr<DisplayObject> first = objects_.front();
        if (const std::shared_ptr<DisplayLayer> layer = first->getLayer()) {
            detachLayer(layer);
        }
        objects_.erase(objects_.begin());
    }
}

void Display::replace(const std::shared_ptr<DisplayObject>& oldObject,
                      const std::shared_ptr<DisplayObject>& newObject,
                      const Transition* transition) {
    add(newObject);
    const std::shared_ptr<NSView> oldView = viewOf(oldObject);
    const std::shared_ptr<NSView> newView = viewOf(newObject);
    if (transition == nullptr || !oldView || !newView) {
        remove(oldObject);
        return;
    }
    const auto display = as<Display>();
    dispatch_ui([&] {
        newView->setHidden(true);
        platform::CATransition change = platformTransition(*transition);
        change.setOutgoingLayer(oldView->layer());
        newView->setHidden(false);
        lockEventHandling();
        platform::CATransaction::begin();
        platform::CATransaction::setCompletionBlock([display, oldObject] {
            display->remove(oldObject);
            display->unlockEventHandling();
        });
        newView->layer()->addAnimation(change, "transition");
        platform::CATransaction::commit();
    });
}

// ---- layers ----

void Display::attachLayer(const std::shared_ptr<DisplayLayer>& layer) {
    setDisplayOfSubtree(layer, as<Display>());
    attachLayerHandler(layer);
}

void Display::detachLayer(const std::shared_ptr<DisplayLayer>& layer) {
    setDisplayOfSubtree(layer, nullptr);
    if (const auto drawable = std::dynamic_pointer_cast<native::DrawableLayer>(layer)) {
        drawable->releaseDirtyObjects();  // no validation will
    }
    detachLayerHandler(layer);
}

void Display::attachLayerHandler(const std::shared_ptr<DisplayLayer>& layer) {
    if (const std::shared_ptr<NSView> view = viewOf(layer)) {
        dispatch_ui([&] { view_->addSubview(view); });
    }
}

void Display::detachLayerHandler(const std::shared_ptr<DisplayLayer>& layer) {
    if (const std::shared_ptr<NSView> view = viewOf(layer)) {
        dispatch_ui([&] { view->removeFromSuperviewWithoutNeedingDisplay(); });
    }
}

// ---- input ----

void Display::setFocus(const std::shared_ptr<DisplayObject>& object) {
    dispatch_ui([&] {
        platform::NSWindow* const window = view_ ? view_->window() : nullptr;
        const auto control = std::dynamic_pointer_cast<native::NativeObject>(object);
        NSView* const view = control ? control->getObjectHandler().get() : nullptr;
        if (view != nullptr && view->acceptsFirstResponder()) {
            if (window != nullptr) {
                window->makeFirstResponder(view);
            }
            return;
        }
        focusChanged(object);
        if (window != nullptr) {
            window->makeFirstResponder(view_.get());
        }
    });
}

std::shared_ptr<DisplayObject> Display::getFocus() const {
    return input_->focus();
}

std::shared_ptr<events::Shortcut> Display::addShortcut(const std::string& keys,
                                                       std::function<void()> action) {
    std::shared_ptr<events::Shortcut> shortcut = events::Shortcut::create(keys, std::move(action));
    if (shortcut) {
        shortcuts_->add(shortcut);
    }
    return shortcut;
}

bool Display::handleKey(const platform::NSEvent& event) {
    const events::KeyEvent key = toKeyEvent(event);
    for (const auto& listener : getListeners<events::DisplayKeyEvent>()) {
        bool handled = false;
        commons::guardedCall("exception of a key listener", [&] {
            handled = (*listener)(as<Display>(), events::DisplayKeyEvent{key});
        });
        if (handled) {
            return true;
        }
    }
    return shortcuts_->handle(key);
}

// Follows the window: the user may have given the keyboard to a control, or taken it from one.
void Display::firstResponderChanged() {
    const NSView* const first =
        view_->window() != nullptr ? view_->window()->firstResponder() : nullptr;
    const auto isFirst = [first](const std::shared_ptr<DisplayObject>& object) {
        const auto control = std::dynamic_pointer_cast<native::NativeObject>(object);
        return control && control->getObjectHandler().get() == first;
    };
    if (first == view_.get()) {
        // An object that is no control keeps the focus.
        if (std::dynamic_pointer_cast<native::NativeObject>(input_->focus())) {
            focusChanged(nullptr);
        }
    } else if (!isFirst(input_->focus())) {
        focusChanged(findObject(objects_, isFirst));
    }
}

void Display::focusChanged(const std::shared_ptr<DisplayObject>& object) {
    if (input_->setFocus(object)) {
        commons::guardedCall("exception of a focus listener",
                             [&] { notify(events::FocusChangedEvent{input_->focus()}); });
        if (view_ && view_->window() != nullptr) {
            view_->window()->accessibilityDidChange();
        }
    }
}

// ---- the desktop ----

const Appearance& Display::getAppearance() {
    if (!appearance_) {
        NSDesktop::setAppearanceHandler(this, [this] { appearanceChanged(); });
        appearance_ = toAppearance(NSDesktop::current().appearance());
    }
    return *appearance_;
}

void Display::appearanceChanged() {
    const Appearance appearance = toAppearance(NSDesktop::current().appearance());
    if (appearance_ && *appearance_ != appearance) {
        appearance_ = appearance;
        commons::guardedCall("exception of an appearance listener",
                             [&] { notify(AppearanceChangedEvent{appearance}); });
    }
}

// ---- the screen ----

void Display::frameChanged(const Size<double>& size) {
    notify(FrameChangedEvent{size});
    resizeView(size);
}

void Display::frameChanged() {
    frameChanged(getScreenSize());
}

Size<double> Display::getScreenSize() const {
    return view_ ? Size<double>(view_->bounds().size) : Size<double>();
}

double Display::getScaleFactor() const {
    const platform::NSWindow* const window = view_ ? view_->window() : nullptr;
    return window != nullptr ? window->backingScaleFactor() : 1.0;
}

void Display::loadFonts(const std::string& directory) {
    std::unordered_set<std::string> seen;
    std::vector<std::string> fonts;
    const auto& files = platform::NSFileManager::defaultManager();
    for (const std::string& entry : files.enumeratorAtPath(directory)) {
        if (platform::pathExtension(entry) == "ttf" &&
            seen.insert(platform::lastPathComponent(entry)).second) {
            fonts.push_back(platform::pathWithComponents({directory, entry}));
        }
    }
    for (const std::string& font : fonts) {
        registerFont(font);
    }
}

void DeleteDisplayObject(const std::shared_ptr<DisplayObject>& object) {
    if (const std::shared_ptr<ContainerObject> parent = object ? object->getParent() : nullptr) {
        parent->erase(parent->find(object));
    }
}

}  // namespace orvane::display

const orvane::platform::NSView* orvane::system::screenView() {
    return display::Display::instance()->getView()->superview();
}
