#pragma once

#include <functional>
#include <string>

#include "orvane/commons/Export.h"

// The desktop's clipboard. In a program without a desktop it is in memory. Main thread only: the
// functions are called on the main thread, and so are the callbacks, each once and never before the
// function has returned.
namespace orvane::system {

// Puts a text in UTF-8 on the clipboard, in place of what is there.
ORVANE_EXPORT void copyText(const std::string& text);
// Puts a picture on the clipboard: the bytes of a PNG or JPEG file. Returns false, and changes
// nothing, with one line in the log, if they are something else.
ORVANE_EXPORT bool copyPicture(const std::string& bytes);

// Passes the text on the clipboard to the callback; an empty one if there is none.
ORVANE_EXPORT void pasteText(std::function<void(const std::string& text)> callback);
// Passes the picture on the clipboard to the callback, as the bytes of a picture file, which
// Image::setContent takes; empty if there is none.
ORVANE_EXPORT void pastePicture(std::function<void(const std::string& bytes)> callback);

}  // namespace orvane::system
