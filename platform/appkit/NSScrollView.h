#pragma once

#include <functional>
#include <memory>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSScrollMotion.h"
#include "platform/appkit/NSVelocityTracker.h"
#include "platform/appkit/NSView.h"

namespace orvane::platform {

class NSScrollBars;
class NSScrollView;

// Notified of what a scroll view does. Called on the main thread; it may change the scroll view and
// the view tree.
class ORVANE_EXPORT NSScrollViewDelegate {
public:
    virtual ~NSScrollViewDelegate() = default;
    // A scroll event is about to move the content. Returns true if something in the content has
    // used the event; then the content is not moved.
    virtual bool scrollViewShouldIgnore(NSScrollView&, const NSEvent&) { return false; }
    // The user scrolls with a wheel while `view` has the keyboard. Returns true if the user does
    // not use the keyboard there, so that the scroll view may have it.
    virtual bool scrollViewMayTakeKeyboard(NSScrollView&, const NSView& /*view*/) { return false; }
    // The user, or an animated change of the offset, has set the content in motion.
    virtual void scrollViewWillBeginScrolling(NSScrollView&) {}
    // The offset has changed.
    virtual void scrollViewDidScroll(NSScrollView&) {}
    // The content is at rest, and neither the pointer nor fingers hold it.
    virtual void scrollViewDidEndScrolling(NSScrollView&) {}
};

// Shows a part of a content that may be larger than the view, and lets the user move it: with a
// wheel, a touchpad, the pointer, the keyboard and its scroll bars.
//
// The content is shown by one subview, the document view. Its place in the content is its document
// frame, and scrolling moves its origin: nothing is painted but what appears. The content may be
// much larger than a view can be, because the document view need not cover all of it.
//
// The offset is the point of the content at the top left of the view. It is always between zero and
// the content size less the view's size. Offsets, sizes and distances are in points and in the
// view's coordinates. What a scroll view cannot use of a scroll event, because its content is at an
// end, goes to the scroll views around it; a drag belongs to the innermost scroll view whose
// content can move in its direction.
//
// The bars lie over the content. They are shown while the content moves and while the pointer
// moves over it, and then fade. At an edge, the pointer opens the bar there: it gets a track,
// stays, and takes the pointer from the content.
//
// Keys go to the scroll view that was pressed or scrolled last. A wheel takes the keyboard from
// another scroll view, and from a view for which the delegate allows it, but never from a view that
// the user may be typing in.
//
// All motion is a function of the media time that the window passes to step(): NSScrollMotion
// computes it, and NSScrollBars shows where the content is. Numbers that are not
// finite, and negative sizes, are refused with a line in the log. Main thread only.
class ORVANE_EXPORT NSScrollView : public NSView {
public:
    // Use it instead of the constructor: the view's recognizers need the shared pointer.
    static std::shared_ptr<NSScrollView> create();
    ~NSScrollView() override;

    // Borrowed until it is replaced; null for none.
    void setDelegate(NSScrollViewDelegate* delegate) { delegate_ = delegate; }

    // ---- the content ----
    // The view that shows the content; null removes it. The scroll view sets its frame.
    void setDocumentView(const std::shared_ptr<NSView>& view);
    const std::shared_ptr<NSView>& documentView() const { return document_; }
    // The extent of the content. The offset is adapted to it.
    void setContentSize(CGSize size);
    CGSize contentSize() const;
    // The part of the content that the document view covers; without a call, all of it, and at
    // least the visible part.
    void setDocumentFrame(const CGRect& frame);
    // The directions in which the content can be moved; both at first.
    void setScrollable(bool horizontally, bool vertically);
    // With paging, the content comes to rest where a multiple of the view's size is visible, or the
    // end of the content. False at first.
    void setPaging(bool paging);
    bool isPaging() const { return motion_.isPaging(); }

    // ---- the offset ----
    CGPoint contentOffset() const;
    // The largest offset.
    CGPoint maximumOffset() const;
    // Where the motion that is going on will end; the offset when there is none.
    CGPoint targetOffset() const;
    // Sets the offset, within the limits. Ends the motion that is going on. With `animated`, the
    // content moves there.
    void setContentOffset(CGPoint offset, bool animated);
    // Moves the content as little as necessary to show a rectangle of it; its beginning, if it is
    // larger than the view.
    void scrollRectToVisible(const CGRect& rect, bool animated);
    // Makes `view`, which is somewhere below scroll views, visible in all of them.
    static void scrollToVisible(const NSView& view, bool animated);
    // Content of this extent was inserted above or left of what is visible; negative extents mean
    // that it was removed. The offset and the content size change, what is visible does not, and a
    // motion continues.
    void insertContentBefore(CGSize extent);
    // Whether the content moves, or the pointer or fingers hold it.
    bool isScrolling() const { return isScrolling_; }

    // ---- for the window ----
    void setFrame(const CGRect& frame) override;
    bool scrollWheel(const NSEvent& event) override;
    bool keyDown(const NSEvent& event) override;
    // Whether the content can be moved.
    bool acceptsFirstResponder() const override;
    bool pointerEvent(const NSEvent& event) override;
    void step(double time) override;
    void viewDidMoveToWindow() override;

protected:
    NSScrollView();

private:
    using Direction = NSScrollDirection;
    // Who holds the content.
    enum class Hold { Nobody, Pointer, Fingers, Knob };

    void addRecognizers();
    void addBars();

    CGPoint moveBy(CGPoint delta);
    void hold(Hold holder);
    // What happens when the pointer or the fingers release the content.
    void release(CGPoint velocity, double time);
    bool pressStopsFling();
    void takeKeyboard();
    void holdKnob(bool isHeld);
    void dragKnob(Direction direction, double way);
    void turnPage(Direction direction, bool forward);
    void openBar(Direction direction, bool isOpen);

    // To be called after changes: each does what follows from them.
    void extentsDidChange();
    void offsetDidChange();
    void motionDidChange();
    void placeDocument();

    NSScrollMotion motion_;
    std::unique_ptr<NSScrollBars> bars_;
    std::shared_ptr<NSView> document_;
    CGSize contentSize_;
    CGRect documentFrame_;
    bool coversContent_ = true;  // the document frame was not set
    NSScrollViewDelegate* delegate_ = nullptr;

    Hold hold_ = Hold::Nobody;
    bool isScrolling_ = false;
    NSVelocityTracker fingers_;
};

}  // namespace orvane::platform
