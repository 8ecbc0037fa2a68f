#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Nanoseconds of the media clock.
struct CVTimeStamp {
    std::uint64_t hostTime = 0;
};

enum CVReturn : int {
    kCVReturnSuccess = 0,
    kCVReturnError = -6660,
    kCVReturnInvalidArgument = -6661,
    kCVReturnDisplayLinkAlreadyRunning = -6671,
    kCVReturnDisplayLinkNotRunning = -6672,
    kCVReturnDisplayLinkCallbacksNotSet = -6673,
};

// Calls back once for each refresh of the display, on a thread of its own, until stopped. Started
// while there is a virtual media clock it has no thread: each advance of that clock is one refresh,
// and calls back on the thread that advances it.
//
// The handle shares the link. A link that runs lives on without a handle, until it is stopped, and
// one that has been stopped until its callback has returned. All operations are good from any
// thread and from the callback; on a null link they do nothing.
class ORVANE_EXPORT CVDisplayLink {
public:
    // A CVReturn.
    using Return = int;
    // `link` is a handle of the running link, `outputTime` when what is drawn now shows. What it
    // returns is of no meaning. It must not throw.
    using OutputCallback =
        std::function<Return(CVDisplayLink& link, const CVTimeStamp& outputTime)>;

    CVDisplayLink() = default;
    // A link of the main display.
    static Return createWithMainDisplay(CVDisplayLink& link);

    // Before the first start.
    Return setOutputCallback(OutputCallback callback);
    Return start();
    // No callback begins after it has returned; one that has begun on another thread goes on.
    Return stop();
    // Gives the handle up; it is null then.
    void release();
    explicit operator bool() const { return link_ != nullptr; }

    // Refreshes a second of the display, for links started from now on: 60, unless a window on a
    // display says otherwise. Out of reason is ignored.
    static void setRefreshRate(double hertz);

private:
    struct Link;
    explicit CVDisplayLink(std::shared_ptr<Link> link) : link_(std::move(link)) {}

    std::shared_ptr<Link> link_;
};

}  // namespace orvane::platform
