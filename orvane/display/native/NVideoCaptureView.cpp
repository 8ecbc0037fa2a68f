#include "orvane/display/native/NVideoCaptureView.h"

#include <utility>

#include "orvane/display/native/NativeLayer.h"
#include "orvane/services/CameraSession.h"
#include "platform/capture/NSCaptureView.h"
#include "platform/coregraphics/CGImage.h"

namespace orvane::display::native {

using platform::NSCaptureView;

namespace {

class CaptureLayer final : public NativeLayer {
protected:
    std::shared_ptr<platform::NSView> createLayerHandler() override {
        return std::make_shared<NSCaptureView>();
    }
};

}  // namespace

NVideoCaptureView::NVideoCaptureView() = default;
NVideoCaptureView::~NVideoCaptureView() = default;

std::shared_ptr<NativeLayer> NVideoCaptureView::createLayer() {
    return std::make_shared<CaptureLayer>();
}

NSCaptureView& NVideoCaptureView::view() const {
    return static_cast<NSCaptureView&>(*getObjectHandler());
}

void NVideoCaptureView::setSession(std::shared_ptr<services::CameraSession> session) {
    if (session_ == session) {
        return;
    }
    listeners_.clear();
    view().setImage(nullptr);
    session_ = std::move(session);
    if (session_) {
        // Another listener of the same event may destroy this object.
        listeners_.add<services::CameraFrameEvent>(
            *session_,
            [weak = std::weak_ptr(getObjectHandler())](const services::CameraFrameEvent& event) {
                const services::CameraFrame& frame = event.frame;
                if (const auto view = std::static_pointer_cast<NSCaptureView>(weak.lock())) {
                    view->setImage(platform::CGImage::createTransient(frame.width, frame.height,
                                                                      frame.pixels));
                }
            });
    }
}

void NVideoCaptureView::setScaling(Scaling scaling) {
    scaling_ = scaling;
    view().setGravity(scaling == Scaling::Fill ? NSCaptureView::Gravity::Fill
                                               : NSCaptureView::Gravity::Fit);
}

void NVideoCaptureView::setMirrored(bool mirrored) {
    mirrored_ = mirrored;
    view().setMirrored(mirrored);
}

}  // namespace orvane::display::native
