#pragma once

#include <memory>
#include <string>

#include "platform/appkit/NSControl.h"

namespace orvane::platform {

class CTLine;

// One line of text that the user can edit.
class ORVANE_EXPORT NSTextField : public NSControl {
public:
    NSControlKind controlKind() const override { return NSControlKind::TextField; }

    // UTF-8. Whether the application or the user changed it, the window is told once, and not at
    // all when it is what it was.
    const std::string& stringValue() const { return stringValue_; }
    void setStringValue(const std::string& value);
    bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled);

    void drawRect(const CGRect& dirty) override;

private:
    std::string stringValue_;
    std::shared_ptr<const CTLine> line_;  // of the value; made when it is painted
    bool enabled_ = true;
};

}  // namespace orvane::platform
