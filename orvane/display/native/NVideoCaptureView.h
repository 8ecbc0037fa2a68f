#pragma once

#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "orvane/display/graphics/SizedObject.h"
#include "orvane/display/native/NativeObject.h"
#include "orvane/display/tree/DisplayObject.h"
#include "orvane/notification/Listeners.h"

namespace orvane::platform {
class NSCaptureView;
}

namespace orvane::services {
class CameraSession;
}

namespace orvane::display::native {

// Shows what a camera sees, in the bounds that the application sets. Until the first picture comes,
// after the session has ended, and without one, it is a dark area with the sign of a camera. Around
// a picture that does not cover the bounds it is black.
//
// It holds the session: when neither the application nor a view holds it any more, the camera is
// released. Main thread only. DisplayFactory::createVideoCaptureView creates it.
class ORVANE_EXPORT NVideoCaptureView : public virtual graphics::SizedObject<DisplayObject>,
                                        public virtual NativeObject {
public:
    // How a picture whose proportions are not those of the bounds is scaled.
    enum class Scaling {
        // All of the picture is visible.
        Fit,
        // The picture covers the bounds, which cut it off.
        Fill,
    };

    NVideoCaptureView();
    ~NVideoCaptureView() override;

    // Shows the pictures of a session; null for none. Several views may show one session.
    void setSession(std::shared_ptr<services::CameraSession> session);
    const std::shared_ptr<services::CameraSession>& getSession() const { return session_; }
    // Fit at first.
    void setScaling(Scaling scaling);
    Scaling getScaling() const { return scaling_; }
    // Sets whether left and right are exchanged, as users expect it when they see themselves. False
    // at first. Photos and recordings are never mirrored.
    void setMirrored(bool mirrored);
    bool isMirrored() const { return mirrored_; }

    std::string getDescription() const override { return "NVideoCaptureView"; }

protected:
    std::shared_ptr<NativeLayer> createLayer() override;

private:
    platform::NSCaptureView& view() const;

    std::shared_ptr<services::CameraSession> session_;
    Scaling scaling_ = Scaling::Fit;
    bool mirrored_ = false;
    notification::Listeners listeners_;
};

}  // namespace orvane::display::native
