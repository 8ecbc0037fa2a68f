#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <vector>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSGestureRecognizer.h"

namespace orvane::platform {

class NSView;
class NSWindow;

// Decides which gesture recognizers of one window see a gesture, from button down to button up.
//
// At a press, the recognizers of the view under the pointer and of its ancestors enter, inner ones
// first. They see the gesture wherever the pointer goes. A recognizer that must wait for an earlier
// one (NSGestureRecognizerDelegate) sees nothing until that one has failed, and then every event
// from the press on, in order. The first recognizer whose state becomes Began, Changed or Ended
// wins: the gesture is cancelled for all others.
//
// The gesture ends for each recognizer that saw the press by exactly one call of its endGesture,
// for any reason. After the release all recognizers are Possible again.
//
// Handlers may change the view tree. For a recognizer whose view is not in the window after the
// handler returned, or before the next event, the gesture is cancelled.
class NSGestureArena {
public:
    // `contentView` may change or become null while handlers run. Events that a handler sends are
    // delivered after the current one.
    void sendEvent(const std::shared_ptr<NSView>& contentView, const NSEvent& event);
    void viewWillLeave(const NSView& view);

private:
    struct Entry {
        std::shared_ptr<NSGestureRecognizer> recognizer;
        // The number of preceding entries for which this one may still have to wait. They are
        // examined from the last to the first, so the nearest inner recognizer comes first.
        std::size_t unexamined = 0;
        bool mustWait = false;  // for the last of those
        std::size_t next = 0;   // the first of events_ that the recognizer has not seen
        bool sawPress = false;
        bool isOut = false;  // failed, ended or cancelled
        bool viewLeft = false;
    };

    void deliver(const std::shared_ptr<NSView>& contentView, const NSEvent& event);
    void enter(NSView& contentView, const NSEvent& event);
    void advance();
    bool mustWait(std::size_t index);
    void showNextEvent(Entry& entry);
    // Acts on the state that the recognizer has set.
    void judge(Entry& entry);
    void end(Entry& entry, NSGestureEndReason reason);
    void endAll(NSGestureEndReason reason);
    // Cancels the gesture for recognizers whose views are no longer in the window.
    void cancelThoseThatLeft();
    void finish();

    std::vector<Entry> entries_;
    std::vector<NSEvent> events_;       // since the press; kept only while a recognizer waits
    std::size_t firstIn_ = 0;           // all entries before this one are out
    const NSWindow* window_ = nullptr;  // the window of the views; only compared
    bool someViewLeft_ = false;
    bool delivering_ = false;
    std::deque<NSEvent> pending_;
};

}  // namespace orvane::platform
