#include "orvane/display/graphics/quartz/TextWrapper.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "orvane/display/geometry/rounding.h"
#include "orvane/display/graphics/quartz/isUsableTextSize.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coretext/CTFont.h"
#include "platform/coretext/CTFrame.h"
#include "platform/coretext/CTFramesetter.h"
#include "platform/coretext/CTLine.h"

namespace orvane::display::graphics::quartz {

using geometry::Rect;

TextWrapper::TextWrapper() = default;
TextWrapper::~TextWrapper() = default;

void TextWrapper::setMultiline(bool multiline) {
    multiline_ = multiline;
}

void TextWrapper::setMultilineMaxWidth(float width) {
    multilineMaxWidth_ = width;
    updateBounds();
}

void TextWrapper::setKeepsLineBreaks(bool keeps) {
    if (keepsLineBreaks_ != keeps) {
        keepsLineBreaks_ = keeps;
        setText(std::string(text_));
    }
}

void TextWrapper::setX(float x) {
    x_ = x;
    updateOriginOfBounds();
}

void TextWrapper::setY(float y) {
    y_ = y;
    updateOriginOfBounds();
}

void TextWrapper::setText(const std::string& text) {
    const bool wasEmpty = text_.empty();
    text_ = text;
    std::string shown = text;
    if (!multiline_ || !keepsLineBreaks_) {
        std::erase(shown, '\n');
    }
    // Passed as a C string: it ends at the first zero byte.
    attributedString_.replaceString(shown.c_str());
    updateFontInfo();
    if (wasEmpty && !text_.empty()) {
        setFill(fillColor_);
        setStroke(strokeColor_);
    }
}

void TextWrapper::setFontName(const std::string& name) {
    fontName_ = name;
    updateFontInfo();
}

void TextWrapper::setFontSize(float size) {
    if (!isUsableTextSize(size)) {
        return;
    }
    fontSize_ = size;
    updateFontInfo();
}

void TextWrapper::setDecoration(bool underline, bool strikethrough) {
    underline_ = underline;
    strikethrough_ = strikethrough;
    updateFontInfo();
}

void TextWrapper::setTextAlign(TextAlign align) {
    textAlign_ = align;
    updateOriginOfBounds();
}

void TextWrapper::setAlignmentBaseline(AlignmentBaseline baseline) {
    alignmentBaseline_ = baseline;
    updateOriginOfBounds();
}

void TextWrapper::setAlignment(TextAlign align) {
    using platform::CTTextAlignment;
    const CTTextAlignment alignment = align == TextAlign::End      ? CTTextAlignment::Right
                                      : align == TextAlign::Center ? CTTextAlignment::Center
                                                                   : CTTextAlignment::Left;
    attributedString_.setAlignment(attributedString_.range(), alignment);
    forgetLines();
}

void TextWrapper::setFill(const Color& color) {
    fillColor_ = color;
    attributedString_.setForegroundColor(attributedString_.range(), color.cgColor());
    forgetLines();
}

void TextWrapper::setStroke(const Color& color) {
    strokeColor_ = color;
    attributedString_.setStrokeColor(attributedString_.range(), color.cgColor());
}

void TextWrapper::updateFontInfo() {
    const auto font = platform::CTFont::createWithName(fontName_, double{fontSize_});
    attributedString_.setUnderline(attributedString_.range(), underline_);
    attributedString_.setFont(attributedString_.range(), font);
    descent_ = static_cast<float>(std::ceil(font->descent()));
    updateBounds();
}

void TextWrapper::updateBounds() {
    forgetLines();
    auto framesetter = std::make_unique<const platform::CTFramesetter>(attributedString_);
    const double width =
        multiline_ ? double{multilineMaxWidth_} : std::numeric_limits<double>::max();
    const platform::CGSize size = framesetter->suggestFrameSize(width);
    lineHeight_ = static_cast<float>(size.height);
    bounds_ = Rect<double>(bounds_.x, bounds_.y, multiline_ ? width : size.width, size.height)
                  .normalized();
    updateOriginOfBounds();
    const auto frame =
        framesetter->createFrame({{0, 0}, {multiline_ ? width : size.width, size.height}});
    if (!multiline_ && frame->lines().size() > 1) {
        line_ = platform::CTLine::createForPainting(attributedString_);
    }
    imageBounds_ = Rect<double>(line_                    ? line_->imageBounds()
                                : multiline_             ? frame->imageBounds()
                                : frame->lines().empty() ? platform::CGRect{}
                                                         : frame->lines()[0].line->imageBounds());
    if (multiline_) {
        framesetter_ = std::move(framesetter);
    }
}

void TextWrapper::updateOriginOfBounds() {
    if (multiline_) {
        bounds_ = Rect<double>(x_, y_, bounds_.width, bounds_.height).normalized();
        return;
    }
    double originX = x_;
    if (textAlign_ == TextAlign::End) {
        originX = x_ - bounds_.width;
    } else if (textAlign_ == TextAlign::Center) {
        originX = x_ + bounds_.width * -0.5;
    }
    double originY = y_;
    if (alignmentBaseline_ == AlignmentBaseline::Middle) {
        originY += lineHeight_ * 0.5 - descent_;
    } else if (alignmentBaseline_ == AlignmentBaseline::Top) {
        originY += fontSize_ - descent_;
    }
    originX_ = std::ceil(static_cast<float>(originX));
    originY_ = std::ceil(static_cast<float>(originY));
    bounds_ = geometry::toInt(
        Rect<double>(originX_, originY_ + descent_ - bounds_.height, bounds_.width, bounds_.height)
            .normalized());
}

Rect<double> TextWrapper::getInk() const {
    constexpr double kRendered = 1;
    const double left = multiline_ ? x_ : originX_;
    const double zero = multiline_ ? y_ + bounds_.height : originY_;
    return {left + imageBounds_.x - kRendered,
            zero - imageBounds_.y - imageBounds_.height - kRendered,
            imageBounds_.width + 2 * kRendered, imageBounds_.height + 2 * kRendered};
}

void TextWrapper::forgetLines() {
    line_.reset();
    framesetter_.reset();
}

void TextWrapper::draw(platform::CGContext& canvas) {
    if (multiline_) {
        drawLines(canvas);
    } else {
        drawLine(canvas);
    }
}

// The line is drawn behind the text, in the middle of the bounds: a font has no attribute for it.
void TextWrapper::drawStrikethrough(platform::CGContext& canvas) const {
    const double y = bounds_.y + bounds_.height * 0.5;
    canvas.setRGBStrokeColor(fillColor_.r, fillColor_.g, fillColor_.b, fillColor_.a);
    canvas.moveToPoint(bounds_.x, y);
    canvas.addLineToPoint(bounds_.x + bounds_.width, y);
    canvas.strokePath();
}

void TextWrapper::drawLine(platform::CGContext& canvas) {
    if (strikethrough_) {
        drawStrikethrough(canvas);
    }
    if (!line_) {
        line_ = platform::CTLine::createForPainting(attributedString_);
    }
    canvas.translateCTM(originX_, originY_);
    canvas.scaleCTM(1, -1);
    canvas.setTextMatrix({});
    canvas.drawLine(*line_);
}

void TextWrapper::drawLines(platform::CGContext& canvas) {
    if (!framesetter_) {
        framesetter_ = std::make_unique<const platform::CTFramesetter>(attributedString_);
    }
    const auto frame = framesetter_->createFrame({{x_, y_}, {multilineMaxWidth_, bounds_.height}});
    // The stroke color remains red to the end of the bracket; pictures may depend on it.
    canvas.setRGBStrokeColor(1, 0, 0, 1);
    canvas.setTextMatrix({});
    canvas.translateCTM(0, bounds_.height + y_ + y_);
    canvas.scaleCTM(1, -1);
    canvas.drawFrame(*frame);
}

}  // namespace orvane::display::graphics::quartz
