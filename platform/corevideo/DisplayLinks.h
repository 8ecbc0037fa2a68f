#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "platform/corevideo/CVDisplayLink.h"

typedef struct _GSource GSource;

namespace orvane::platform {

class CVDisplay;

// A display link. Guarded by the mutex of DisplayLinks, except that the callback, which does not
// change after the first start, is called without it.
struct DisplayLinkState {
    CVDisplayLink::OutputCallback callback;
    bool hasStarted = false;
    bool isRunning = false;
};

// The running display links of the process, and what refreshes them; see CVDisplay. Never
// destroyed: a link that is never stopped lives as long as the process. Operations on links may be
// called on any thread, all others on the main thread only.
class DisplayLinks {
public:
    static DisplayLinks& shared();

    CVDisplayLink::Return setCallback(DisplayLinkState& link,
                                      CVDisplayLink::OutputCallback callback);
    CVDisplayLink::Return start(const std::shared_ptr<DisplayLinkState>& link);
    CVDisplayLink::Return stop(const std::shared_ptr<DisplayLinkState>& link);
    bool isAnyRunning();

    void addDisplay(CVDisplay& display);
    void removeDisplay(CVDisplay& display);
    // Returns whether links are running and this display is the one that refreshes them.
    bool refreshByDisplay(const CVDisplay& display, double time);
    void refreshByTimer();

private:
    DisplayLinks();

    // Calls the running links back.
    void refresh(double time);
    // The same for times of the real clock, which it keeps from going back.
    void refreshAtRealTime(double time);
    // Asks the first display for a refresh if links are running.
    void requestRefresh();
    // Must be called with the mutex locked.
    void setTimer();

    std::mutex mutex_;                                        // guards the following members
    std::vector<std::shared_ptr<DisplayLinkState>> running_;  // in the order of their starts
    std::vector<CVDisplay*> displays_;                        // the first one refreshes the links
    bool hasRefreshed_ = false;  // a display has refreshed the links since the timer was set

    GSource* timer_;
    // Used on the main thread only.
    bool refreshing_ = false;
    double lastTime_ = 0;
    std::vector<std::shared_ptr<DisplayLinkState>> batch_;  // kept for its memory
};

}  // namespace orvane::platform
