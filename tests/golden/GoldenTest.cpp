#include <gtest/gtest.h>

#include "orvane/display/graphics/ConicGradient.h"
#include "orvane/display/graphics/RadialGradient.h"
#include "orvane/orvane.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/raster/CGBitmapContext.h"
#include "tests/coretext/registerTestFonts.h"
#include "tests/graphics/painted.h"
#include "tests/support/GoldenImage.h"

namespace orvane::display {
namespace {

using graphics::AlignmentBaseline;
using graphics::TextAlign;
using Segment = graphics::Text::Segment;

// The pictures match the library versions of Debian 12.
class GoldenTest : public testing::Test {
protected:
    void SetUp() override { platform::registerTestFonts(); }

    // Adds a thin red line.
    void line(float x1, float y1, float x2, float y2) {
        const auto guide = DisplayFactory::createLine();
        guide->set(x1, y1, x2, y2);
        guide->setStrokeColor(0xFFFF8080);
        guide->setStrokeWidth(1);
        scene_->add(guide);
    }

    std::shared_ptr<graphics::Text> text(const std::string& content, float x, float y, float size,
                                         const std::string& font = "DejaVu Sans") {
        const auto object = DisplayFactory::createText(false);
        object->setFont(font);
        object->setTextSize(size);
        object->setContent(content);
        object->setX(x);
        object->setY(y);
        scene_->add(object);
        return object;
    }

    static Segment segment(const std::string& content, int decoration = 0) {
        Segment result;
        result.font = "DejaVu Sans";
        result.content = content;
        result.textSize = 14;
        result.decoration = decoration;
        return result;
    }

    void attributedText(const std::vector<Segment>& segments, float y, float width) {
        const auto object = DisplayFactory::createAttributedText();
        object->setWidth(width);
        object->setContent(segments);
        object->setX(10);
        object->setY(y);
        scene_->add(object);
    }

    // Paints the scene on white and compares every pixel.
    void compareWithGolden(const std::string& name, int width, int height) {
        platform::CGBitmapContext canvas(width, height);
        const geometry::Rect<double> all(0, 0, width, height);
        canvas.setRGBFillColor(1, 1, 1, 1);
        canvas.addRect(platform::CGRect(all));
        canvas.drawPath(platform::CGPathDrawingMode::Fill);
        paintOn(canvas, *scene_, all);
        EXPECT_TRUE(
            matchesGolden(*canvas.createImage(), ORVANE_GOLDEN_FOLDER "/" + name + ".png", 0));
    }

