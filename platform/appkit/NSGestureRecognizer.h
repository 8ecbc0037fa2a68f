#pragma once

#include <cstddef>
#include <memory>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class NSView;
struct NSEvent;

enum class NSGestureRecognizerState {
    Possible = 0,
    Began = 1,
    Changed = 2,
    Ended = 3,
    Cancelled = 4,
    Failed = 5,
};

// Why a gesture is over for a recognizer.
enum class NSGestureEndReason {
    Ended,   // the recognizer's state became Ended, or the button was released
    Failed,  // the recognizer's state became Failed
    // Another recognizer claimed the gesture, the view left its window, the window was destroyed,
    // or the desktop withdrew the pointer.
    Cancelled,
};

class NSGestureRecognizer;

// Decides which of the recognizers of nested views sees a gesture first.
class ORVANE_EXPORT NSGestureRecognizerDelegate {
public:
    virtual ~NSGestureRecognizerDelegate() = default;
    // Returns true if `other` must not see the gesture until `recognizer` has failed. Called only
    // if `recognizer` belongs to an inner view of `other`'s view, or was added earlier to the same
    // view. Must not change the view tree.
    virtual bool shouldBeRequiredToFailByGestureRecognizer(const NSGestureRecognizer& recognizer,
                                                           const NSGestureRecognizer& other) = 0;
};

// Interprets the pointer events of one view, from button down to button up, as a gesture. The
// window calls it through NSGestureArena, which decides which recognizers see the events. Setting
// the state to Began, Changed or Ended calls invokeAction. Main thread only.
class ORVANE_EXPORT NSGestureRecognizer {
public:
    NSGestureRecognizer();
    virtual ~NSGestureRecognizer();

    NSView* view() const { return view_; }
    // Borrowed; must outlive the recognizer.
    void setDelegate(NSGestureRecognizerDelegate* delegate) { delegate_ = delegate; }
    NSGestureRecognizerDelegate* delegate() const { return delegate_; }

    virtual void mouseDown(const NSEvent& event);
    virtual void mouseDragged(const NSEvent& event);
    virtual void mouseUp(const NSEvent& event);
    // The gesture is over for this recognizer. Called exactly once after each mouseDown, after the
    // last of the three functions above.
    virtual void endGesture(NSGestureEndReason reason);
    // The action; called when the state is set to Began, Changed or Ended.
    virtual void invokeAction() {}
    // Whether an inner recognizer may have this one wait until it has failed; see
    // NSGestureRecognizerDelegate. A recognizer that cannot wait sees each event after the inner
    // recognizers have seen it. Must be constant.
    virtual bool canWait() const { return true; }

    NSGestureRecognizerState state() const { return state_; }
    void setState(NSGestureRecognizerState state);

    // The location of an event in a view's coordinates.
    CGPoint locationInView(const NSEvent& event, const NSView& view) const;

private:
    friend class NSView;
    friend class NSGestureArena;

    static constexpr std::size_t kNotInArena = static_cast<std::size_t>(-1);

    NSView* view_ = nullptr;
    std::size_t arenaEntry_ = kNotInArena;  // written by NSGestureArena during a gesture
    NSGestureRecognizerDelegate* delegate_ = nullptr;
    NSGestureRecognizerState state_ = NSGestureRecognizerState::Possible;
};

}  // namespace orvane::platform
