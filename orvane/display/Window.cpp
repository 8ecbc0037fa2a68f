#include "orvane/display/Window.h"

#include <cmath>

#include "orvane/commons/guardedCall.h"
#include "platform/appkit/NSWindow.h"
#include "platform/appkit/NSWindowHost.h"

namespace orvane::display {

// Passes on what the native window reports.
class Window::Delegate final : public platform::NSWindowDelegate {
public:
    explicit Delegate(Window& window) : window_(window) {}

    bool windowShouldClose() override { return window_.mayClose(); }
    void windowDidChangeFullScreen() override {
        commons::guardedCall("exception of a window listener", [this] {
            window_.notify(events::FullScreenChangedEvent{window_.isFullScreen()});
        });
    }

private:
    Window& window_;
};

Window::Window() : delegate_(std::make_unique<Delegate>(*this)) {}

Window::~Window() {
    setNativeWindow(nullptr);
}

void Window::setNativeWindow(platform::NSWindow* window) {
    if (native_ != nullptr) {
        native_->setDelegate(nullptr);
    }
    native_ = window;
    if (native_ != nullptr) {
        native_->setDelegate(delegate_.get());
    }
}

bool Window::setTitle(const std::string& title) {
    return native_ != nullptr && native_->host().setTitle(title);
}

bool Window::setIcon(const std::string& picture) {
    return native_ != nullptr && native_->host().setIcon(picture);
}

bool Window::setApplicationId(const std::string& id) {
    return native_ != nullptr && native_->host().setApplicationIdentifier(id);
}

bool Window::setMinimumSize(const geometry::Size<double>& size) {
    return native_ != nullptr && std::isfinite(size.width) && std::isfinite(size.height) &&
           native_->host().setMinimumSize({size.width, size.height});
}

bool Window::setFullScreen(bool isFullScreen) {
    return native_ != nullptr && native_->host().setFullScreen(isFullScreen);
}

bool Window::isFullScreen() const {
    return native_ != nullptr && native_->isFullScreen();
}

bool Window::requestClose() {
    return native_ != nullptr && native_->performClose();
}

bool Window::quit() {
    return native_ != nullptr && native_->host().close();
}

bool Window::mayClose() {
    bool mayClose = true;
    for (const auto& listener : getListeners<events::CloseRequestEvent>()) {
        commons::guardedCall("exception of a close listener", [&] {
            const auto decision = (*listener)(as<Window>(), events::CloseRequestEvent{});
            mayClose = mayClose && decision == events::CloseDecision::Close;
        });
    }
    return mayClose;
}

}  // namespace orvane::display
