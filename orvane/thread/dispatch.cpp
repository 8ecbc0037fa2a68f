#include "orvane/thread/dispatch.h"

#include <utility>

#include "platform/dispatch/dispatch.h"

namespace {

void runOnMainThread(const std::function<void()>& work) {
    if (orvane::platform::isMainThread()) {
        work();
    } else {
        orvane::platform::dispatchMainSync(work);
    }
}

}  // namespace

namespace orvane::thread {

void dispatch_main(std::function<void()> function) {
    runOnMainThread(function);
}

void dispatch_background(std::function<void()> function) {
    platform::dispatchBackgroundAsync(std::move(function));
}

}  // namespace orvane::thread

void dispatch_ui(const std::function<void()>& block) {
    runOnMainThread(block);
}

void dispatch_ui_sync(const std::function<void()>& block) {
    runOnMainThread(block);
}

void dispatch_ui_async(std::function<void()> block) {
    if (orvane::platform::isMainThread()) {
        // Deliberately a direct call: callers on the main thread rely on the block having run when
        // this function returns.
        block();
    } else {
        orvane::platform::dispatchMainAsync(std::move(block));
    }
}
