#pragma once

#include <functional>
#include <memory>

#include "orvane/display/graphics/InputText.h"
#include "orvane/display/native/NativeObject.h"

namespace orvane::platform {
class NSTextField;
struct NSTextFieldStyle;
}  // namespace orvane::platform

namespace orvane::display::graphics::quartz {

// A text field of the platform, which handles keys and the pointer itself.
class UIInputText : public virtual InputText, public virtual native::NativeObject {
public:
    UIInputText(bool multiline, bool editable, bool secure, int maximumLength);

    void init() override;
    std::string getDescription() const override { return "UIInputText"; }

    bool isMultiline() const override { return multiline_; }
    bool isSecure() const override { return secure_; }
    void setContent(const std::string& content) override;
    std::string getContent() const override;
    void setPlaceholder(const std::string& placeholder) override;
    void setMaximumLength(int characters) override;
    int getMaximumLength() const override;
    void setPurpose(Purpose purpose) override;
    void setFont(const std::string& name) override;
    void setTextSize(float size) override;
    void setTextColor(unsigned argb) override;
    void setPlaceholderColor(unsigned argb) override;
    void setBackgroundColor(unsigned argb) override;
    void setSelectionColor(unsigned argb) override;
    void setAlignment(TextAlign align) override;
    void setEditable(bool editable) override;
    bool isEditable() const override;
    void setEnabled(bool enabled) override;
    bool isEnabled() const override;
    bool focus() override;
    void unfocus() override;
    bool isFocused() const override;
    void setTabOrder(int order) override;
    void setSelection(const Selection& selection) override;
    Selection getSelection() const override;

    // Called by the layer when the object was placed: the font follows the scale on screen.
    void updateFontSize();

protected:
    std::shared_ptr<native::NativeLayer> createLayer() override;

private:
    // Runs the function on the main thread, with the field.
    void withField(const std::function<void(platform::NSTextField&)>& function) const;
    void changeStyle(const std::function<void(platform::NSTextFieldStyle&)>& change);

    bool multiline_;
    bool secure_;
    // Of the field that init() creates:
    bool initiallyEditable_;
    int initialMaximumLength_;
    float textSize_ = 12;
};

}  // namespace orvane::display::graphics::quartz
