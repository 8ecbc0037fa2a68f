#include "platform/appkit/NSView.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/appkit/NSBackingStore.h"
#include "platform/appkit/NSGestureRecognizer.h"
#include "platform/appkit/NSWindow.h"

namespace orvane::platform {

namespace {

CGAffineTransform modelTransform(const CALayer& layer) {
    return layer.affineTransform({layer.position(), layer.anchorPoint(), layer.transform()});
}

}  // namespace

NSView::NSView() : layer_(std::make_shared<CALayer>()) {
    layer_->setDelegate(this);
    indexInList_.fill(kNotListed);
}

NSView::~NSView() {
    layer_->setDelegate(nullptr);
    // Whoever else holds a subview or a recognizer must not find its way back here.
    for (const std::shared_ptr<NSView>& subview : subviews_) {
        subview->superview_ = nullptr;
    }
    for (const std::shared_ptr<NSGestureRecognizer>& recognizer : recognizers_) {
        recognizer->view_ = nullptr;
    }
}

// ---- the view tree ----

void NSView::addSubview(const std::shared_ptr<NSView>& view) {
    addSubview(view, NSWindowOrderingMode::Above, nullptr);
}

void NSView::addSubview(const std::shared_ptr<NSView>& view, NSWindowOrderingMode place,
                        const NSView* relativeTo) {
    if (!view || isDescendantOf(*view)) {
        return;
    }
    const bool below = place == NSWindowOrderingMode::Below;
    const auto target = [&] {
        const std::size_t index = indexOf(relativeTo);
        if (index == subviews_.size()) {
            return below ? std::size_t{0} : subviews_.size();
        }
        return below ? index : index + 1;
    };
    if (view->superview_ == this) {
        if (view.get() == relativeTo) {
            return;
        }
        const std::shared_ptr<NSView> held = view;
        subviews_.erase(subviews_.begin() + static_cast<std::ptrdiff_t>(indexOf(held.get())));
        subviews_.insert(subviews_.begin() + static_cast<std::ptrdiff_t>(target()), held);
        subviewOrderChanged();
        return;
    }
    if (!view->superview_) {
        view->leaveContentView();
    }
    insertSubview(view, target());
}

void NSView::insertSubview(const std::shared_ptr<NSView>& view, std::size_t at) {
    const std::shared_ptr<NSView> held = view;
    NSWindow* const previous = held->window_;
    if (previous) {
        previous->viewsWillLeave(*held, previous == window_);
    }
    held->leaveSuperview();
    held->superview_ = this;
    subviews_.insert(subviews_.begin() + static_cast<std::ptrdiff_t>(at), held);
    subviewOrderChanged();
    if (window_) {
        window_->viewsDidEnter(*held);
    }
    if (previous != window_) {
        held->tellMovedToWindow();
    }
}

void NSView::leaveContentView() {
    if (window_) {
        window_->setContentView(nullptr);
    }
}

void NSView::removeFromSuperviewWithoutNeedingDisplay() {
    if (!superview_) {
        leaveContentView();
        return;
    }
    const std::shared_ptr<NSView> held = shared_from_this();
    NSWindow* const previous = window_;
    if (previous) {
        previous->viewsWillLeave(*this, false);
    }
    leaveSuperview();
    if (previous) {
        tellMovedToWindow();
    }
}

void NSView::leaveSuperview() {
    if (!superview_) {
        return;
    }
    NSView& superview = *std::exchange(superview_, nullptr);
    superview.subviews_.erase(superview.subviews_.begin() +
                              static_cast<std::ptrdiff_t>(superview.indexOf(this)));
    superview.subviewOrderChanged();
}

void NSView::tellMovedToWindow() {
    // Application code may rearrange the tree while it is told.
    std::vector<std::shared_ptr<NSView>> subtree{shared_from_this()};
    for (std::size_t i = 0; i < subtree.size(); ++i) {
        const auto& children = subtree[i]->subviews_;
        subtree.insert(subtree.end(), children.begin(), children.end());
    }
    for (const std::shared_ptr<NSView>& view : subtree) {
        view->viewDidMoveToWindow();
    }
}

std::size_t NSView::indexOf(const NSView* view) const {
    // From the end: most of what is looked up was added last.
    for (std::size_t i = subviews_.size(); i-- > 0;) {
        if (subviews_[i].get() == view) {
            return i;
        }
    }
    return subviews_.size();
}

bool NSView::isDescendantOf(const NSView& view) const {
    const NSView* ancestor = this;
    while (ancestor && ancestor != &view) {
        ancestor = ancestor->superview_;
    }
    return ancestor != nullptr;
}

void NSView::subviewOrderChanged() {
    drawingOrderValid_ = false;
    if (window_) {
        window_->subviewOrderDidChange(*this);
    }
}

const std::vector<NSView*>& NSView::subviewsInDrawingOrder() const {
    if (!drawingOrderValid_) {
        drawingOrder_.clear();
        for (const std::shared_ptr<NSView>& subview : subviews_) {
            drawingOrder_.push_back(subview.get());
        }
        // A z that is not a number would break the order; it counts as 0.
        const auto z = [](const NSView* view) {
            const double position = view->layer_->zPosition();
            return std::isnan(position) ? 0 : position;
        };
        std::stable_sort(drawingOrder_.begin(), drawingOrder_.end(),
                         [&z](const NSView* a, const NSView* b) { return z(a) < z(b); });
        drawingOrderValid_ = true;
    }
    return drawingOrder_;
}

// ---- geometry ----

void NSView::setFrame(const CGRect& frame) {
    frame_ = frame;
    const CGPoint anchor = layer_->anchorPoint();
    layer_->setSize(frame.size);
    layer_->setPosition({frame.origin.x + anchor.x * frame.size.width,
                         frame.origin.y + anchor.y * frame.size.height});
}

void NSView::setHidden(bool hidden) {
    if (hidden_ != hidden) {
        hidden_ = hidden;
        if (window_) {
            window_->viewDidChange(*this, kNSViewHiddenChanged);
        }
    }
}

bool NSView::isHiddenOrHasHiddenAncestor() const {
    for (const NSView* view = this; view; view = view->superview_) {
        if (view->hidden_) {
            return true;
        }
    }
    return false;
}

// ---- drawing ----

void NSView::layerDidChange(CALayer&, unsigned changes) {
    if ((changes & kCALayerZPositionChanged) && superview_) {
        superview_->subviewOrderChanged();
    }
    if (!window_) {
        return;
    }
    unsigned seen = 0;
    if (changes & kCALayerGeometryChanged) {
        seen |= kNSViewGeometryChanged;
    }
    if (changes & kCALayerOpacityChanged) {
        seen |= kNSViewOpacityChanged;
    }
    if (changes & kCALayerBackgroundChanged) {
        seen |= kNSViewBackgroundChanged;
    }
    if (changes & kCALayerAnimationsChanged) {
        window_->viewAnimationsDidChange(*this);
        seen |= kNSViewGeometryChanged | kNSViewOpacityChanged;
    }
    if (seen) {
        window_->viewDidChange(*this, seen);
    }
}

void NSView::stateDidChange() {
    if (window_) {
        window_->viewDidChange(*this, kNSViewStateChanged);
    }
}

void NSView::setNeedsDisplayInRect(const CGRect& rect) {
    // Without a store nothing has been painted yet, and all will be.
    if (!store_ || policy_ == NSViewLayerContentsRedrawPolicy::Never) {
        return;
    }
    if (isFinite(rect)) {
        // One pixel around for what reaches beyond its own frame: antialiased edges, and frames
        // that were rounded on their way.
        NSBackingRect damaged = NSBackingRect::around(standardized(rect), store_->scale());
        damaged = {damaged.left - 1, damaged.top - 1, damaged.right + 1, damaged.bottom + 1};
        store_->damage().add(damaged);
    } else {
        store_->damage().addAll();
    }
    if (window_ && store_->needsPainting()) {
        window_->viewNeedsDisplay(*this);
    }
}

void NSView::drawRect(const CGRect&) {}

void NSView::setRealization(std::unique_ptr<NSViewRealization> realization) {
    realization_ = std::move(realization);
}

// ---- input ----

void NSView::addGestureRecognizer(const std::shared_ptr<NSGestureRecognizer>& recognizer) {
    if (recognizer && !recognizer->view_) {
        recognizer->view_ = this;
        recognizers_.push_back(recognizer);
    }
}

NSView* NSView::hitTest(CGPoint point) {
    if (hidden_) {
        return nullptr;
    }
    const std::optional<CGAffineTransform> toView = modelTransform(*layer_).invert();
    if (!toView) {
        return nullptr;
    }
    const CGPoint place = toView->apply(point);
    const std::vector<NSView*>& order = subviewsInDrawingOrder();
    for (std::size_t i = order.size(); i-- > 0;) {
        if (NSView* hit = order[i]->hitTest(place)) {
            return hit;
        }
    }
    const bool inside =
        place.x >= 0 && place.y >= 0 && place.x < frame_.size.width && place.y < frame_.size.height;
    return inside ? this : nullptr;
}

CGAffineTransform NSView::transformToWindow() const {
    CGAffineTransform toWindow;
    for (const NSView* view = this; view; view = view->superview_) {
        toWindow = toWindow.concat(modelTransform(*view->layer_));
    }
    return toWindow;
}

CGPoint NSView::convertPointFromWindow(CGPoint point) const {
    const std::optional<CGAffineTransform> toView = transformToWindow().invert();
    return toView ? toView->apply(point) : point;
}

}  // namespace orvane::platform
