#pragma once

#include <memory>
#include <optional>
#include <string>

#include "orvane/display/geometry/Rect.h"
#include "orvane/display/graphics/TextStyleable.h"
#include "orvane/display/graphics/quartz/Color.h"
#include "platform/coretext/CFMutableAttributedString.h"

namespace orvane::platform {
class CGContext;
class CTFramesetter;
class CTLine;
}  // namespace orvane::platform

namespace orvane::display::graphics::quartz {

// Measures and draws the text of one object. Every setter that changes the text's extent measures
// it, so the bounds are always current. Coordinates are object coordinates, y down. Nothing here
// repaints.
class TextWrapper {
public:
    TextWrapper();
    virtual ~TextWrapper();
    TextWrapper(const TextWrapper&) = delete;
    TextWrapper& operator=(const TextWrapper&) = delete;

    void setMultiline(bool multiline);
    // The width at which lines wrap; used by texts of several lines.
    void setMultilineMaxWidth(float width);

    // Whether a text of several lines keeps the newlines of its content. Sets the content again.
    void setKeepsLineBreaks(bool keeps);

    void setX(float x);
    void setY(float y);
    // Sets the text. Newlines are removed from what is shown, unless a text of several lines keeps
    // them, and it ends at the first zero byte. getText returns the text as it was set.
    void setText(const std::string& text);
    void setFontName(const std::string& name);
    // Zero and sizes that are not finite are ignored.
    void setFontSize(float size);
    void setDecoration(bool underline, bool strikethrough);
    // These two functions determine the position of a text of one line; a text of several lines
    // ignores them.
    void setTextAlign(TextAlign align);
    void setAlignmentBaseline(AlignmentBaseline baseline);
    // Aligns the lines within the width. The alignment belongs to the current content: it has no
    // effect on an empty text and is lost when the content is replaced.
    void setAlignment(TextAlign align);
    void setFill(const Color& color);
    void setStroke(const Color& color);

    const std::string& getFontName() const { return fontName_; }
    float getFontSize() const { return fontSize_; }
    const std::string& getText() const { return text_; }
    const geometry::Rect<double>& getBounds() const { return bounds_; }

    // The box around what is drawn; see CTLine::imageBounds.
    geometry::Rect<double> getInk() const;

    // Draws the text. Changes the transformation and the stroke color of the canvas: the caller
    // saves and restores them.
    void draw(platform::CGContext& canvas);

private:
    void updateFontInfo();
    void updateBounds();
    void updateOriginOfBounds();
    void forgetLines();

    void drawStrikethrough(platform::CGContext& canvas) const;
    void drawLine(platform::CGContext& canvas);
    void drawLines(platform::CGContext& canvas);

    bool multiline_ = false;
    bool keepsLineBreaks_ = false;
    float multilineMaxWidth_ = 0;
    std::string text_;
    std::string fontName_;
    float fontSize_ = 12;
    geometry::Rect<double> bounds_;
    float x_ = 0, y_ = 0;
    float originX_ = 0, originY_ = 0;
    float lineHeight_ = 0;
    float descent_ = 0;
    // The box around what is drawn, y axis up: relative to the baseline of one line, and to the
    // bottom left of several lines.
    geometry::Rect<double> imageBounds_;
    bool underline_ = false, strikethrough_ = false;
    TextAlign textAlign_ = TextAlign::Start;
    AlignmentBaseline alignmentBaseline_ = AlignmentBaseline::Baseline;
    platform::CFMutableAttributedString attributedString_;
    // Attributes of an empty string are lost; the colors are stored here to set them again.
    Color fillColor_;
    Color strokeColor_;

    // What is drawn; made at the first paint after a change. `line_` is for one line,
    // `framesetter_` breaks several lines.
    std::shared_ptr<const platform::CTLine> line_;
    std::unique_ptr<const platform::CTFramesetter> framesetter_;
};

}  // namespace orvane::display::graphics::quartz
