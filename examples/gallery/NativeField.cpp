#include "NativeField.h"

#include <utility>

#include "Palette.h"
#include "platform/appkit/NSTextField.h"

namespace gallery {

using orvane::display::native::NativeLayer;
using orvane::platform::CGColor;
using orvane::platform::NSTextField;
using orvane::platform::NSTextFieldStyle;
using orvane::platform::NSView;

namespace {

CGColor toColor(Color color) {
    const auto component = [argb = color.now()](unsigned shift) {
        return (argb >> shift & 255U) / 255.0;
    };
    return {component(16), component(8), component(0), component(24)};
}

class FieldLayer : public NativeLayer {
public:
    explicit FieldLayer(std::string value) : value_(std::move(value)) {}

    // The control handles the pointer.
    bool isNeedsGestureRecognizer() const override { return false; }

protected:
    std::shared_ptr<NSView> createLayerHandler() override {
        auto field = std::make_shared<NSTextField>();
        field->setStringValue(value_);
        field->setAccessibilityLabel("Native control");
        Look::instance().follow(field, [](NSTextField& control) {
            NSTextFieldStyle style = control.style();
            style.textColor = toColor(palette::kInk);
            style.backgroundColor = toColor(palette::kCard);
            control.setStyle(style);
        });
        return field;
    }

private:
    std::string value_;
};

}  // namespace

std::shared_ptr<NativeField> NativeField::create(const Rect& bounds, const std::string& value) {
    auto field = std::make_shared<NativeField>();
    field->bounds_ = bounds;
    field->value_ = value;
    field->init();
    return field;
}

std::shared_ptr<NativeLayer> NativeField::createLayer() {
    return std::make_shared<FieldLayer>(value_);
}

}  // namespace gallery
