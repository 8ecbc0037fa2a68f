#include "orvane/embedding/Session.h"

#include <glib.h>

#include <atomic>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

#include "orvane/display/Display.h"
#include "orvane/display/native/DisplayView.h"
#include "orvane/embedding/Accessibility.h"
#include "orvane/embedding/HostView.h"
#include "orvane/runtime/Runtime.h"
#include "orvane/runtime/init_orvane.h"
#include "orvane/services/CameraService.h"
#include "orvane/services/ContactsService.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/urlsession/NSURLSession.h"

namespace orvane::embedding {

using display::Display;

namespace {

// Must be called before the display is created, because the display loads its fonts then.
void chooseResources(const std::string& applications, const std::string& resources) {
    constexpr const char* key = "Resource Folder";
    auto& defaults = platform::NSUserDefaults::standardUserDefaults();
    if (!resources.empty()) {
        defaults.setVolatileObjectForKey(resources, key);
    } else if (!defaults.objectForKey(key)) {
        std::error_code error;
        const auto folder = std::filesystem::absolute(applications, error);
        defaults.setVolatileObjectForKey(error ? applications : folder.string(), key);
    }
}

}  // namespace

Session::Session(platform::NSWindow& window, std::string applications, const std::string& resources)
    : window_(window), applications_(std::move(applications)) {
    chooseResources(applications_, resources);
    // The last session of this process has ended its requests.
    platform::NSURLSession::sharedSession().renew();
    init_orvane();
    Runtime::GetInstance();
    view_ = std::make_shared<HostView>();
    view_->addSubview(Display::instance()->getView());
    layOut(window_.contentSize());
    window_.setContentView(view_);
    accessibility_ = std::make_unique<Accessibility>(*Display::instance());
    window_.setAccessibility(accessibility_.get());
}

Session::~Session() {
    // On a thread of its own, because the requests' callbacks and the timed tasks may be waiting
    // for the main queue.
    std::atomic<bool> ended = false;
    std::thread ending([&ended] {
        platform::NSURLSession::sharedSession().invalidateAndCancel();
        Runtime::GetInstance()->stop();
        ended = true;
        g_main_context_wakeup(nullptr);
    });
    while (!ended) {
        g_main_context_iteration(nullptr, TRUE);
    }
    ending.join();
    Runtime::DeleteInstance();
    services::CameraService::reset();
    services::ContactsService::reset();
    window_.setAccessibility(nullptr);
    Display::instance()->removeAll();
    window_.setContentView(nullptr);
    Display::instance()->getView()->removeFromSuperviewWithoutNeedingDisplay();
    Display::reset();
}

bool Session::start() {
    Runtime* const runtime = Runtime::GetInstance();
    runtime->initSwift(applications_);
    return runtime->hasApplication();
}

void Session::resize(platform::CGSize size) {
    layOut(size);
    Display::instance()->frameChanged({size.width, size.height});
}

void Session::layOut(platform::CGSize size) {
    view_->setFrame({{0, 0}, size});
    Display::instance()->getView()->setFrame({{0, 0}, size});
}

}  // namespace orvane::embedding
