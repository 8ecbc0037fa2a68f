#pragma once

#include <string>

#include "orvane/display/graphics/BoundedObject.h"
#include "orvane/display/graphics/Drawable.h"

namespace orvane::display::graphics {

// A bitmap, painted at the origin of its own coordinates in its own size; a transformation puts it
// in its place. It is loaded at once, on the caller's thread. A load that fails leaves the image
// empty, with one line of report on standard output.
class ORVANE_EXPORT Image : public virtual BoundedObject<Drawable> {
public:
    // The size of an image is that of its bitmap: these do nothing.
    virtual void set(float x, float y, float width, float height) = 0;
    virtual void setX(float x) = 0;
    virtual void setY(float y) = 0;
    virtual void setWidth(float width) = 0;
    virtual void setHeight(float height) = 0;

    // A file of PNG or JPEG, or an address that begins with "data:" and holds such a file behind
    // ";base64,".
    virtual void setPath(const std::string& path) = 0;
    // The bytes of such a file.
    virtual void setContent(const std::string& bytes) = 0;
    // Four bytes a pixel, red, green, blue and alpha, not premultiplied, rows from the top without
    // gaps. Pixels that the bytes do not reach are transparent.
    virtual void setRawData(const std::string& bytes, int width, int height) = 0;
};

}  // namespace orvane::display::graphics
