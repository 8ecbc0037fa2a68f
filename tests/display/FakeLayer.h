#pragma once

#include <memory>
#include <string>

#include "orvane/display/ContainerObject.h"
#include "orvane/display/DisplayLayer.h"

namespace orvane::display {

// A layer with no platform behind it, which keeps a log of what the tree asks of it.
class FakeLayer : public DisplayLayer {
public:
    std::shared_ptr<platform::NSView> getAnimatableHandler() const override { return nullptr; }
    void validateLayer() override { log += "layer "; }
    void validateContent(bool force) override { log += force ? "content! " : "content "; }

    std::string log;
};

// An object whose frame is told to it.
class Spot : public DisplayObject {
public:
    explicit Spot(const Rect& area = {0, 0, 10, 10}) : area_(area) { setCulledByFrame(); }

    void setArea(const Rect& area) {
        area_ = area;
        invalidate(true);
    }
    void validate(const Rect& rect) override {
        if (getFrame().touches(rect)) {
            ++validations;
            DisplayObject::validate(rect);
        }
    }

    int validations = 0;

protected:
    Rect computeFrame() override { return area_; }

private:
    Rect area_;
};

class Group : public ContainerObject {};

// A layer that shows, so that validation runs: any display that is not null will do.
inline std::shared_ptr<Display> someDisplay() {
    static int anchor = 0;
    return {std::make_shared<int>(), reinterpret_cast<Display*>(&anchor)};
}

}  // namespace orvane::display
