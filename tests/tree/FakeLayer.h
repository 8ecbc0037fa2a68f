#pragma once

#include <memory>
#include <string>
#include <vector>

#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/DisplayLayer.h"

namespace orvane::display {

// A layer without a platform view, which logs the calls that it receives.
class FakeLayer : public DisplayLayer {
public:
    explicit FakeLayer(std::string name = "layer") : name_(std::move(name)) {}

    std::shared_ptr<platform::NSView> getAnimatableHandler() const override { return nullptr; }
    void validateLayer() override { log += "layer "; }
    void validateContent(bool force) override { log += force ? "content! " : "content "; }
    void onAddObjectIntoRenderingTree(const std::shared_ptr<DisplayObject>& object) override {
        log += "+" + std::to_string(object->getId()) + " ";
        DisplayLayer::onAddObjectIntoRenderingTree(object);
    }
    void onRemoveObjectFromRenderingTree(const std::shared_ptr<DisplayObject>& object) override {
        log += "-" + std::to_string(object->getId()) + " ";
        DisplayLayer::onRemoveObjectFromRenderingTree(object);
    }

    const std::string& name() const { return name_; }

    std::string log;

private:
    std::string name_;
};

// An object whose area, in its parent's coordinates, is set by the test. It counts the validations
// that reach its frame.
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
    Rect computeFrame() override {
        return getParent() ? getParent()->applyTransformToRect(area_) : area_;
    }

private:
    Rect area_;
};

// A container without anything of its own.
class Group : public ContainerObject {};

// A stand-in for a display, so that layers validate: the model only compares it with null.
inline std::shared_ptr<Display> someDisplay() {
    static int anchor = 0;
    return {std::make_shared<int>(), reinterpret_cast<Display*>(&anchor)};
}

// The names of the sublayers of `layer`, in order.
inline std::string names(const DisplayLayer& layer) {
    std::string result;
    for (const std::shared_ptr<DisplayLayer>& sublayer : layer.getSublayers()) {
        const auto fake = std::dynamic_pointer_cast<FakeLayer>(sublayer);
        result += (fake ? fake->name() : "?") + " ";
    }
    return result;
}

}  // namespace orvane::display
