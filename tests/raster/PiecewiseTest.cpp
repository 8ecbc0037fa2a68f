// The color of a pixel depends only on the drawing calls, not on the part of the picture that is
// painted.

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

#include "platform/coregraphics/CGGradient.h"
#include "platform/coregraphics/CGImage.h"
#include "tests/raster/paths.h"
#include "tests/raster/pixels.h"

namespace orvane::platform {
namespace {

constexpr int kWidth = 320;
constexpr int kHeight = 300;

// A picture of everything that a canvas can paint. Equal seeds give equal pictures.
class RandomScene {
public:
    explicit RandomScene(unsigned seed) : seed_(seed) {}

    void paint(CGContext& canvas) {
        random_.seed(seed_);
        for (int i = 0; i < 25; ++i) {
            canvas.saveGState();
            if (chance(0.4)) {
                canvas.concatCTM(transform());
            }
            if (chance(0.2)) {
                canvas.clipToRect(rect());
            }
            if (chance(0.15)) {
                canvas.addPath(outline());
                canvas.clip();
            }
            if (chance(0.1)) {
                const CGRect place = rect();
                canvas.drawImage(chance(0.5) ? place : CGRect{place.origin, {12, -9}}, *image());
            } else {
                paintShape(canvas);
            }
            canvas.restoreGState();
        }
    }

private:
    double number(double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(random_);
    }
    bool chance(double share) { return number(0, 1) < share; }
    // Arbitrary fractions, exact binary fractions and whole pixels, sometimes far outside the
    // canvas.
    double coordinate() {
        if (chance(0.03)) {
            return number(-1e5, 1e5);
        }
        const double value = number(-40, kWidth + 40);
        return chance(0.3) ? std::floor(value) : chance(0.3) ? std::floor(value * 32) / 32 : value;
    }
    double extent() { return chance(0.2) ? number(0, 600) : number(0, 60); }
    CGRect rect() { return {{coordinate(), coordinate()}, {extent(), extent()}}; }
    CGAffineTransform transform() {
        return CGAffineTransform::makeTranslation(number(0, 50), number(0, 50))
            .rotate(chance(0.5) ? 0 : number(0, 6))
            .scale(number(0.3, 2), number(0.3, 2));
    }

    CGPath outline() {
        CGPath path;
        const int kind = static_cast<int>(number(0, 5));
        if (kind == 0) {
            path.addRect(rect());
        } else if (kind == 1) {
            path.addEllipseInRect(rect());
        } else if (kind == 2) {
            path.addRoundedRect(rect(), extent() / 4, extent() / 4);
        } else if (kind == 3) {
            for (int i = 0; i < 6; ++i) {
                path.addLineToPoint(coordinate(), coordinate());
            }
            if (chance(0.5)) {
                path.closeSubpath();
            }
        } else {
            path.moveToPoint(coordinate(), coordinate());
            path.addCurveToPoint(coordinate(), coordinate(), coordinate(), coordinate(),
                                 coordinate(), coordinate());
            path.addRelativeArc(transform(), coordinate(), coordinate(), extent(), 0,
                                number(-7, 7));
        }
        return path;
    }

    std::shared_ptr<const CGImage> image() {
        std::vector<std::uint32_t> pixels(12 * 9);
        for (std::uint32_t& p : pixels) {
            p = chance(0.5) ? 0xff000000u | random_() : 0;
        }
        return CGImage::createWithPixels(12, 9, std::move(pixels));
    }

    void paintShape(CGContext& canvas) {
        const CGPath path = outline();
        const auto color = [&] { return number(0, 1); };
        if (chance(0.25)) {
            const std::array<double, 12> components = {color(), color(), color(), 1,
                                                       color(), color(), color(), color(),
                                                       color(), color(), color(), color()};
            const std::array<double, 3> locations = {0, number(0.1, 0.9), 1};
            canvas.addPath(path);
            canvas.clip();
            canvas.drawLinearGradient(*CGGradient::createWithColorComponents(components, locations),
                                      {coordinate(), coordinate()}, {coordinate(), coordinate()},
                                      static_cast<unsigned>(number(0, 4)));
        }
        canvas.setRGBFillColor(color(), color(), color(), chance(0.5) ? 1 : color());
        canvas.setRGBStrokeColor(color(), color(), color(), chance(0.5) ? 1 : color());
        canvas.setLineWidth(chance(0.1) ? number(0, 80) : number(0, 5));
        if (chance(0.3)) {
            canvas.setLineDash(number(-9, 9), std::array{number(0.5, 20), number(0.5, 20)});
        }
        draw(canvas, path, static_cast<CGPathDrawingMode>(static_cast<int>(number(0, 5))));
    }

    unsigned seed_;
    std::mt19937 random_;
};

class Piecewise : public testing::TestWithParam<unsigned> {};

TEST_P(Piecewise, PaintingAPartInPiecesEqualsThatPartOfTheWhole) {
    RandomScene scene(GetParam());
    CGBitmapContext whole(kWidth, kHeight);
    scene.paint(whole);
    // A canvas for a part of the picture, in memory with longer rows.
    constexpr int kLeft = 37;
    constexpr int kTop = 51;
    std::vector<std::uint32_t> storage(300 * 240);
    CGBitmapContext part(storage.data(), 270, 240, 300 * 4,
                         CGAffineTransform::makeTranslation(-kLeft, -kTop));
    RandomScene(GetParam() + 1000).paint(part);
    for (const CGRect& piece : randomPieces(GetParam(), kWidth, kHeight)) {
        part.saveGState();
        part.clipToRect(piece);
        part.clearRect(piece);
        scene.paint(part);
        part.restoreGState();
    }
    int different = 0;
    for (int y = 0; y < part.height(); ++y) {
        for (int x = 0; x < part.width(); ++x) {
            different += pixel(part, x, y) != pixel(whole, x + kLeft, y + kTop) ? 1 : 0;
        }
    }
    EXPECT_EQ(different, 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Piecewise, testing::Range(1u, 13u));

}  // namespace
}  // namespace orvane::platform
