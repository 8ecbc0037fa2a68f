#pragma once

#include <orvane/orvane.h>

#include <memory>
#include <string>

namespace travel {

// A photo to remember the place by: what the camera sees, and the last photo. The camera is opened
// when the user presses the button the first time.
class PhotoCard {
public:
    PhotoCard();

    // What belongs onto the page.
    const std::shared_ptr<orvane::display::layout::Box>& box() const { return box_; }

private:
    void press();
    void open();
    void explain(const orvane::services::ServiceFailure& failure);

    std::shared_ptr<orvane::display::layout::Box> box_;
    std::shared_ptr<orvane::display::native::NVideoCaptureView> preview_ =
        orvane::display::DisplayFactory::createVideoCaptureView();
    std::shared_ptr<orvane::display::graphics::Image> photo_ =
        orvane::display::DisplayFactory::createImage();
    std::shared_ptr<orvane::display::graphics::Text> state_;
    orvane::notification::Listeners listeners_;
};

}  // namespace travel
