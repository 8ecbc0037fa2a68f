#include "platform/offscreen/OffscreenDamage.h"

#include <algorithm>

#include "platform/appkit/NSView.h"
#include "platform/offscreen/OffscreenPlace.h"
#include "platform/offscreen/OffscreenScroll.h"

namespace orvane::platform {

void OffscreenDamage::setBounds(const NSBackingRect& bounds) {
    region_.setBounds(bounds);
    region_.addAll();
}

void OffscreenDamage::addPainted(NSView& view, std::span<const NSBackingRect> rects) {
    for (const NSBackingRect& rect : rects) {
        painted_.push_back({&view, rect});
    }
}

void OffscreenDamage::addReordered(NSView& superview) {
    // The views of the longest increasing subsequence of the old ranks keep their relative order;
    // the picture can only change where one of the others is. ends_[n] is the index of the view
    // with the lowest rank that ends an increasing subsequence of n + 1 views; before_ links each
    // view to its predecessor in such a subsequence.
    const std::vector<NSView*>& order = superview.subviewsInDrawingOrder();
    constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    const auto rankAt = [&order](std::size_t i) { return OffscreenPlace::of(*order[i]).rank; };
    ends_.clear();
    before_.assign(order.size(), kNone);
    for (std::size_t i = 0; i < order.size(); ++i) {
        const std::size_t rank = rankAt(i);
        if (rank == 0) {
            continue;  // a new view; it is damaged when it is placed
        }
        const auto end = std::lower_bound(
            ends_.begin(), ends_.end(), rank,
            [&rankAt](std::size_t index, std::size_t value) { return rankAt(index) < value; });
        before_[i] = end == ends_.begin() ? kNone : *(end - 1);
        if (end == ends_.end()) {
            ends_.push_back(i);
        } else {
            *end = i;
        }
    }
    std::size_t kept = ends_.empty() ? kNone : ends_.back();
    for (std::size_t i = order.size(); i-- > 0;) {
        OffscreenPlace& place = OffscreenPlace::of(*order[i]);
        if (i == kept) {
            kept = before_[i];
        } else {
            add(place.all);
        }
        place.rank = i + 1;
    }
}

void OffscreenDamage::forget(const NSView& view) {
    std::erase_if(painted_, [&view](const Painted& painted) { return painted.view == &view; });
}

NSBackingRect OffscreenDamage::rectOf(const Painted& painted, double scale) const {
    const OffscreenPlace& place = OffscreenPlace::of(*painted.view);
    return place.pixelsInImage(painted.rect, scale).intersection(place.own);
}

void OffscreenDamage::addScrolled(const OffscreenScroll& scroll, double scale) {
    for (const Painted& painted : painted_) {
        if (!painted.view->isDescendantOf(*scroll.view)) {
            add(rectOf(painted, scale));
        }
    }
    // The pixels of all other views moved, too.
    region_.take(rects_);
    for (const NSBackingRect& rect : rects_) {
        add(rect);
        add(scroll.moved(rect));
    }
    const NSBackingRect& visible = scroll.visible;
    const NSBackingRect kept = scroll.moved(visible);
    add({visible.left, visible.top, visible.right, kept.top});
    add({visible.left, kept.bottom, visible.right, visible.bottom});
    add({visible.left, visible.top, kept.left, visible.bottom});
    add({kept.right, visible.top, visible.right, visible.bottom});
}

void OffscreenDamage::take(std::vector<NSBackingRect>& out, double scale) {
    for (const Painted& painted : painted_) {
        add(rectOf(painted, scale));
    }
    painted_.clear();
    region_.take(out);
}

}  // namespace orvane::platform
