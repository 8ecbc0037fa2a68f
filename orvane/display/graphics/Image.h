#pragma once

#include <string>

#include "orvane/display/graphics/BoundedObject.h"
#include "orvane/display/graphics/Drawable.h"

namespace orvane::display::graphics {

// A bitmap. Its top left corner is the origin of the object's coordinates and its size is the
// number of its pixels; the object's transformation moves and scales it.
//
// An image is loaded synchronously on the caller's thread. A load that fails leaves the image
// without a picture and prints one line on standard output. When there are bytes that are not a
// picture, a line in the log says whether they are damaged or of another kind.
class ORVANE_EXPORT Image : public virtual BoundedObject<Drawable> {
public:
    // Does nothing: the position of an image comes from its transformation, its size from its
    // bitmap.
    virtual void set(float x, float y, float width, float height) = 0;
    // Does nothing, like set.
    virtual void setX(float x) = 0;
    // Does nothing, like set.
    virtual void setY(float y) = 0;
    // Does nothing, like set.
    virtual void setWidth(float width) = 0;
    // Does nothing, like set.
    virtual void setHeight(float height) = 0;

    // Loads a PNG or JPEG file. A path that begins with "data:" is a data address that holds such a
    // file in base64, after the first ";base64,"; its media type is ignored.
    virtual void setPath(const std::string& path) = 0;
    // Loads a picture from the bytes of a PNG or JPEG file.
    virtual void setContent(const std::string& bytes) = 0;
    // Takes pixels of four bytes: red, green, blue and alpha, not premultiplied, in rows from the
    // top, without gaps. Pixels for which there are no bytes are transparent.
    virtual void setRawData(const std::string& bytes, int width, int height) = 0;
};

}  // namespace orvane::display::graphics
