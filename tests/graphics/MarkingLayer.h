#pragma once

#include <utility>

#include "tests/tree/FakeLayer.h"

namespace orvane::display {

// A layer that counts requests for a repaint.
class MarkingLayer : public FakeLayer {
public:
    void markDirty(const std::shared_ptr<DisplayObject>& object) override {
        ++marks_;
        FakeLayer::markDirty(object);
    }

    // Returns the number of requests since the last call.
    int takeMarks() { return std::exchange(marks_, 0); }

private:
    int marks_ = 0;
};

}  // namespace orvane::display
