#pragma once

#include <orvane/orvane.h>

#include <memory>
#include <string>

#include "orvane/display/native/NativeLayer.h"
#include "orvane/display/native/NativeObject.h"

namespace gallery {

// A text field of the desktop among painted objects: an example of an application's own native
// control.
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
