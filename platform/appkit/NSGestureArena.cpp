#include "platform/appkit/NSGestureArena.h"

#include <algorithm>

#include "orvane/commons/ScopedFlag.h"
#include "platform/appkit/NSGestureRecognizer.h"
#include "platform/appkit/NSView.h"

namespace orvane::platform {

void NSGestureArena::sendEvent(const std::shared_ptr<NSView>& contentView, const NSEvent& event) {
    pending_.push_back(event);
    if (delivering_) {
        return;
    }
    const commons::ScopedFlag delivering(delivering_);
    while (!pending_.empty()) {
        const NSEvent next = pending_.front();
        pending_.pop_front();
        advance();
        deliver(contentView, next);
        if (next.type == NSEventType::LeftMouseUp) {
            finish();
        }
    }
}

void NSGestureArena::viewWillLeave(const NSView& view) {
    for (Entry& entry : entries_) {
        entry.viewLeft |= entry.recognizer->view() == &view;
    }
}

void NSGestureArena::deliver(const std::shared_ptr<NSView>& contentView, const NSEvent& event) {
    if (event.type == NSEventType::LeftMouseDown) {
        // A release that never came: whatever was going on is over.
        for (Entry& entry : entries_) {
            cancel(entry);
        }
        finish();
        if (contentView) {
            enter(*contentView, event);
        }
    }
    if (entries_.empty()) {
        return;
    }
    events_.push_back(event);
    advance();
}

void NSGestureArena::enter(NSView& contentView, const NSEvent& event) {
    for (NSView* view = contentView.hitTest(event.locationInWindow); view != nullptr;
         view = view->superview()) {
        for (const std::shared_ptr<NSGestureRecognizer>& recognizer : view->gestureRecognizers()) {
            entries_.push_back({recognizer});
        }
    }
}

void NSGestureArena::advance() {
    // One recognizer that fails lets in those that wait for it, earlier ones too.
    cancelThoseThatLeft();
    bool moved = true;
    bool somebodyWaits = false;
    while (moved) {
        moved = false;
        somebodyWaits = false;
        for (Entry& entry : entries_) {
            // A recognizer may have changed its state by itself since the last event.
            judge(entry);
            while (!entry.isOut && entry.next < events_.size()) {
                if (mustWait(entry)) {
                    somebodyWaits = true;
                    break;
                }
                showNextEvent(entry);
                cancelThoseThatLeft();
                moved = true;
            }
        }
    }
    if (!somebodyWaits) {
        events_.clear();
        for (Entry& entry : entries_) {
            entry.next = 0;
        }
    }
}

bool NSGestureArena::mustWait(Entry& entry) {
    for (; entry.checked < entries_.size(); ++entry.checked) {
        const Entry& other = entries_[entry.checked];
        if (&other != &entry && !other.isOut && waitsFor(entry, other)) {
            return true;
        }
    }
    return false;
}

bool NSGestureArena::waitsFor(const Entry& entry, const Entry& other) const {
    const auto mustFailFirst = [](const Entry& first, const Entry& second) {
        NSGestureRecognizerDelegate* delegate = first.recognizer->delegate();
        return delegate != nullptr && delegate->shouldBeRequiredToFailByGestureRecognizer(
                                          *first.recognizer, *second.recognizer);
    };
    // Where both are to wait for one another (two recognizers of one view), the later one does.
    return mustFailFirst(other, entry) && (&other < &entry || !mustFailFirst(entry, other));
}

void NSGestureArena::showNextEvent(Entry& entry) {
    const std::shared_ptr<NSGestureRecognizer> recognizer = entry.recognizer;
    const NSEvent event = events_[entry.next++];
    entry.sawPress = true;
    switch (event.type) {
        case NSEventType::LeftMouseDown:
            recognizer->mouseDown(event);
            break;
        case NSEventType::LeftMouseDragged:
            recognizer->mouseDragged(event);
            break;
        case NSEventType::LeftMouseUp:
            recognizer->mouseUp(event);
            break;
    }
    judge(entry);
}

void NSGestureArena::judge(Entry& entry) {
    if (entry.isOut) {
        return;
    }
    switch (entry.recognizer->state()) {
        case NSGestureRecognizerState::Possible:
            return;
        case NSGestureRecognizerState::Cancelled:
        case NSGestureRecognizerState::Failed:
            entry.isOut = true;
            return;
        case NSGestureRecognizerState::Ended:
            entry.isOut = true;
            break;
        case NSGestureRecognizerState::Began:
        case NSGestureRecognizerState::Changed:
            break;
    }
    for (Entry& other : entries_) {
        if (&other != &entry) {
            cancel(other);
        }
    }
}

void NSGestureArena::cancel(Entry& entry) {
    if (entry.isOut) {
        return;
    }
    entry.isOut = true;
    if (entry.sawPress) {
        entry.recognizer->cancelled();
    }
    entry.recognizer->setState(NSGestureRecognizerState::Cancelled);
}

void NSGestureArena::cancelThoseThatLeft() {
    for (Entry& entry : entries_) {
        if (entry.viewLeft) {
            cancel(entry);
        }
    }
}

void NSGestureArena::finish() {
    for (const Entry& entry : entries_) {
        entry.recognizer->setState(NSGestureRecognizerState::Possible);
    }
    entries_.clear();
    events_.clear();
}

}  // namespace orvane::platform
