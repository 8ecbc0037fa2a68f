#include "orvane/driver/Driver.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sstream>
#include <system_error>
#include <thread>
#include <utility>

#include "orvane/display/Display.h"
#include "orvane/display/tree/DisplayObject.h"
#include "orvane/driver/comparePictures.h"
#include "orvane/driver/findObjects.h"
#include "orvane/embedding/Session.h"
#include "orvane/embedding/settle.h"
#include "platform/appkit/NSDrop.h"
#include "platform/appkit/NSScriptedDesktop.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/corevideo/CVDisplayLink.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::driver {

namespace {

using platform::CGPoint;
using platform::NSEvent;
using platform::NSEventType;

constexpr double kRefresh = 1.0 / 60;

}  // namespace

// A user without files, as long as this object exists.
class Driver::User {
public:
    User() {
        std::string name = std::filesystem::temp_directory_path() / "orvane-driver-XXXXXX";
        if (mkdtemp(name.data()) == nullptr) {
            throw Failure("cannot create a folder in " +
                          std::filesystem::temp_directory_path().string());
        }
        folder_ = name;
        for (const char* const variable : kVariables) {
            const char* const value = std::getenv(variable);
            old_.emplace_back(value != nullptr ? std::optional<std::string>(value) : std::nullopt);
            setenv(variable, (folder_ / variable).c_str(), 1);
        }
    }
    ~User() {
        for (std::size_t i = 0; i < old_.size(); ++i) {
            if (old_[i]) {
                setenv(kVariables[i], old_[i]->c_str(), 1);
            } else {
                unsetenv(kVariables[i]);
            }
        }
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    User(const User&) = delete;
    User& operator=(const User&) = delete;

private:
    static constexpr std::array<const char*, 3> kVariables{"XDG_DATA_HOME", "XDG_CONFIG_HOME",
                                                           "XDG_CACHE_HOME"};
    std::filesystem::path folder_;
    std::vector<std::optional<std::string>> old_;
};

struct Driver::State {
    State(const std::string& applications, const Options& options)
        : window(options.size, options.scale),
          session(window, applications, options.resources),
          start(platform::CACurrentMediaTime()) {
        platform::NSDesktop::setCurrent(&desktop);
        desktop.copyText({});
    }

