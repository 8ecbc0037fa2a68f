#pragma once

#include <memory>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSView.h"

namespace orvane::platform {

class CGImage;

// Shows the newest picture of a camera; without one, a dark area with the sign of a camera. What a
// picture does not cover is black. Main thread only.
class ORVANE_EXPORT NSCaptureView : public NSView {
public:
    // How a picture whose proportions are not those of the view is scaled: so that all of it is
    // visible, or so that it covers the view.
    enum class Gravity { Fit, Fill };

    // Replaces the picture; null for none. Its memory is used until it is replaced.
    void setImage(std::shared_ptr<const CGImage> image);
    const std::shared_ptr<const CGImage>& image() const { return image_; }
    // Fit at first.
    void setGravity(Gravity gravity);
    Gravity gravity() const { return gravity_; }
    // Whether left and right are exchanged, as in a mirror. False at first.
    void setMirrored(bool mirrored);
    bool isMirrored() const { return mirrored_; }

    bool paints() const override { return true; }
    bool isFlipped() const override { return true; }
    void setFrame(const CGRect& frame) override;
    void drawRect(const CGRect& dirty) override;

private:
    // Where the picture is, in the view's coordinates.
    CGRect imageRect() const;

    std::shared_ptr<const CGImage> image_;
    Gravity gravity_ = Gravity::Fit;
    bool mirrored_ = false;
};

}  // namespace orvane::platform