    std::shared_ptr<graphics::Container> scene_ = DisplayFactory::createContainer();
};

TEST_F(GoldenTest, LinesOfText) {
    line(150, 0, 150, 130);
    float y = 20.5F;
    for (const auto baseline :
         {AlignmentBaseline::Baseline, AlignmentBaseline::Middle, AlignmentBaseline::Top}) {
        line(0, y, 300, y);
        for (const auto& [align, x] : {std::pair{TextAlign::Start, 10.F},
                                       {TextAlign::Center, 150.F},
                                       {TextAlign::End, 290.F}}) {
            const auto object = text("Aligny", x, y, 18);
            object->setTextAlign(align);
            object->setAlignmentBaseline(baseline);
        }
        y += 42;
    }
    text("Underlined, struck, both", 10, 150, 16)->setDecoration(true, true);
    text("Bold office", 220, 150, 16, "DejaVuSans-Bold")->setFillColor(0xFF19A7A0);
    text("Serif and Mono", 10, 176, 15, "DejaVu Serif")->setFillColor(0x80F2545B);
    text("e\u0301 o\u0308 n\u0303 AVATAR", 160, 176, 15, "DejaVu Sans Mono");
    text("\u05e9\u05dc\u05d5\u05dd (abc) 123 \u0645\u0631\u062d\u0628\u0627", 10, 204, 18);
    text("\u65e5\u672c\u8a9e \u4f60\u597d \U0001F600\U0001F680\u2764\ufe0f \U0001F44D\U0001F3FD",
         10, 232, 18);
    text("tiny text of seven units", 200, 204, 7);
    text("g", 240, 290, 190, "DejaVu Serif")->setFillColor(0x602F6FDE);
    text("turned", 0, 0, 20)->setMatrix(0.9F, 0.4F, 20, -0.4F, 0.9F, 280);
    compareWithGolden("lines", 360, 300);
}

TEST_F(GoldenTest, WrappedAndAttributedText) {
    float x = 10;
    for (const auto align : {TextAlign::Start, TextAlign::Center, TextAlign::End}) {
        const auto paragraph = DisplayFactory::createText(true);
        paragraph->setFont("DejaVu Sans");
        paragraph->setTextSize(12);
        paragraph->setWidth(105);
        paragraph->setContent(
            "Lines wrap where the script allows: incomprehensibilities, "
            "\u65e5\u672c\u8a9e\u306e\u6587\u7ae0, \u05e9\u05dc\u05d5\u05dd "
            "\u05e2\u05d5\u05dc\u05dd.");
        paragraph->setAlignment(align);
        paragraph->setX(x);
        paragraph->setY(8);
        scene_->add(paragraph);
        x += 115;
    }
    const Segment plain = segment("One text, ");
    Segment large = segment("large and red");
    large.font = "DejaVu Serif";
    large.textSize = 26;
    large.fillColor = {242, 84, 91, 255};
    const Segment decorated = segment(", underlined, ", 1);
    const Segment struck = segment("struck through \U0001F600", 2);
    Segment placed = segment("A block\nof its own");
    placed.x = 300.0F;
    placed.y = 130.0F;
    placed.textAlign = TextAlign::Center;
    attributedText({plain, large, decorated, struck, placed}, 150, 0);
    attributedText({plain, large, decorated, struck}, 200, 160);
    compareWithGolden("wrapped", 360, 310);
}

// Every kind of stroke, gradient, picture and effect, upright and turned.
TEST_F(GoldenTest, ShapesAndEffects) {
    const auto colored = [](auto gradient) {
        for (const unsigned argb : {0xFFF2C14EU, 0xFF19A7A0U, 0x602F6FDEU}) {
            gradient.addColor(argb);
        }
        return gradient;
    };
    auto linear = colored(graphics::LinearGradient());
    auto radial = colored(graphics::RadialGradient());
    radial.setFocus(0.3, 0.3);
    const auto box = [](float left, float top, unsigned argb) {
        const auto result = DisplayFactory::createRect();
        result->set(left, top, 30, 22);
        result->setFillColor(argb);
        return result;
    };
    std::string bytes;
    for (int i = 0; i < 40 * 30; ++i) {
        bytes += {static_cast<char>(i % 40 * 6), static_cast<char>(i / 40 * 8), '\x60',
                  static_cast<char>(i % 40 * 6)};
    }
    const auto picture = [&bytes](int rows, float scale, float left, float top) {
        const auto result = DisplayFactory::createImage();
        result->setRawData(bytes, 40, rows);
        result->setMatrix(scale, 0, left, 0, scale, top);
        return result;
    };
    for (const bool isTurned : {false, true}) {
        const auto all = DisplayFactory::createContainer();
        scene_->add(all);
        if (isTurned) {
            all->setMatrix(0.85F, -0.25F, 40, 0.25F, 0.85F, 120);
        }
        float x = 10;
        const auto add = [&](const auto& object, float y) {
            object->translate(std::exchange(x, x + 56), y);
            all->add(object);
            return object;
        };
        const auto stroke = [&](const auto& shape, float width, const std::vector<float>& dash) {
            shape->setStrokeColor(0xC0402060);
            shape->setStrokeWidth(width);
            shape->setStrokeDashArray(dash);
            return add(shape, 10);
        };
        const auto rounded = stroke(box(0, 0, 0), 4, {7, 3});
        rounded->setStrokeDashOffset(2);
        rounded->setRx(9);
        rounded->setRy(5);
        linear.set({0}, {0.2F}, {1}, {0.8F});
        linear.setUserSpace(false);
        rounded->setFillColor(linear);
        stroke(DisplayFactory::createPolyline(), 7, {})->set({0, 30, 20, 0, 40, 30, 40, 12}, false);
        const auto ring = stroke(DisplayFactory::createCircle(), 6, {});
        ring->set(0, 0, 18);
        ring->setFillGradient(radial);
        ring->setStrokeGradient(colored(graphics::ConicGradient()));
        const auto curve = stroke(DisplayFactory::createPath(), 3, {});
        curve->start();
        curve->move(0, 20, false);
        curve->cubicCurve(40, 5, 10, -30, 30, 60, false);
        curve->quadCurve(20, 35, 45, 35, false);
        curve->arc(14, 32, 9, 5, 20, 0, 230);
        curve->close();
        curve->finish();
        curve->setFillColor(0xFF2F6FDE);
        linear.set({0}, {0}, {30}, {10});
        linear.setUserSpace(true);
        curve->setStrokeGradient(linear);
        stroke(DisplayFactory::createLine(), 5, {1, 6, 9, 6})->set(0, 0, 44, 30);
        const auto clip = DisplayFactory::createRoundedClipContainer(14);
        clip->setBounds({x, 4, 40, 36});
        clip->add(box(x - 6, 2, 0xFF803080));
        clip->add(picture(30, 3, x + 10, -20));
        all->add(clip);
        all->add(picture(40, 0.7F, 300, 60));  // a quarter of it is missing
        x = 10;
        const auto group = [&] {
            const auto result = DisplayFactory::createContainer();
            result->add(box(0, 0, 0xFF2060C0));
            result->add(box(12, 12, 0xFFC06020));
            return add(result, 60);
        };
        group()->setOpacity(0.5);
        group()->setBlur(3);
        group()->setShadow({3, 5, 6, 0xC0000000});
        group()->setShadow({-6, 2, 0, 0x80F2545B});
        const auto faint = group();
        faint->setOpacity(0.7);
        faint->setBlur(1);
        faint->setShadow({0, 6, 3, 0xFF19A7A0});
    }
    compareWithGolden("shapes", 360, 300);
}

}  // namespace
}  // namespace orvane::display
