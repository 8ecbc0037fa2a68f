#pragma once

#include <string>

#include "orvane/display/graphics/BoundedObject.h"
#include "orvane/display/graphics/Drawable.h"
#include "orvane/display/graphics/ImageStateEvent.h"

namespace orvane::display::graphics {

// A bitmap. Its top left corner is the origin of the object's coordinates and its size is the
// number of its pixels; the object's transformation moves and scales it.
//
// A picture is a PNG, JPEG, WebP, GIF or SVG file. A GIF with several frames plays; an SVG drawing
// has the size that it states, and is rendered for the size at which it is shown.
//
// The functions named set... load an image synchronously on the caller's thread. A load that fails
// leaves the image without a picture and prints one line on standard output. When there are bytes
// that are not a picture, a line in the log says whether they are damaged or of another kind.
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

    // Loads a file. A path that begins with "data:" is a data address that holds such a
    // file in base64, after the first ";base64,"; its media type is ignored.
    virtual void setPath(const std::string& path) = 0;
    // Loads a picture from the bytes of a file.
    virtual void setContent(const std::string& bytes) = 0;
    // Takes pixels of four bytes: red, green, blue and alpha, not premultiplied, in rows from the
    // top, without gaps. Pixels for which there are no bytes are transparent.
    virtual void setRawData(const std::string& bytes, int width, int height) = 0;

    // Loads a picture on a background thread. The address is a path or begins with "file:",
    // "data:", "http:" or "https:". Until it has arrived, and if it does not, the present picture
    // stays. A later call of this or another loader makes the earlier one void. Pictures of servers
    // are kept in the user's cache folder, as long as the servers allow. Main thread.
    virtual void load(const std::string& address) = 0;
    // The state of the last loader. An ImageStateEvent follows each load().
    virtual ImageState getState() const = 0;

    // Pauses a picture with several frames, or goes on. It plays at first, while it is visible.
    virtual void setPlaying(bool playing) = 0;
    // The value that setPlaying set, also for a picture with one frame.
    virtual bool isPlaying() const = 0;

    // Paints the picture in one color, ARGB with alpha in bits 24 to 31: every pixel keeps its
    // opacity, multiplied by that of the color. A transparent color, the value at first, shows the
    // picture as it is.
    virtual void setTint(unsigned argb) = 0;
    // The color that setTint set.
    virtual unsigned getTint() const = 0;
};

}  // namespace orvane::display::graphics
