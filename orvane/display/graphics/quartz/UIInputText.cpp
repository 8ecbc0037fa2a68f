#include "orvane/display/graphics/quartz/UIInputText.h"

#include "orvane/display/native/NativeLayer.h"
#include "orvane/thread/dispatch.h"
#include "platform/appkit/NSTextField.h"

namespace orvane::display::graphics::quartz {

using platform::NSTextField;

namespace {

class TextFieldLayer final : public native::NativeLayer {
public:
    explicit TextFieldLayer(bool enabled) : enabled_(enabled) {}

    bool isNeedsGestureRecognizer() const override { return false; }

protected:
    std::shared_ptr<platform::NSView> createLayerHandler() override {
        auto field = std::make_shared<NSTextField>();
        field->setEnabled(enabled_);
        return field;
    }

private:
    bool enabled_;
};

}  // namespace

UIInputText::UIInputText(bool multiline, bool editable, bool secure, int maximumLength)
    : multiline_(multiline), editable_(editable), secure_(secure), maximumLength_(maximumLength) {}

std::shared_ptr<native::NativeLayer> UIInputText::createLayer() {
    return std::make_shared<TextFieldLayer>(editable_);
}

void UIInputText::setContent(const std::string& content) {
    dispatch_ui([&] {
        if (const auto field = std::dynamic_pointer_cast<NSTextField>(getObjectHandler())) {
            field->setStringValue(content);
        }
    });
}

std::string UIInputText::getContent() const {
    std::string content;
    dispatch_ui([&] {
        if (const auto field = std::dynamic_pointer_cast<NSTextField>(getObjectHandler())) {
            content = field->stringValue();
        }
    });
    return content;
}

}  // namespace orvane::display::graphics::quartz
