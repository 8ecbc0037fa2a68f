// What lives as long as the process and must go in a stated order when it ends. The order is that
// of this file, turned round, which only one source file can promise; a static that joins them
// belongs here, wherever its class stands.

#include <easylogging++.h>

#include <memory>
#include <mutex>
#include <string>

#include "orvane/display/Display.h"
#include "orvane/runtime/Runtime.h"
#include "platform/dispatch/dispatch.h"

// Made first and released last: everything below may still log.
INITIALIZE_EASYLOGGINGPP

namespace orvane {

std::shared_ptr<display::Display> display::Display::s_instance;

namespace {

// Read by nobody: the search for applications knows the extension itself. It stands for the place
// in the order.
[[maybe_unused]] const std::string sharedExtension = ".dylib";

}  // namespace

std::unique_ptr<Runtime> Runtime::instance_;
std::mutex Runtime::initMutex_;

namespace {

// Released before all others, so that the tasks' thread, which the release of the runtime waits
// for, does not itself wait for a main queue that nobody drains.
struct MainQueueCloser {
    ~MainQueueCloser() { platform::closeMainQueue(); }
};
[[maybe_unused]] const MainQueueCloser mainQueueCloser;

}  // namespace

}  // namespace orvane
