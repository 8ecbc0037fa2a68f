#pragma once

#include <cstddef>
#include <vector>

#include "platform/appkit/NSView.h"

namespace orvane::platform {

// One of a window's lists of views, for example of those to be painted. A view knows its place in
// it, so that coming and going cost the same however long the list is. The order is of no meaning.
class NSViewList {
public:
    // The slot is this list's own in NSView::listed_.
    explicit NSViewList(std::size_t slot) : slot_(slot) {}

    bool isEmpty() const { return views_.empty(); }
    const std::vector<NSView*>& views() const { return views_; }

    void add(NSView& view) {
        if (view.listed_[slot_] == NSView::notListed) {
            view.listed_[slot_] = views_.size();
            views_.push_back(&view);
        }
    }
    void remove(NSView& view) {
        const std::size_t place = view.listed_[slot_];
        if (place != NSView::notListed) {
            views_[place] = views_.back();
            views_[place]->listed_[slot_] = place;
            views_.pop_back();
            view.listed_[slot_] = NSView::notListed;
        }
    }
    // Empties the list into `out`, which keeps the views alive while they are worked on.
    void take(std::vector<std::shared_ptr<NSView>>& out) {
        out.clear();
        for (NSView* view : views_) {
            view->listed_[slot_] = NSView::notListed;
            out.push_back(view->shared_from_this());
        }
        views_.clear();
    }

private:
    std::size_t slot_;
    std::vector<NSView*> views_;
};

}  // namespace orvane::platform
