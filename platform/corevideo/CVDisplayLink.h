#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Nanoseconds of the media clock.
struct CVTimeStamp {
    std::uint64_t hostTime = 0;
};

// Calls back once for each refresh of the display, on a thread of its own, until stopped. While
// there is a virtual media clock it has no thread: each advance of that clock is one refresh, and
// calls back on the thread that advances it.
//
// The handle shares the link: the link lives until the last handle has gone, and its thread ends
// then if it was not stopped. All operations are good from any thread, its own callback included.
class ORVANE_EXPORT CVDisplayLink {
public:
    // Zero when all is well; otherwise the failure's number.
    using Return = int;
    // `link` is the handle of the running link, `outputTime` when what is drawn now shows.
    using OutputCallback =
        std::function<Return(CVDisplayLink& link, const CVTimeStamp& outputTime)>;

    // A null link, on which every operation does nothing.
    CVDisplayLink() = default;
    // A link of the main display in `link`; null when it could not be made.
    static Return createWithMainDisplay(CVDisplayLink& link);

    // To be set before the link is started.
    Return setOutputCallback(OutputCallback callback);
    Return start();
    // No callback begins after it has returned, but for one that another thread is in the middle
    // of.
    Return stop();
    // Gives the handle up; it is null then.
    void release();
    bool isRunning() const;
    explicit operator bool() const { return link_ != nullptr; }

    // Refreshes a second of the display, for links started from now on; 60 unless the window on the
    // desktop says otherwise.
    static void setRefreshRate(double hertz);

private:
    struct Link;
    explicit CVDisplayLink(std::shared_ptr<Link> link) : link_(std::move(link)) {}

    std::shared_ptr<Link> link_;
};

}  // namespace orvane::platform
