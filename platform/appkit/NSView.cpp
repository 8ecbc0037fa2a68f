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
    // Subviews and recognizers may outlive this view if they have other owners.
    for (const std::shared_ptr<NSView>& subview : subviews_) {
        subview->superview_ = nullptr;
        subview->layer_->setSuperlayer(nullptr);
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
    if (view->superview_ == nullptr) {
        view->leaveContentView();
    }
    insertSubview(view, target());
}

void NSView::insertSubview(const std::shared_ptr<NSView>& view, std::size_t at) {
    const std::shared_ptr<NSView> held = view;
    NSWindow* const previous = held->window_;
    if (previous != nullptr) {
        previous->viewsWillLeave(*held, previous == window_);
    }
    held->leaveSuperview();
    held->superview_ = this;
    held->layer_->setSuperlayer(layer_.get());
    subviews_.insert(subviews_.begin() + static_cast<std::ptrdiff_t>(at), held);
    subviewOrderChanged();
    if (window_ != nullptr) {
        window_->viewsDidEnter(*held);
    }
    if (previous != window_) {
        held->notifyMovedToWindow();
    }
}

void NSView::leaveContentView() {
    if (window_ != nullptr) {
        window_->setContentView(nullptr);
    }
}

void NSView::removeFromSuperviewWithoutNeedingDisplay() {
    if (superview_ == nullptr) {
        leaveContentView();
        return;
    }
    const std::shared_ptr<NSView> held = shared_from_this();
    NSWindow* const previous = window_;
    if (previous != nullptr) {
        previous->viewsWillLeave(*this, false);
    }
    leaveSuperview();
    if (previous != nullptr) {
        notifyMovedToWindow();
    }
}

void NSView::leaveSuperview() {
    if (superview_ == nullptr) {
        return;
    }
    NSView& superview = *std::exchange(superview_, nullptr);
    layer_->setSuperlayer(nullptr);
    superview.subviews_.erase(superview.subviews_.begin() +
                              static_cast<std::ptrdiff_t>(superview.indexOf(this)));
    superview.subviewOrderChanged();
}

void NSView::notifyMovedToWindow() {
    // A list, because viewDidMoveToWindow may change the tree.
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
    // Backward, because most views that are looked up were added last.
    for (std::size_t i = subviews_.size(); i-- > 0;) {
        if (subviews_[i].get() == view) {
            return i;
        }
    }
    return subviews_.size();
}

bool NSView::isDescendantOf(const NSView& view) const {
    const NSView* ancestor = this;
    while (ancestor != nullptr && ancestor != &view) {
        ancestor = ancestor->superview_;
    }
    return ancestor != nullptr;
}

void NSView::subviewOrderChanged() {
    drawingOrderValid_ = false;
    if (window_ != nullptr) {
        window_->subviewOrderDidChange(*this);
    }
}

const std::vector<NSView*>& NSView::subviewsInDrawingOrder() const {
    if (!drawingOrderValid_) {
        drawingOrder_.clear();
        for (const std::shared_ptr<NSView>& subview : subviews_) {
            drawingOrder_.push_back(subview.get());
        }
        // NaN would break the sort, so it counts as 0.
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
        if (window_ != nullptr) {
            window_->viewDidChange(*this, kNSViewHiddenChanged);
        }
    }
}

bool NSView::isHiddenOrHasHiddenAncestor() const {
    for (const NSView* view = this; view != nullptr; view = view->superview_) {
        if (view->hidden_) {
            return true;
        }
    }
    return false;
}

// ---- clipping ----

void NSView::setClips(std::vector<NSViewClip> clips) {
    if (clips_ != clips) {
        clips_ = std::move(clips);
        if (window_ != nullptr) {
            window_->viewDidChange(*this, kNSViewGeometryChanged);
        }
    }
}

// ---- drawing ----

