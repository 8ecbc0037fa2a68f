#pragma once

#include <orvane/orvane.h>

#include <memory>
#include <string>

#include "orvane/display/native/NativeLayer.h"
#include "orvane/display/native/NativeObject.h"

namespace gallery {

// A desktop text field among painted objects: how an application brings a control of its own.
class NativeField : public orvane::display::native::NativeObject {
public:
    static std::shared_ptr<NativeField> create(const Rect& bounds, const std::string& value);

    std::string getDescription() const override { return "NativeField"; }

protected:
    Rect computeFrame() override { return applyTransformToRect(bounds_); }
    std::shared_ptr<orvane::display::native::NativeLayer> createLayer() override;

private:
    Rect bounds_;
    std::string value_;
};

}  // namespace gallery
