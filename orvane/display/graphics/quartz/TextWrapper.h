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

// The text of one object: measures it in every setter that changes its extent, so that the bounds
// are current, and draws it. Coordinates are the object's, y down. Nothing here repaints.
class TextWrapper {
public:
    TextWrapper();
    virtual ~TextWrapper();
    TextWrapper(const TextWrapper&) = delete;
    TextWrapper& operator=(const TextWrapper&) = delete;

    void setMultiline(bool multiline);
    // Where lines wrap, in user units; read by texts of several lines.
    void setMultilineMaxWidth(float width);

    void setX(float x);
    void setY(float y);
    // What is shown is without newlines, in texts of several lines too, and ends at the first zero
    // byte; getText keeps it as it was set.
    void setText(const std::string& text);
    void setFontName(const std::string& name);
    void setFontSize(float size);
    void setDecoration(bool underline, bool strikethrough);
    // These two place a text of one line; one of several lines ignores them.
    void setTextAlign(TextAlign align);
    void setAlignmentBaseline(AlignmentBaseline baseline);
    // Aligns the lines in the width. It is lost on an empty text, and with the text it was set on.
    void setAlignment(TextAlign align);
    void setFill(const Color& color);
    void setStroke(const Color& color);

    const std::string& getText() const { return text_; }
    const geometry::Rect<double>& getBounds() const { return bounds_; }

    // Leaves the canvas's transformation and stroke colour changed: whoever calls brackets it.
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
    float multilineMaxWidth_ = 0;
    std::string text_;
    std::string fontName_;
    float fontSize_ = 12;
    geometry::Rect<double> bounds_;
    float x_ = 0, y_ = 0;
    float originX_ = 0, originY_ = 0;
    float lineHeight_ = 0;
    float descent_ = 0;
    bool underline_ = false, strikethrough_ = false;
    TextAlign textAlign_ = TextAlign::Start;
    AlignmentBaseline alignmentBaseline_ = AlignmentBaseline::Baseline;
    platform::CFMutableAttributedString attributedString_;
    // Attributes set on an empty string do not survive, so the colours are kept to be put back.
    Color fillColor_;
    Color strokeColor_;

    // What is drawn, made at the first paint after a change: one line, or what breaks several.
    std::shared_ptr<const platform::CTLine> line_;
    std::unique_ptr<const platform::CTFramesetter> framesetter_;
};

}  // namespace orvane::display::graphics::quartz
