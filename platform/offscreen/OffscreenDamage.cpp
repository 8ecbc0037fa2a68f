#include "platform/offscreen/OffscreenDamage.h"

#include <algorithm>

#include "platform/appkit/NSView.h"
#include "platform/offscreen/OffscreenPlace.h"

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

void OffscreenDamage::take(std::vector<NSBackingRect>& out, double scale) {
    for (const auto& [view, rect] : painted_) {
        const OffscreenPlace& place = OffscreenPlace::of(*view);
        add(place.pixelsInImage(rect, scale).intersection(place.own));
    }
    painted_.clear();
    region_.take(out);
}

}  // namespace orvane::platform
