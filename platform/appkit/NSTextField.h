#pragma once

#include <memory>
#include <string>

#include "platform/appkit/NSControl.h"

namespace orvane::platform {

class CTLine;

// A control with one line of text that the user can edit.
class ORVANE_EXPORT NSTextField : public NSControl {
public:
    static constexpr std::string_view kKind = "TextField";

    std::string_view controlKind() const override { return kKind; }

    // UTF-8. The window is notified once for each change, whether the application or the user made
    // it; setting an equal value does nothing.
    const std::string& stringValue() const { return stringValue_; }
    void setStringValue(const std::string& value);
    // Whether the user can edit the text. True at first.
    bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled);

    bool acceptsFirstResponder() const override { return enabled_; }
    bool canBecomeKeyView() const override { return true; }
    void drawRect(const CGRect& dirty) override;

private:
    std::string stringValue_;
    std::shared_ptr<const CTLine> line_;  // the value's layout; null until it is painted
    bool enabled_ = true;
};

}  // namespace orvane::platform
