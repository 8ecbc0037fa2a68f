#pragma once

#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// The clipboard of a program without a desktop: a text or a picture in memory. Controls that edit
// their text themselves, as they do off-screen, use it; the widgets of a desktop use the desktop's
// clipboard, and so do applications (NSDesktop). Main thread only.
class ORVANE_EXPORT NSPasteboard {
public:
    static NSPasteboard& generalPasteboard();

    // Replaces what is there by a text in UTF-8.
    void setString(const std::string& text);
    const std::string& string() const { return text_; }

    // Replaces what is there by a picture: the bytes of a PNG or JPEG file. Returns false, and
    // changes nothing, if they are something else.
    bool setPicture(const std::string& bytes);
    // The bytes that were set; empty for none.
    const std::string& picture() const { return picture_; }

private:
    std::string text_;
    std::string picture_;
};

}  // namespace orvane::platform
