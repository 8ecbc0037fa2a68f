#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "platform/appkit/NSView.h"

namespace orvane::platform {

// One of a window's lists of views. Each view records its index in each list, so adding and
// removing take constant time. The order has no meaning.
class NSViewList {
public:
    // A window has at most one list of each kind.
    explicit NSViewList(NSViewListKind kind) : kind_(kind) {}

    bool isEmpty() const { return views_.empty(); }
    const std::vector<NSView*>& views() const { return views_; }

    // Does nothing if the view is in the list already.
    void add(NSView& view) {
        if (indexIn(view) == NSView::kNotListed) {
            indexIn(view) = views_.size();
            views_.push_back(&view);
        }
    }
    // Does nothing if the view is not in the list.
    void remove(NSView& view) {
        const std::size_t index = indexIn(view);
        if (index != NSView::kNotListed) {
            views_[index] = views_.back();
            indexIn(*views_[index]) = index;
            views_.pop_back();
            indexIn(view) = NSView::kNotListed;
        }
    }
    // Empties the list into `out`, whose references keep the views alive while the caller works on
    // them.
    void take(std::vector<std::shared_ptr<NSView>>& out) {
        out.clear();
        for (NSView* view : views_) {
            indexIn(*view) = NSView::kNotListed;
            out.push_back(view->shared_from_this());
        }
        views_.clear();
    }

private:
    std::size_t& indexIn(NSView& view) const {
        return view.indexInList_[static_cast<std::size_t>(kind_)];
    }

    NSViewListKind kind_;
    std::vector<NSView*> views_;
};

}  // namespace orvane::platform
