#pragma once

#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// The text that was copied last from a control that edits its text itself, as controls do
// off-screen. It is in memory: the widgets of a desktop use the desktop's clipboard. Main thread
// only.
class ORVANE_EXPORT NSPasteboard {
public:
    static NSPasteboard& generalPasteboard();

    // UTF-8.
    void setString(const std::string& text) { text_ = text; }
    const std::string& string() const { return text_; }

private:
    std::string text_;
};

}  // namespace orvane::platform
