#pragma once

#include <utility>

#include "orvane/display/DisplayLayer.h"
#include "orvane/display/DisplayObject.h"

namespace orvane::display {

// A layer without a view that counts what has asked for a repaint.
class MarkingLayer : public DisplayLayer {
public:
    std::shared_ptr<platform::NSView> getAnimatableHandler() const override { return nullptr; }
    void markDirty(const std::shared_ptr<DisplayObject>& object) override {
        ++marks_;
        DisplayLayer::markDirty(object);
    }

    // Since the last call.
    int takeMarks() { return std::exchange(marks_, 0); }

protected:
    void validateLayer() override {}
    void validateContent(bool) override {}

private:
    int marks_ = 0;
};

}  // namespace orvane::display
