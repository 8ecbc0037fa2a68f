#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// The time of a refresh, in nanoseconds of the media clock.
struct CVTimeStamp {
    std::uint64_t hostTime = 0;
};

// Results of the operations below.
enum CVReturn : int {
    kCVReturnSuccess = 0,
    kCVReturnInvalidArgument = -6661,
    kCVReturnDisplayLinkAlreadyRunning = -6671,
    kCVReturnDisplayLinkNotRunning = -6672,
    kCVReturnDisplayLinkCallbacksNotSet = -6673,
};

struct DisplayLinkState;

// A handle of a display link, which calls back once for each refresh of the display while it runs.
// All running links are called on the main thread, one after another in the order of their starts,
// before the display shows the frame; CVDisplay describes what refreshes them.
//
// Copies of a handle share the link. A running link stays alive without a handle until it is
// stopped. All operations may be called on any thread and from the callback; on a null handle they
// return kCVReturnInvalidArgument and have no effect.
class ORVANE_EXPORT CVDisplayLink {
public:
    // A CVReturn.
    using Return = int;
    // `link` is a handle of the running link, `outputTime` is the time of the frame to prepare. The
    // result is ignored. The callback must not throw.
    using OutputCallback =
        std::function<Return(CVDisplayLink& link, const CVTimeStamp& outputTime)>;

    CVDisplayLink() = default;
    // Makes `link` a handle of a new link.
    static Return createWithMainDisplay(CVDisplayLink& link);

    // Must be called before the first start().
    Return setOutputCallback(OutputCallback callback);
    // The first callback comes with the next refresh.
    Return start();
    // No callback begins after stop() has returned; one that is under way continues.
    Return stop();
    // Makes the handle null.
    void release();
    // Whether any link runs.
    static bool isAnyRunning();
    explicit operator bool() const { return state_ != nullptr; }

private:
    friend class DisplayLinks;
    explicit CVDisplayLink(std::shared_ptr<DisplayLinkState> state) : state_(std::move(state)) {}

    std::shared_ptr<DisplayLinkState> state_;
};

}  // namespace orvane::platform
