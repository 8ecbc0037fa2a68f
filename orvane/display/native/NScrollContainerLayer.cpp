#include "orvane/display/native/NScrollContainerLayer.h"

#include <algorithm>

#include "orvane/display/native/BitmapView.h"
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

void NScrollContainerLayer::setDocumentFrame(const Rect& frame) {
    dispatch_ui([&] { scrollView_->setDocumentFrame(platform::CGRect(frame)); });
}

void NScrollContainerLayer::updateExtents() {
    if (scrollView_->superview() == nullptr) {
        scrollView_->setFrame(
            {scrollView_->frame().origin, {getLayerFrame().width, getLayerFrame().height}});
    }
    const geometry::Size<double> size = contentSize_ ? *contentSize_ : extentOfChildren();
    scrollView_->setContentSize({size.width, size.height});
}

void NScrollContainerLayer::validateLayer() {
    const std::shared_ptr<DisplayLayer> self = as<DisplayLayer>();
    BitmapLayer::validateLayer();
    // The children of a hidden container have no extent; the content keeps its own.
    if (scrollView_ && !isHidden()) {
        dispatch_ui([this] { updateExtents(); });
    }
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

void NScrollContainerLayer::scrollViewWillBeginScrolling(platform::NSScrollView&) {
    const std::shared_ptr<DisplayLayer> self = as<DisplayLayer>();
    if (observer_ != nullptr) {
        observer_->didBeginScrolling();
    }
}

void NScrollContainerLayer::scrollViewDidScroll(platform::NSScrollView&) {
    const std::shared_ptr<DisplayLayer> self = as<DisplayLayer>();
    if (observer_ != nullptr) {
        observer_->didScroll();
    }
}

void NScrollContainerLayer::scrollViewDidEndScrolling(platform::NSScrollView&) {
    const std::shared_ptr<DisplayLayer> self = as<DisplayLayer>();
    if (observer_ != nullptr) {
        observer_->didEndScrolling();
    }
}

}  // namespace orvane::display::native
