#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "orvane/display/native/NVideoCaptureView.h"
#include "orvane/services/CameraService.h"
#include "tests/native/Stage.h"

namespace orvane::display {
namespace {

using native::NVideoCaptureView;
using services::CameraCapture;
using services::CameraFrame;

constexpr unsigned kRed = 0xFF0000;
constexpr unsigned kBlue = 0x0000FF;
constexpr unsigned kBlack = 0x000000;

// A camera that passes the test its observer.
class TestCamera : public services::CameraProvider {
public:
    explicit TestCamera(CameraCapture::Observer& observer) : observer_(observer) {}

    void open(std::function<void(const std::vector<services::Camera>& cameras)>,
              services::FailureCallback) override {}
    std::unique_ptr<CameraCapture> capture(const services::CameraRequest&,
                                           CameraCapture::Observer observer) override {
        observer_ = std::move(observer);
        return nullptr;
    }

private:
    CameraCapture::Observer& observer_;
};

class CaptureView : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        view->setBounds({20, 20, 100, 100});
        display_->add(view);
        view->setSession(service.start({}));
    }
    // A picture that is red at the left and blue at the right.
    static CameraFrame frame(int width, int height) {
        const std::shared_ptr<std::uint32_t[]> pixels(
            new std::uint32_t[static_cast<std::size_t>(width) * static_cast<std::size_t>(height)]);
        for (int i = 0; i < width * height; ++i) {
            pixels[i] = 0xFF000000U | (i % width < width / 2 ? kRed : kBlue);
        }
        return {width, height, pixels};
    }

    CameraCapture::Observer camera;
    services::CameraService service{std::make_unique<TestCamera>(camera)};
    std::shared_ptr<NVideoCaptureView> view = DisplayFactory::createVideoCaptureView();
};

TEST_F(CaptureView, ShowsTheNewestPictureAndADarkAreaWithoutOne) {
    const unsigned ground = pixel(22, 22);
    EXPECT_NE(pixel(55, 75), ground) << "the sign of a camera";
    camera.frame(frame(100, 100));
    EXPECT_EQ(pixel(22, 22), kRed);
    camera.frame(frame(2, 2));
    EXPECT_EQ(pixel(118, 118), kBlue);
    EXPECT_EQ(pixel(122, 22), 0U) << "outside";

    CameraFrame last = frame(100, 100);
    const std::weak_ptr<const std::uint32_t[]> memory = last.pixels;
    camera.frame(std::exchange(last, {}));
    EXPECT_FALSE(memory.expired()) << "the view paints from the memory of the picture";
    view->getSession()->stop();
    EXPECT_TRUE(memory.expired());
    EXPECT_EQ(pixel(22, 22), ground);
}

TEST_F(CaptureView, FitsOrFillsItsBounds) {
    using Scaling = NVideoCaptureView::Scaling;
    const struct {
        const char* name;
        int width;
        int height;
        Scaling scaling;
        bool isMirrored;
        // At the left edge, left and right of the middle, and at the top.
        unsigned edge, left, right, top;
    } kCases[] = {
        {"as large", 100, 100, Scaling::Fit, false, kRed, kRed, kBlue, kRed},
        {"mirrored", 100, 100, Scaling::Fit, true, kBlue, kBlue, kRed, kBlue},
        {"wide", 200, 100, Scaling::Fit, false, kRed, kRed, kBlue, kBlack},
        {"high", 50, 100, Scaling::Fit, false, kBlack, kRed, kBlue, kRed},
        {"wide, cut off", 200, 100, Scaling::Fill, false, kRed, kRed, kBlue, kRed},
        {"high, cut off", 50, 100, Scaling::Fill, false, kRed, kRed, kBlue, kRed},
        {"high, cut off, mirrored", 50, 100, Scaling::Fill, true, kBlue, kBlue, kRed, kBlue},
    };
    for (const auto& row : kCases) {
        SCOPED_TRACE(row.name);
        view->setScaling(row.scaling);
        view->setMirrored(row.isMirrored);
        camera.frame(frame(row.width, row.height));
        EXPECT_EQ(pixel(22, 70), row.edge);
        EXPECT_EQ(pixel(62, 70), row.left);
        EXPECT_EQ(pixel(78, 70), row.right);
        EXPECT_EQ(pixel(62, 22), row.top);
    }
    // The picture follows the bounds.
    view->setScaling(Scaling::Fit);
    view->setMirrored(false);
    view->setBounds({20, 20, 50, 100});
    EXPECT_EQ(pixel(22, 70), kRed);
    EXPECT_EQ(pixel(22, 22), kRed);
    EXPECT_EQ(picture(), pictureFromScratch());
}

TEST_F(CaptureView, ForgetsASessionThatIsReplaced) {
    const CameraCapture::Observer first = std::exchange(camera, {});
    view->setSession(service.start({}));
    first.frame(frame(100, 100));
    EXPECT_NE(pixel(22, 22), kRed);
    camera.frame(frame(100, 100));
    EXPECT_EQ(pixel(22, 22), kRed);
    view->setSession(nullptr);
    EXPECT_NE(pixel(22, 22), kRed);
}

TEST_F(CaptureView, MayBeDestroyedByAnotherListenerOfItsPictures) {
    const auto session = service.start({});
    notification::Listeners listeners;
    listeners.add<services::CameraFrameEvent>(*session, [&](const auto&) {
        display_->removeAll();
        view.reset();
    });
    view->setSession(session);
    camera.frame(frame(100, 100));
    EXPECT_EQ(pixel(22, 22), 0U);
}

}  // namespace
}  // namespace orvane::display
