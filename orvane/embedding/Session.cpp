#include "orvane/embedding/Session.h"

#include <glib.h>

#include <atomic>
#include <thread>

#include "orvane/display/Display.h"
#include "orvane/display/native/DisplayView.h"
#include "orvane/embedding/HostView.h"
#include "orvane/runtime/Runtime.h"
#include "orvane/runtime/init_orvane.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSUserDefaults.h"

namespace orvane::embedding {

using display::Display;

Session::Session(platform::NSWindow& window, const std::string& resources) : window_(window) {
    if (!resources.empty()) {
        // Before the display is made: it loads its fonts from there.
        platform::NSUserDefaults::standardUserDefaults().setVolatileObjectForKey(resources,
                                                                                 "Resource Folder");
    }
    init_orvane();
    Runtime::GetInstance();
    view_ = std::make_shared<HostView>();
    view_->addSubview(Display::instance()->getView());
    layOut(window_.contentSize());
    window_.setContentView(view_);
}

Session::~Session() {
    std::atomic<bool> ended = false;
    std::thread ending([&ended] {
        Runtime::GetInstance()->stop();
        ended = true;
        g_main_context_wakeup(nullptr);
    });
    while (!ended) {
        g_main_context_iteration(nullptr, TRUE);
    }
    ending.join();
    Runtime::DeleteInstance();
    Display::instance()->removeAll();
    window_.setContentView(nullptr);
    Display::instance()->getView()->removeFromSuperviewWithoutNeedingDisplay();
    Display::reset();
}

bool Session::start(const std::string& directory) {
    Runtime* const runtime = Runtime::GetInstance();
    runtime->initSwift(directory);
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
