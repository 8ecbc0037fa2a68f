#include "orvane/display/native/NScrollContainerLayer.h"

#include <algorithm>
#include <utility>

#include "orvane/display/geometry/rounding.h"
#include "orvane/display/native/BitmapView.h"
#include "orvane/display/native/DisplayView.h"
#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/FrameCache.h"
#include "orvane/thread/dispatch.h"

namespace orvane::display::native {

NScrollContainerLayer::~NScrollContainerLayer() {
    dispatch_ui([this] {
        if (const auto view = std::dynamic_pointer_cast<BitmapView>(document_)) {
            view->setOrvaneLayer(nullptr);
        }
        if (scrollView_) {
            scrollView_->setDelegate(nullptr);
        }
        scrollView_.reset();
        document_.reset();
    });
}

std::shared_ptr<platform::NSView> NScrollContainerLayer::createLayerHandler() {
    document_ = BitmapLayer::createLayerHandler();
    scrollView_ = platform::NSScrollView::create();
    scrollView_->setScrollable(scrolling_.horizontally, scrolling_.vertically);
    scrollView_->setPaging(scrolling_.byPages);
    scrollView_->setDocumentView(document_);
    scrollView_->setDelegate(this);
    return scrollView_;
}

// ---- the content ----

auto NScrollContainerLayer::computeLayerFrame() -> Rect {
    const std::shared_ptr<DisplayObject> owner = getOwner();
    return owner ? owner->getFrame().cutToReach() : BitmapLayer::computeLayerFrame();
}

geometry::Size<double> NScrollContainerLayer::extentOfChildren() {
    const std::shared_ptr<DisplayObject> owner = getOwner();
    ContainerObject* const container = owner ? owner->asContainer() : nullptr;
    if (container == nullptr) {
        return {};
    }
    const Rect children = FrameCache::unionOfChildren(*container);
    if (children.isEmpty()) {
        return {};
    }
    const Rect content = convertRectFromScreen(children);
    return {std::max(content.x + content.width, 0.0), std::max(content.y + content.height, 0.0)};
}

void NScrollContainerLayer::updateExtents() {
    const platform::CGSize boundsBefore = scrollView_->bounds().size;
    const platform::CGSize contentBefore = scrollView_->contentSize();
    const Rect frame = geometry::toInt(getLayerFrame());
    const bool isMoved = std::exchange(corner_, frame.position()) != frame.position();
    scrollView_->setFrame({scrollView_->frame().origin, {frame.width, frame.height}});
    const geometry::Size<double> size = contentSize_ ? *contentSize_ : extentOfChildren();
    scrollView_->setContentSize({size.width, size.height});
    const bool isChanged = isMoved || scrollView_->bounds().size != boundsBefore ||
                           scrollView_->contentSize() != contentBefore;
    if (isChanged && observer_ != nullptr) {
        observer_->didChangeExtents();
    }
}

void NScrollContainerLayer::validateLayer() {
    const std::shared_ptr<DisplayLayer> self = commons::sharedFrom<DisplayLayer>(*this);
    // The children of a hidden container have no extent; the content keeps its own.
    if (scrollView_ && !isHidden()) {
        dispatch_ui([this] { updateExtents(); });
    }
    BitmapLayer::validateLayer();
}

void NScrollContainerLayer::validateContent(bool force) {
    BitmapLayer::validateContent(force);
    if (force) {
        // The layer frame, which was damaged, is only the beginning of the content.
        dispatch_ui([this] { document_->setNeedsDisplayInRect(document_->bounds()); });
    }
}

auto NScrollContainerLayer::computeDirtyRect(const std::shared_ptr<DisplayObject>&,
                                             const Rect& rect) -> Rect {
    return rect;
}

// ---- what the scroll view does ----

// The display's view knows the listeners in the content.
bool NScrollContainerLayer::scrollViewShouldIgnore(platform::NSScrollView& view,
                                                   const platform::NSEvent& event) {
    platform::NSView* above = view.superview();
    while (above != nullptr && dynamic_cast<DisplayView*>(above) == nullptr) {
        above = above->superview();
    }
    auto* const displayView = dynamic_cast<DisplayView*>(above);
    return displayView != nullptr && displayView->scrollWithin(getOwner().get(), event);
}

// A press on nothing in particular gives the keyboard to the display's view.
bool NScrollContainerLayer::scrollViewMayTakeKeyboard(platform::NSScrollView&,
                                                      const platform::NSView& view) {
    const auto* const displayView = dynamic_cast<const DisplayView*>(&view);
    return displayView != nullptr && !displayView->hasFocusedObject();
}

void NScrollContainerLayer::scrollViewWillBeginScrolling(platform::NSScrollView&) {
    const std::shared_ptr<DisplayLayer> self = commons::sharedFrom<DisplayLayer>(*this);
    if (observer_ != nullptr) {
        observer_->didBeginScrolling();
    }
}

void NScrollContainerLayer::scrollViewDidScroll(platform::NSScrollView&) {
    const std::shared_ptr<DisplayLayer> self = commons::sharedFrom<DisplayLayer>(*this);
    if (observer_ != nullptr) {
        observer_->didScroll();
    }
}

void NScrollContainerLayer::scrollViewDidEndScrolling(platform::NSScrollView&) {
    const std::shared_ptr<DisplayLayer> self = commons::sharedFrom<DisplayLayer>(*this);
    if (observer_ != nullptr) {
        observer_->didEndScrolling();
    }
}

}  // namespace orvane::display::native
