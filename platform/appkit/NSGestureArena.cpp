#include "platform/appkit/NSGestureArena.h"

#include <algorithm>

#include "orvane/commons/ScopedFlag.h"
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
    }
}

void NSGestureArena::viewWillLeave(const NSView& view) {
    for (const std::shared_ptr<NSGestureRecognizer>& recognizer : view.gestureRecognizers()) {
        if (recognizer->arenaEntry_ < entries_.size()) {
            entries_[recognizer->arenaEntry_].viewLeft = true;
            someViewLeft_ = true;
        }
    }
}

void NSGestureArena::deliver(const std::shared_ptr<NSView>& contentView, const NSEvent& event) {
    if (event.type == NSEventType::LeftMouseDown || event.type == NSEventType::MouseCancelled) {
        // Before a press, a gesture is left over if its release was never sent.
        endAll(NSGestureEndReason::Cancelled);
        finish();
    }
    if (event.type == NSEventType::MouseCancelled) {
        return;
    }
    if (event.type == NSEventType::LeftMouseDown && contentView) {
        enter(*contentView, event);
    }
    if (!entries_.empty()) {
        events_.push_back(event);
        advance();
    }
    if (event.type == NSEventType::LeftMouseUp) {
        endAll(NSGestureEndReason::Ended);
        finish();
    }
}

void NSGestureArena::enter(NSView& contentView, const NSEvent& event) {
    window_ = contentView.window();
    for (NSView* view = contentView.hitTest(event.locationInWindow); view != nullptr;
         view = view->superview()) {
        for (const std::shared_ptr<NSGestureRecognizer>& recognizer : view->gestureRecognizers()) {
            recognizer->arenaEntry_ = entries_.size();
            entries_.push_back({recognizer, entries_.size()});
        }
    }
}

void NSGestureArena::advance() {
    cancelThoseThatLeft();
    bool isAgain = true;
    bool somebodyWaits = false;
    // One pass is enough, because entries wait only for earlier ones, unless a handler puts an
    // earlier entry out. The loop ends when a pass shows no event.
    while (isAgain) {
        isAgain = false;
        somebodyWaits = false;
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            Entry& entry = entries_[i];
            // A recognizer may have changed its state since the last event.
            judge(entry);
            while (!entry.isOut && entry.next < events_.size()) {
                if (mustWait(i)) {
                    somebodyWaits = true;
                    break;
                }
                showNextEvent(entry);
                cancelThoseThatLeft();
                isAgain = true;
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

bool NSGestureArena::mustWait(std::size_t index) {
    Entry& entry = entries_[index];
    if (!entry.recognizer->canWait()) {
        return false;
    }
    while (firstIn_ < index && entries_[firstIn_].isOut) {
        ++firstIn_;
    }
    for (; entry.unexamined > firstIn_; --entry.unexamined, entry.mustWait = false) {
        const Entry& other = entries_[entry.unexamined - 1];
        if (other.isOut) {
            continue;
        }
        NSGestureRecognizerDelegate* const delegate = other.recognizer->delegate();
        entry.mustWait = entry.mustWait || (delegate != nullptr &&
                                            delegate->shouldBeRequiredToFailByGestureRecognizer(
                                                *other.recognizer, *entry.recognizer));
        if (entry.mustWait) {
            return true;
        }
    }
    return false;
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
        default:
            break;  // the others are never stored
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
            return end(entry, NSGestureEndReason::Cancelled);
        case NSGestureRecognizerState::Failed:
            return end(entry, NSGestureEndReason::Failed);
        case NSGestureRecognizerState::Ended:
            end(entry, NSGestureEndReason::Ended);
            break;
        case NSGestureRecognizerState::Began:
        case NSGestureRecognizerState::Changed:
            break;
    }
    for (Entry& other : entries_) {
        if (&other != &entry) {
            end(other, NSGestureEndReason::Cancelled);
        }
    }
}

void NSGestureArena::end(Entry& entry, NSGestureEndReason reason) {
    if (entry.isOut) {
        return;
    }
    entry.isOut = true;
    if (entry.sawPress) {
        entry.recognizer->endGesture(reason);
    }
    if (reason == NSGestureEndReason::Cancelled) {
        entry.recognizer->setState(NSGestureRecognizerState::Cancelled);
    }
}

void NSGestureArena::endAll(NSGestureEndReason reason) {
    for (Entry& entry : entries_) {
        end(entry, reason);
    }
}

void NSGestureArena::cancelThoseThatLeft() {
    if (!someViewLeft_) {
        return;
    }
    someViewLeft_ = false;
    for (Entry& entry : entries_) {
        if (!entry.viewLeft) {
            continue;
        }
        entry.viewLeft = false;
        const NSView* const view = entry.recognizer->view();
        if (view == nullptr || view->window() == nullptr || view->window() != window_) {
            end(entry, NSGestureEndReason::Cancelled);
        }
    }
}

void NSGestureArena::finish() {
    for (const Entry& entry : entries_) {
        entry.recognizer->arenaEntry_ = NSGestureRecognizer::kNotInArena;
        entry.recognizer->setState(NSGestureRecognizerState::Possible);
    }
    entries_.clear();
    events_.clear();
    firstIn_ = 0;
}

}  // namespace orvane::platform
