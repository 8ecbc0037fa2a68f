#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class CGDataProvider;
class CGImage;

// The formats of pictures, recognized by the first bytes.
enum class CGImageFormat { Unknown, PNG, JPEG, WebP, GIF, SVG };
ORVANE_EXPORT CGImageFormat formatOf(std::span<const unsigned char> bytes);
// The name for people.
ORVANE_EXPORT const char* nameOf(CGImageFormat format);

// A picture from bytes of any of the formats: a bitmap, frames that follow one another (GIF), or a
// drawing that is rendered at the size at which it is shown (SVG). The libraries for WebP and GIF
// are opened, and the program for SVG is started, with the first picture of their kind.
//
// The limits of CGImage hold: a picture that claims more pixels is not decoded. Frames are decoded
// one at a time, so that a long animation takes no more memory than a short one. May be created on
// any thread, and is then used on one thread at a time.
class ORVANE_EXPORT CGImageSource {
public:
    // Returns null for bytes that are not a picture, or not a whole one. The bytes are not used
    // afterwards.
    static std::shared_ptr<CGImageSource> create(const CGDataProvider& provider);

    CGImageSource() = default;
    virtual ~CGImageSource() = default;
    CGImageSource(const CGImageSource&) = delete;
    CGImageSource& operator=(const CGImageSource&) = delete;

    // In pixels of the file, or in the units of a drawing.
    virtual CGSize size() const = 0;
    // The present frame. `scale` is the number of pixels for one of the file: a drawing is rendered
    // with so many pixels, as far as the limits allow. Never null.
    virtual std::shared_ptr<const CGImage> image(double scale) = 0;

    // Whether image() depends on the scale.
    virtual bool isScalable() const { return false; }

    // How long the present frame is shown, in seconds; nothing for a picture that stays as it is,
    // and for the last frame of an animation that does not begin again.
    virtual std::optional<double> delay() const { return std::nullopt; }
    // Goes on to the next frame, if there is a delay.
    virtual void advance() {}
};

}  // namespace orvane::platform
