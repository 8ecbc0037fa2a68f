#pragma once

#include <memory>
#include <optional>

#include "orvane/display/native/BitmapLayer.h"
#include "platform/appkit/NSScrollView.h"

namespace orvane::display::native {

// The layer of a scroll container. Its view is a scroll view; the children are painted by the
// scroll view's document view, which also contains the views of the sublayers.
//
// Layer coordinates are those of the document view, whose origin the scroll view moves. They and
// screen coordinates differ by the origin of the layer frame alone, so nothing in the trees changes
// when the content is scrolled.
class ORVANE_EXPORT NScrollContainerLayer final : public BitmapLayer,
                                                  private platform::NSScrollViewDelegate {
public:
    // Notified of what the scroll view does, on the main thread.
    class Observer {
    public:
        virtual ~Observer() = default;
        virtual void didBeginScrolling() = 0;
        virtual void didScroll() = 0;
        virtual void didEndScrolling() = 0;
        // The bounds or the extent of the content have changed.
        virtual void didChangeExtents() {}
    };

    // How the content can be moved; see NSScrollView.
    struct Scrolling {
        bool horizontally;
        bool vertically;
        bool byPages;
    };

    // The observer is borrowed until clearObserver().
    NScrollContainerLayer(Observer& observer, const Scrolling& scrolling)
        : observer_(&observer), scrolling_(scrolling) {}
    ~NScrollContainerLayer() override;

    void clearObserver() { observer_ = nullptr; }

    std::shared_ptr<platform::NSView> getLayerContentHandler() const override { return document_; }
    // Null before init(). Main thread.
    const std::shared_ptr<platform::NSScrollView>& getScrollView() const { return scrollView_; }

    // The extent of the content; without one, that of the children.
    void setContentSize(const std::optional<geometry::Size<double>>& size) { contentSize_ = size; }
    // Gives the scroll view the extents of the bounds and of the content. The limits of the offset
    // are those of the present tree then, even before the layer was validated. Main thread.
    void updateExtents();

protected:
    std::shared_ptr<platform::NSView> createLayerHandler() override;
    // Sublayers are inside the scroll view: they do not make it larger.
    Rect computeLayerFrame() override;
    void validateLayer() override;
    void validateContent(bool force) override;
    // The content is not cut off at the bounds: the scroll view does that.
    Rect computeDirtyRect(const std::shared_ptr<DisplayObject>& object, const Rect& rect) override;

private:
    bool scrollViewShouldIgnore(platform::NSScrollView& view,
                                const platform::NSEvent& event) override;
    bool scrollViewMayTakeKeyboard(platform::NSScrollView& scrollView,
                                   const platform::NSView& view) override;
    void scrollViewWillBeginScrolling(platform::NSScrollView& view) override;
    void scrollViewDidScroll(platform::NSScrollView& view) override;
    void scrollViewDidEndScrolling(platform::NSScrollView& view) override;
    geometry::Size<double> extentOfChildren();

    Observer* observer_;
    const Scrolling scrolling_;
    std::shared_ptr<platform::NSScrollView> scrollView_;
    std::shared_ptr<platform::NSView> document_;
    std::optional<geometry::Size<double>> contentSize_;
    geometry::Point<double> corner_;  // of the layer frame at the last updateExtents()
};

}  // namespace orvane::display::native
