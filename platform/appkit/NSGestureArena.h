#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <vector>

#include "platform/appkit/NSEvent.h"

namespace orvane::platform {

class NSGestureRecognizer;
class NSView;

// Where the recognizers of one window contend for a gesture, from button down to button up.
//
// At a press the recognizers of the hit view and of the views around it enter, inner ones first;
// they keep the gesture wherever the pointer goes. Whoever must wait for another (its delegate
// says) sees nothing until that one has failed, and then everything from the press on, in order.
// The first to begin has won: the others are cancelled if they have seen anything, and are out.
// After the release all are back to Possible.
//
// Handlers may do anything to the tree. A recognizer whose view leaves the window is cancelled
// when the event under way has been delivered, or before the next, and counts as failed.
class NSGestureArena {
public:
    // `contentView` may change, or become null, while handlers run. Events sent from within a
    // handler are delivered after the one under way.
    void sendEvent(const std::shared_ptr<NSView>& contentView, const NSEvent& event);
    void viewWillLeave(const NSView& view);

private:
    struct Entry {
        std::shared_ptr<NSGestureRecognizer> recognizer;
        std::size_t next = 0;  // the first of events_ that it has not seen
        bool sawPress = false;
        bool isOut = false;  // failed, ended, cancelled, or its view is gone
        bool viewLeft = false;
        std::size_t checked = 0;  // so many of entries_ need not be waited for any more
    };

    void deliver(const std::shared_ptr<NSView>& contentView, const NSEvent& event);
    void enter(NSView& contentView, const NSEvent& event);
    void advance();
    bool mustWait(Entry& entry);
    // Whether `entry` must wait until `other` has failed.
    bool waitsFor(const Entry& entry, const Entry& other) const;
    void showNextEvent(Entry& entry);
    // What the entry's state says about it and the others.
    void judge(Entry& entry);
    void cancel(Entry& entry);
    void cancelThoseThatLeft();
    void finish();

    std::vector<Entry> entries_;
    std::vector<NSEvent> events_;  // since the press; only while somebody waits for them
    bool delivering_ = false;
    std::deque<NSEvent> pending_;
};

}  // namespace orvane::platform
