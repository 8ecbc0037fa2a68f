#pragma once

#include <orvane/orvane.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Palette.h"

namespace gallery {

using orvane::display::ContainerObject;
using orvane::display::DisplayFactory;
using orvane::display::DisplayObject;
using Container = std::shared_ptr<orvane::display::graphics::Container>;

// The size that a page is designed for, in points.
inline constexpr float kPageWidth = 1280;
inline constexpr float kPageHeight = 800;

// A page of the gallery: a rail at the left edge and cards in a grid of four columns and three
// rows. A function draws the subject of each card. The inside of a card is kCardWidth x kCardHeight
// points, with the origin at its top left.
class Page {
public:
    static constexpr float kCardWidth = 275;
    static constexpr float kCardHeight = 237;

    using Draw = std::function<void(ContainerObject& inside)>;

    Page();

    void addCard(const std::string& title, const Draw& draw);
    const Container& root() const { return root_; }

private:
    Container root_;
    int count_ = 0;
};

// The cards of the first page.
void drawShapes(ContainerObject& inside);
void drawFillRules(ContainerObject& inside);
void drawCurves(ContainerObject& inside);
void drawDashes(ContainerObject& inside);
void drawGradients(ContainerObject& inside);
void drawGradientStops(ContainerObject& inside);
void drawClips(ContainerObject& inside);
void drawNestedTransforms(ContainerObject& inside);

// The cards of the page of texts.
void drawAlignments(ContainerObject& inside);
void drawBaselines(ContainerObject& inside);
void drawDecorations(ContainerObject& inside);
void drawFonts(ContainerObject& inside);
void drawScripts(ContainerObject& inside);
void drawEmoji(ContainerObject& inside);
void drawWrapping(ContainerObject& inside);
void drawAttributedText(ContainerObject& inside);
void drawLineBreaks(ContainerObject& inside);
void drawMeasured(ContainerObject& inside);
void drawTextIcon(ContainerObject& inside);

// The cards of the page of images.
void drawJpeg(ContainerObject& inside);
void drawPng(ContainerObject& inside);
void drawRawPixels(ContainerObject& inside);
void drawDataAddress(ContainerObject& inside);
void drawTurnedImage(ContainerObject& inside);
void drawClippedImage(ContainerObject& inside);
void drawDrawing(ContainerObject& inside);
void drawFrames(ContainerObject& inside);
void drawLoaded(ContainerObject& inside);
void drawImageIcon(ContainerObject& inside);

// The cards of the page of effects.
void drawOpacity(ContainerObject& inside);
void drawShadows(ContainerObject& inside);
void drawBlur(ContainerObject& inside);
void drawRoundedClip(ContainerObject& inside);
void drawRadialGradients(ContainerObject& inside);
void drawConicGradients(ContainerObject& inside);
void drawGradientStrokes(ContainerObject& inside);
void drawTogether(ContainerObject& inside);
void drawEffectsIcon(ContainerObject& inside);

// Gives an object a color, and again when the appearance has changed the color.
template <typename Object, typename Set>
void follow(const std::shared_ptr<Object>& object, Color color, Set set) {
    set(*object, color.now());
    if (color.changes()) {
        Look::instance().followChanges(
            object, [color, set](Object& followed) { set(followed, color.now()); });
    }
}
// Sets the fill, and the stroke if it has a width, of a shape, which follow the appearance.
template <typename Shape>
void paint(const std::shared_ptr<Shape>& shape, Color fill, Color stroke = 0, float width = 0) {
    follow(shape, fill, [](Shape& painted, unsigned color) { painted.setFillColor(color); });
    if (width > 0) {
        follow(shape, stroke, [](Shape& drawn, unsigned color) { drawn.setStrokeColor(color); });
    }
    shape->setStrokeWidth(width);
}
// Gives a shape a stroke, which follows the appearance, and no fill.
template <typename Shape>
void outline(const std::shared_ptr<Shape>& shape, Color stroke, float width) {
    if constexpr (requires { shape->setFillColor(0, 0, 0, -1); }) {
        shape->setFillColor(0, 0, 0, -1);
    }
    follow(shape, stroke, [](Shape& drawn, unsigned color) { drawn.setStrokeColor(color); });
    shape->setStrokeWidth(width);
}
// Adds a line of text with its baseline at `y`. Its color follows the appearance.
std::shared_ptr<orvane::display::graphics::Text> addText(ContainerObject& inside, float x, float y,
                                                         const std::string& content, float size,
                                                         Color color = palette::kInk,
                                                         const char* font = "DejaVu Sans");
// Gives the letters of a text a color that follows the appearance.
void colorText(const std::shared_ptr<orvane::display::graphics::Text>& text, Color color);
// Gives a line of text a size that follows the user's scale of texts, as far as the line is not
// wider than `width`.
void scaleText(const std::shared_ptr<orvane::display::graphics::Text>& text, float size,
               float width);
// Turns an object about a point of its parent.
void turn(DisplayObject& object, double degrees, double x, double y);
// Returns the corners of a star with five points around a center; its lines cross.
std::vector<float> starPoints(float cx, float cy, float radius);

}  // namespace gallery
