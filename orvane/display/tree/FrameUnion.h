#pragma once

#include <algorithm>

#include "orvane/display/geometry/Rect.h"

namespace orvane::display {

// The union of frames in the order in which they are added. An empty frame adds nothing, except
// that a union of empty frames only is the last one of them. Frames are cut to the reach of a
// rectangle. The union of one frame is that frame; of several, it is kept as edges, so that it does
// not depend on the order of adding.
class FrameUnion {
public:
    using Rect = geometry::Rect<double>;

    void add(const Rect& frame) {
        const Rect added = frame.cutToReach();
        if (added.isEmpty()) {
            single_ = count_ == 0 ? added : single_;
            return;
        }
        if (count_ == 0) {
            single_ = added;
            left_ = added.x;
            top_ = added.y;
            right_ = added.x + added.width;
            bottom_ = added.y + added.height;
        } else {
            left_ = std::min(left_, added.x);
            top_ = std::min(top_, added.y);
            right_ = std::max(right_, added.x + added.width);
            bottom_ = std::max(bottom_, added.y + added.height);
        }
        ++count_;
    }

    Rect rect() const {
        return count_ < 2 ? single_ : Rect(left_, top_, right_ - left_, bottom_ - top_);
    }

private:
    Rect single_;
    std::size_t count_ = 0;  // of the frames that are not empty
    double left_ = 0, top_ = 0, right_ = 0, bottom_ = 0;
};

}  // namespace orvane::display