    platform::CAVirtualClock clock;
    platform::NSScriptedDesktop desktop;
    platform::OffscreenWindow window;
    embedding::Session session;
    double start;
};

Driver::Driver(const std::string& applications) : Driver(applications, Options()) {}

Driver::Driver(const std::string& applications, const Options& options)
    : user_(std::make_unique<User>()), state_(std::make_unique<State>(applications, options)) {
    if (!state_->session.start()) {
        throw Failure("no application could be started in " + applications);
    }
    settle();
}

Driver::~Driver() = default;

void Driver::settle() {
    embedding::settle(state_->window);
}

// ---- objects ----

std::vector<Driver::Object> Driver::findAll(const Query& query) const {
    return findObjects(*display::Display::instance(), query);
}

Driver::Object Driver::find(const Query& query) const {
    return findObject(*display::Display::instance(), query);
}

platform::OffscreenWindow& Driver::window() {
    return state_->window;
}

CGPoint Driver::centerOf(const Object& object) const {
    const auto& frame = object->getFrame();
    const platform::CGSize size = state_->window.contentSize();
    const double left = std::max(frame.x, 0.0);
    const double top = std::max(frame.y, 0.0);
    const double right = std::min(frame.x + frame.width, size.width);
    const double bottom = std::min(frame.y + frame.height, size.height);
    if (left >= right || top >= bottom) {
        std::ostringstream message;
        message << "the frame of the object, " << frame.x << ',' << frame.y << ' ' << frame.width
                << 'x' << frame.height << ", is empty or outside the window";
        throw Failure(message.str());
    }
    return {(left + right) / 2, (top + bottom) / 2};
}

// ---- input ----

bool Driver::send(NSEvent event) {
    event.timestamp = platform::CACurrentMediaTime();
    const bool handled = state_->window.sendEvent(event);
    settle();
    return handled;
}

void Driver::pressAt(CGPoint point) {
    send({NSEventType::LeftMouseDown, point});
    step(kRefresh);
    send({NSEventType::LeftMouseUp, point});
}

void Driver::drag(const Object& object, CGPoint by, double seconds) {
    const CGPoint start = centerOf(object);
    const long steps = std::max(1L, std::lround(seconds / kRefresh));
    send({NSEventType::LeftMouseDown, start});
    CGPoint point = start;
    for (long i = 1; i <= steps; ++i) {
        step(seconds / static_cast<double>(steps));
        const double part = static_cast<double>(i) / static_cast<double>(steps);
        point = {start.x + part * by.x, start.y + part * by.y};
        send({NSEventType::LeftMouseDragged, point});
    }
    send({NSEventType::LeftMouseUp, point});
}

bool Driver::scroll(const Object& object, CGPoint by) {
    NSEvent event;
    event.type = NSEventType::ScrollWheel;
    event.locationInWindow = centerOf(object);
    event.hasPreciseScrollingDeltas = true;
    event.phase = platform::NSEventPhase::Began;
    send(event);
    event.phase = platform::NSEventPhase::Changed;
    event.scrollingDelta = by;
    const bool handled = send(event);
    event.phase = platform::NSEventPhase::Ended;
    event.scrollingDelta = {};
    send(event);
    return handled;
}

bool Driver::type(const std::string& text) {
    NSEvent event;
    event.type = NSEventType::KeyDown;
    event.characters = text;
    return send(event);
}

bool Driver::key(const std::string& name, unsigned modifierFlags) {
    NSEvent event;
    event.type = NSEventType::KeyDown;
    event.key = name;
    event.modifierFlags = modifierFlags;
    const bool handled = send(event);
    event.type = NSEventType::KeyUp;
    send(event);
    return handled;
}

// ---- the window and the desktop ----

bool Driver::closeWindow() {
    const bool closes = state_->window.performClose();
    settle();
    return closes;
}

const platform::OffscreenWindowHost& Driver::windowHost() const {
    return state_->window.windowHost();
}

platform::NSScriptedDesktop& Driver::desktop() {
    return state_->desktop;
}

bool Driver::drop(const Object& object, const std::vector<std::string>& files,
                  const std::string& text) {
    platform::NSDrop drop{platform::NSDropPhase::Over, centerOf(object), files, text};
    state_->window.sendDrop(drop);
    settle();
    drop.phase = platform::NSDropPhase::Performed;
    const bool isTaken = state_->window.sendDrop(drop);
    settle();
    return isTaken;
}

bool Driver::drop(const Query& query, const std::vector<std::string>& files,
                  const std::string& text) {
    return drop(find(query), files, text);
}

// ---- time ----

void Driver::step(double seconds) {
    const double end = platform::CACurrentMediaTime() + std::max(seconds, 0.0);
    // The last step may be shorter; one that only rounding makes necessary is left out.
    for (double now = platform::CACurrentMediaTime(); now + kRefresh < end - 1e-9;) {
        now += kRefresh;
        state_->clock.advanceTo(now);
        settle();
    }
    state_->clock.advanceTo(end);
    settle();
}

void Driver::waitForIdle(double most) {
    const double end = time() + most;
    while (state_->window.isAnimating() || platform::CVDisplayLink::isAnyRunning()) {
        if (time() >= end) {
            throw Failure("an animation still runs after " + std::to_string(most) + " seconds");
        }
        step(kRefresh);
    }
}

void Driver::waitUntil(const std::function<bool()>& condition, double most) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    for (auto last = start; !condition();) {
        if (std::chrono::duration<double>(last - start).count() > most) {
            throw Failure("what the test waits for has not happened after " + std::to_string(most) +
                          " seconds");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        const auto now = Clock::now();
        step(std::chrono::duration<double>(now - last).count());
        last = now;
    }
}

double Driver::time() const {
    return platform::CACurrentMediaTime() - state_->start;
}

// ---- pictures ----

std::shared_ptr<const platform::CGImage> Driver::picture() const {
    return state_->window.image();
}

void Driver::expectPicture(const std::string& path, int tolerance) const {
    if (const std::string fault = comparePictures(*picture(), path, tolerance); !fault.empty()) {
        throw Failure(fault);
    }
}

}  // namespace orvane::driver
