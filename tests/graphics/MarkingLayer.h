#pragma once

#include <utility>

#include "tests/tree/FakeLayer.h"

namespace orvane::display {

// Counts what has asked for a repaint.
class MarkingLayer : public FakeLayer {
public:
    void markDirty(const std::shared_ptr<DisplayObject>& object) override {
        ++marks_;
        FakeLayer::markDirty(object);
    }

    // Since the last call.
    int takeMarks() { return std::exchange(marks_, 0); }

private:
    int marks_ = 0;
};

}  // namespace orvane::display
