// The static objects whose destruction at the end of the process must happen in a fixed order. That
// order is the reverse of the order in this file: C++ defines it only within one source file. A
// static object that belongs to this order is defined here, wherever its class is.

#include <easylogging++.h>

#include <memory>
#include <mutex>
#include <string>

#include "orvane/display/Display.h"
#include "orvane/runtime/Runtime.h"
#include "orvane/services/ContactsService.h"
#include "platform/dispatch/dispatch.h"

// Created first and destroyed last: the destructors of everything below may log.
INITIALIZE_EASYLOGGINGPP

namespace orvane {

std::shared_ptr<display::Display> display::Display::s_instance;

std::shared_ptr<services::ContactsService> services::ContactsService::exclusiveInstance_;

namespace {

// Read by nothing: the loader of application libraries has its own constant. It is kept because its
// place in the order is fixed.
[[maybe_unused]] const std::string sharedExtension = ".dylib";

}  // namespace

std::unique_ptr<Runtime> Runtime::instance_;
std::mutex Runtime::initMutex_;

namespace {

// Destroyed before all others. Destroying the runtime joins the thread of its timed tasks, which
// must not wait for a main queue that nothing drains any more.
struct MainQueueCloser {
    ~MainQueueCloser() { platform::closeMainQueue(); }
};
[[maybe_unused]] const MainQueueCloser mainQueueCloser;

}  // namespace

}  // namespace orvane
