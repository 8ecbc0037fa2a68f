#include "platform/appkit/NSDisplayPass.h"

#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "orvane/commons/Trace.h"
#include "platform/appkit/NSBackingStore.h"
#include "platform/appkit/NSExposure.h"
#include "platform/appkit/NSView.h"
#include "platform/appkit/NSWindow.h"
#include "platform/appkit/NSWindowChanges.h"
#include "platform/appkit/NSWindowObserver.h"

namespace orvane::platform {

NSDisplayPass::NSDisplayPass(NSWindow& window, NSWindowChanges& changes, NSWindowObserver* observer,
                             double time)
    : window_(window), changes_(changes), observer_(observer), time_(time) {}

void NSDisplayPass::stepViews() {
    std::vector<std::shared_ptr<NSView>>& views = changes_.working;
    views.clear();
    for (NSView* const view : changes_.stepped.views()) {
        views.push_back(view->shared_from_this());
    }
    for (const std::shared_ptr<NSView>& view : views) {
        if (view->window_ == &window_ && view->needsFrames_) {
            view->step(time_);
        }
    }
    views.clear();
}

void NSDisplayPass::endDepartedAnimations() {
    // Completions may remove further views.
    while (!changes_.departed.empty()) {
        const std::shared_ptr<NSView> view = changes_.departed.back().lock();
        changes_.departed.pop_back();
        if (view && view->window_ != &window_) {
            view->layer_->removeAllAnimations();
        }
    }
}

void NSDisplayPass::reportChanges() {
    std::vector<std::shared_ptr<NSView>>& views = changes_.working;
    changes_.reordered.take(views);
    for (const std::shared_ptr<NSView>& view : views) {
        if (view->window_ == &window_) {
            window_.didReorderSubviews(*view);
        }
    }
    for (NSView* view : changes_.animated.views()) {
        if (view->layer_->isAnimating(time_)) {
            view->changes_ |= kNSViewGeometryChanged | kNSViewOpacityChanged;
            changes_.changed.add(*view);
        }
    }
    changes_.changed.take(views);
    std::vector<std::shared_ptr<NSView>>& roots = changes_.visibilityRoots;
    roots.clear();
    for (const std::shared_ptr<NSView>& view : views) {
        // The walk from a changed ancestor reaches this view, too.
        bool reached = false;
        for (const NSView* above = view->superview_; above != nullptr && !reached;
             above = above->superview_) {
            reached = (above->changes_ & NSWindowChanges::kAffectsVisibility) != 0;
        }
        if ((view->changes_ & NSWindowChanges::kAffectsVisibility) && !reached) {
            roots.push_back(view);
        }
    }
    for (const std::shared_ptr<NSView>& view : views) {
        const unsigned changes =
            std::exchange(view->changes_, 0) & ~NSWindowChanges::kVisibilityStale;
        if (changes && view->window_ == &window_) {
            window_.didChangeView(*view, changes);
            if (observer_ != nullptr) {
                observer_->didChangeView(*view);
            }
        }
    }
    const NSBackingPolicy policy(window_.contentSize(), window_.backingScaleFactor());
    for (const std::shared_ptr<NSView>& root : roots) {
        if (root->window_ != &window_ || root->isHiddenOrHasHiddenAncestor()) {
            continue;
        }
        updateStoredAreas(*root, NSExposure::inside(root->superview_, window_.contentSize(), time_),
                          policy);
    }
    roots.clear();
    views.clear();
}

void NSDisplayPass::updateStoredAreas(NSView& view, const NSExposure& superview,
                                      const NSBackingPolicy& policy) {
    // A hidden view keeps what it has until it is shown again.
    if (view.hidden_) {
        return;
    }
    const NSExposure exposure = superview.ofSubview(view, time_);
    if (window_.showsNatively(view)) {
        window_.didExposeNativeView(view, exposure.distanceOf(view));
    } else if (view.paints()) {
        updateStoredArea(view, exposure, policy);
    }
    const NSExposure inside = exposure.ofSubviewsOf(view);
    for (const std::shared_ptr<NSView>& subview : view.subviews_) {
        updateStoredAreas(*subview, inside, policy);
    }
}

void NSDisplayPass::updateStoredArea(NSView& view, const NSExposure& exposure,
                                     const NSBackingPolicy& policy) {
    if (view.store_ && view.store_->scale() != window_.backingScaleFactor()) {
        view.store_.reset();
    }
    // A view that cannot be drawn keeps what it has.
    if (const std::optional<CGAffineTransform> fromWindow = exposure.toWindow().invert()) {
        const NSBackingRect stored = view.store_ ? view.store_->area() : NSBackingRect{};
        const CGRect visible =
            isEmpty(exposure.visible()) ? CGRect{} : fromWindow->apply(exposure.visible());
        storeArea(view, policy.areaToStore(view.frame_.size, visible, stored));
    }
}

void NSDisplayPass::storeArea(NSView& view, const NSBackingRect& area) {
    if (area.isEmpty()) {
        if (view.store_) {
            view.store_.reset();
            changes_.damaged.remove(view);
            window_.didPaintView(view, {});
        }
        return;
    }
    if (!view.store_) {
        view.store_ = std::make_shared<NSBackingStore>(window_.backingScaleFactor());
    }
    if (view.store_->area() != area) {
        view.store_->setArea(area);
        if (!view.store_->needsPainting()) {
            window_.didPaintView(view, {});
        }
    }
    if (view.store_->needsPainting()) {
        changes_.damaged.add(view);
    }
}

void NSDisplayPass::paintDamage() {
    std::vector<std::shared_ptr<NSView>>& views = changes_.working;
    changes_.damaged.take(views);
    for (const std::shared_ptr<NSView>& view : views) {
        // Painting may remove any of the views from the window. The damage of a hidden view waits
        // until the view is shown.
        const std::shared_ptr<NSBackingStore> store = view->store_;
        if (view->window_ == &window_ && store && !view->isHiddenOrHasHiddenAncestor()) {
            const commons::TraceScope trace("paint");
            const std::span<const NSBackingRect> painted = store->paint(*view);
            if (view->window_ == &window_) {
                window_.didPaintView(*view, painted);
                if (observer_ != nullptr) {
                    observer_->didPaintView(*view, painted);
                }
            }
        }
    }
    views.clear();
}

}  // namespace orvane::platform
