#include "orvane/display/graphics/quartz/UIScrollContainer.h"

#include "orvane/commons/guardedCall.h"
#include "orvane/commons/reportMisuse.h"
#include "orvane/thread/dispatch.h"
#include "platform/appkit/NSScrollView.h"

namespace orvane::display::graphics::quartz {

using geometry::Point;
using geometry::Size;
using native::NScrollContainerLayer;
using platform::NSScrollView;

UIScrollContainer::UIScrollContainer(Type type, bool paging) : type_(type), paging_(paging) {
    setScrollOffset({});
}

UIScrollContainer::~UIScrollContainer() {
    // Others may still hold the layer.
    if (const auto layer = getScrollLayer()) {
        dispatch_ui([&layer] { layer->clearObserver(); });
    }
}

std::shared_ptr<native::NativeLayer> UIScrollContainer::createLayer() {
    auto layer = std::make_shared<NScrollContainerLayer>(
        static_cast<Observer&>(*this),
        NScrollContainerLayer::Scrolling{type_ != Type::Vertical, type_ != Type::Horizontal,
                                         paging_});
    scroll_ = layer;
    return layer;
}

void UIScrollContainer::withView(const std::function<void(NSScrollView&)>& use) const {
    const auto layer = getScrollLayer();
    dispatch_ui([&] {
        if (layer && layer->getScrollView()) {
            layer->updateExtents();
            // Held: a listener may release the layer.
            const std::shared_ptr<NSScrollView> view = layer->getScrollView();
            use(*view);
        }
    });
}

// ---- the content ----

void UIScrollContainer::setPaging(bool paging) {
    paging_ = paging;
    withView([paging](NSScrollView& view) { view.setPaging(paging); });
}

void UIScrollContainer::setContentSize(const Size<double>& size) {
    if (const auto layer = getScrollLayer()) {
        layer->setContentSize(size);
        withView([](NSScrollView&) {});
    }
}

void UIScrollContainer::resetContentSize() {
    if (const auto layer = getScrollLayer()) {
        layer->setContentSize({});
        withView([](NSScrollView&) {});
    }
}

Size<double> UIScrollContainer::getContentSize() {
    Size<double> size;
    withView([&size](NSScrollView& view) { size = Size<double>(view.contentSize()); });
    return size;
}

void UIScrollContainer::validate(const Rect& rect) {
    if (!isVisible()) {
        return;
    }
    const StateScope state(*this);
    applyTransform();
    doValidate(rect);
}

// ---- the offset ----

Point<double> UIScrollContainer::getMaximumOffset() {
    Point<double> maximum;
    withView([&maximum](NSScrollView& view) { maximum = Point<double>(view.maximumOffset()); });
    return maximum;
}

void UIScrollContainer::setContentOffset(const Point<double>& offset, Motion motion) {
    withView([&](NSScrollView& view) {
        view.setContentOffset({offset.x, offset.y}, motion == Motion::Animated);
    });
}

auto UIScrollContainer::reveal(const Rect& rect, Motion motion) -> Rect {
    Rect revealed = rect;
    withView([&](NSScrollView& view) {
        const Point<double>& origin = getFrame().position();
        view.scrollRectToVisible(
            platform::CGRect(rect.movedBy({-origin.x, documentOrigin_ - origin.y})),
            motion == Motion::Animated);
        const platform::CGPoint target = view.targetOffset();
        revealed = rect.movedBy({-target.x, documentOrigin_ - target.y});
    });
    return revealed;
}

void UIScrollContainer::scrollToVisible(const std::shared_ptr<DisplayObject>& object,
                                        Motion motion) {
    if (!object || object == shared_from_this() || !object->findChildOf(shared_from_this())) {
        commons::reportMisuse("ScrollContainer::scrollToVisible",
                              "nothing is scrolled: the object is not in the container");
        return;
    }
    Rect rect = object->getFrame();
    for (std::shared_ptr<ContainerObject> around = object->getScrollContainer(); around;
         around = around->getScrollContainer()) {
        if (auto* const scroll = dynamic_cast<UIScrollContainer*>(around.get())) {
            rect = scroll->reveal(rect, motion);
        }
        if (around == shared_from_this()) {
            return;
        }
    }
}

void UIScrollContainer::setDocument(NSScrollView& view, double origin, double extent) {
    documentOrigin_ = origin;
    setScrollOffset({offset_.x, offset_.y - origin});
    view.setDocumentFrame({{0, origin}, {view.bounds().size.width, extent}});
}

bool UIScrollContainer::isScrolling() const {
    const auto layer = getScrollLayer();
    bool isScrolling = false;
    dispatch_ui([&] {
        isScrolling = layer && layer->getScrollView() && layer->getScrollView()->isScrolling();
    });
    return isScrolling;
}

// ---- what the view does ----

void UIScrollContainer::send(ScrollOffsetPhase phase) {
    const std::shared_ptr<DisplayObject> self = shared_from_this();
    commons::guardedCall("exception of a scroll listener", [&] {
        notify(ScrollOffsetEvent{phase, getContentOffset()});
    });
}

void UIScrollContainer::didBeginScrolling() {
    send(ScrollOffsetPhase::Began);
}

void UIScrollContainer::didScroll() {
    const auto layer = getScrollLayer();
    if (!layer || !layer->getScrollView()) {
        return;
    }
    offset_ = Point<double>(layer->getScrollView()->contentOffset());
    setScrollOffset({offset_.x, offset_.y - documentOrigin_});
    send(ScrollOffsetPhase::Changed);
}

void UIScrollContainer::didEndScrolling() {
    send(ScrollOffsetPhase::Ended);
}

}  // namespace orvane::display::graphics::quartz
