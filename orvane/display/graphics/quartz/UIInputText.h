#pragma once

#include <memory>

#include "orvane/display/graphics/InputText.h"
#include "orvane/display/native/NativeObject.h"

namespace orvane::display::graphics::quartz {

// A text field of the platform, which paints itself and handles the pointer itself.
class UIInputText : public virtual InputText, public virtual native::NativeObject {
public:
    UIInputText(bool multiline, bool editable, bool secure, int maximumLength);

    std::string getDescription() const override { return "UIInputText"; }

    // These functions access the control on the main thread.
    void setContent(const std::string& content) override;
    std::string getContent() const override;

    bool isMultiline() const override { return multiline_; }
    bool isEditable() const override { return editable_; }
    bool isSecure() const override { return secure_; }
    int getMaximumLength() const override { return maximumLength_; }

protected:
    std::shared_ptr<native::NativeLayer> createLayer() override;

private:
    bool multiline_;
    bool editable_;
    bool secure_;
    int maximumLength_;
};

}  // namespace orvane::display::graphics::quartz