void NSView::layerDidChange(CALayer&, unsigned changes) {
    if ((changes & kCALayerZPositionChanged) && superview_ != nullptr) {
        superview_->subviewOrderChanged();
    }
    if (window_ == nullptr) {
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
    if (window_ != nullptr) {
        window_->viewDidChange(*this, kNSViewStateChanged);
    }
}

void NSView::setNeedsDisplayInRect(const CGRect& rect) {
    // A view without a store has not been painted yet, and will be painted completely.
    if (!store_ || policy_ == NSViewLayerContentsRedrawPolicy::Never) {
        return;
    }
    if (isFinite(rect)) {
        // One pixel on each side, for antialiased edges and for frames that callers rounded.
        NSBackingRect damaged = NSBackingRect::around(standardized(rect), store_->scale());
        damaged = {damaged.left - 1, damaged.top - 1, damaged.right + 1, damaged.bottom + 1};
        store_->damage().add(damaged);
    } else {
        store_->damage().addAll();
    }
    if (window_ != nullptr && store_->needsPainting()) {
        window_->viewNeedsDisplay(*this);
    }
}

void NSView::drawRect(const CGRect&) {}

NSView* NSView::siblingWithLayer(const CALayer* layer) const {
    auto* const view = layer != nullptr ? dynamic_cast<NSView*>(layer->delegate()) : nullptr;
    const bool isSibling =
        view != nullptr && view != this && superview_ != nullptr && view->superview_ == superview_;
    return isSibling ? view : nullptr;
}

void NSView::setRealization(std::unique_ptr<NSViewRealization> realization) {
    realization_ = std::move(realization);
}

// ---- input ----

void NSView::addGestureRecognizer(const std::shared_ptr<NSGestureRecognizer>& recognizer) {
    if (recognizer && recognizer->view_ == nullptr) {
        recognizer->view_ = this;
        recognizers_.push_back(recognizer);
    }
}

NSView* NSView::hitTest(CGPoint point) {
    const bool isCut = std::any_of(clips_.begin(), clips_.end(),
                                   [&](const NSViewClip& clip) { return !clip.contains(point); });
    if (hidden_ || isCut) {
        return nullptr;
    }
    const std::optional<CGAffineTransform> toView = modelTransform(*layer_).invert();
    if (!toView) {
        return nullptr;
    }
    const CGPoint place = toView->apply(point);
    const bool isInside = contains(bounds(), place);
    if (!isInside && clipsToBounds()) {
        return nullptr;
    }
    const std::vector<NSView*>& order = subviewsInDrawingOrder();
    for (std::size_t i = order.size(); i-- > 0;) {
        NSView* const hit = order[i]->hitTest(place);
        if (hit != nullptr) {
            return hit;
        }
    }
    return isInside ? this : nullptr;
}

bool NSView::keyDown(const NSEvent&) {
    return false;
}

bool NSView::keyUp(const NSEvent&) {
    return false;
}

bool NSView::performDrop(const NSDrop&) {
    return false;
}

bool NSView::pointerEvent(const NSEvent&) {
    return false;
}

bool NSView::scrollWheel(const NSEvent&) {
    return false;
}

// ---- time ----

void NSView::step(double) {}

void NSView::setNeedsFrames(bool needsFrames) {
    if (needsFrames_ != needsFrames) {
        needsFrames_ = needsFrames;
        if (window_ != nullptr) {
            window_->viewNeedsFramesDidChange(*this);
        }
    }
}

// ---- conversion ----

CGAffineTransform NSView::transformToWindow() const {
    CGAffineTransform toWindow;
    for (const NSView* view = this; view != nullptr; view = view->superview_) {
        toWindow = toWindow.concat(modelTransform(*view->layer_));
    }
    return toWindow;
}

CGPoint NSView::convertPointFromWindow(CGPoint point) const {
    const std::optional<CGAffineTransform> toView = transformToWindow().invert();
    return toView ? toView->apply(point) : point;
}

}  // namespace orvane::platform
