#include "orvane/display/graphics/quartz/QuartzAttributedText.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "orvane/display/graphics/quartz/isUsableTextSize.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGSavedState.h"
#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/CTFont.h"
#include "platform/coretext/CTFrame.h"
#include "platform/coretext/CTFramesetter.h"
#include "platform/coretext/CTLine.h"

namespace orvane::display::graphics::quartz {

using geometry::Point;

// A part of the text with a position of its own.
struct QuartzAttributedText::Block {
    geometry::Rect<double> box;  // relative to the text's position
    std::shared_ptr<const platform::CTFrame> frame;
    std::string text;
    unsigned long firstCharacter = 0;
};

namespace {

platform::CTTextAlignment paragraphAlignment(TextAlign align) {
    switch (align) {
        case TextAlign::Center:
            return platform::CTTextAlignment::Center;
        case TextAlign::End:
            return platform::CTTextAlignment::Right;
        case TextAlign::Start:
            break;
    }
    return platform::CTTextAlignment::Natural;
}

// Counts the characters of valid UTF-8: all bytes except continuation bytes.
unsigned long countCharacters(std::string_view text) {
    return static_cast<unsigned long>(std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
    }));
}

// The distance from the top of a block down to its y.
double offsetToTop(AlignmentBaseline baseline, const platform::CTFrame& frame) {
    if (baseline == AlignmentBaseline::Top || frame.lines().empty()) {
        return 0;
    }
    const auto& bounds = frame.lines().front().line->typographicBounds();
    return baseline == AlignmentBaseline::Middle ? (bounds.ascent + bounds.descent) / 2
                                                 : bounds.ascent;
}

}  // namespace

QuartzAttributedText::QuartzAttributedText() = default;
QuartzAttributedText::~QuartzAttributedText() = default;

// ---- position and content ----

void QuartzAttributedText::setX(float x) {
    x_ = x;
    invalidate(true);
}

void QuartzAttributedText::setY(float y) {
    y_ = y;
    invalidate(true);
}

void QuartzAttributedText::setWidth(float width) {
    width_ = width > 0 ? width : 0;
    update();
}

void QuartzAttributedText::setContent(const std::string& content) {
    style_.content = content;
    segments_.clear();
    plain_ = true;
    update();
}

void QuartzAttributedText::setContent(const std::vector<Segment>& segments) {
    segments_ = segments;
    plain_ = false;
    update();
}

std::string QuartzAttributedText::getContent() const {
    if (plain_) {
        return style_.content;
    }
    std::string content;
    for (const Segment& segment : segments_) {
        content += segment.content;
    }
    return content;
}

// ---- the text's own style ----

void QuartzAttributedText::setTextAlign(TextAlign align) {
    style_.textAlign = align;
    update();
}

void QuartzAttributedText::setAlignmentBaseline(AlignmentBaseline baseline) {
    style_.alignmentBaseline = baseline;
    update();
}

void QuartzAttributedText::setTextSize(float size) {
    if (isUsableTextSize(size)) {
        style_.textSize = size;
    }
    update();
}

void QuartzAttributedText::setItalicStyle(bool) {
    throw "QuartzAttributedText::setItalicStyle not implemented";
}

void QuartzAttributedText::setDecoration(bool underline, bool strikethrough) {
    style_.decoration = (underline ? 1 : 0) + (strikethrough ? 2 : 0);
    update();
}

void QuartzAttributedText::setFont(const std::string& name) {
    style_.font = name;
    update();
}

void QuartzAttributedText::setFillColor(const LinearGradient&) {
    throw "QuartzAttributedText::setFillColor(const LinearGradient& gradient) not implemented";
}

void QuartzAttributedText::setPattern(const Pattern&) {
    throw "QuartzAttributedText::setPattern not implemented";
}

void QuartzAttributedText::setStrokeColor(const LinearGradient&) {
    throw "QuartzAttributedText::setStrokeColor(const LinearGradient& gradient) not implemented";
}

// ---- layout ----

void QuartzAttributedText::update() {
    blocks_.clear();
    if (plain_) {
        segments_.assign(1, style_);
    }
    std::size_t first = 0;
    for (std::size_t i = 1; i <= segments_.size(); ++i) {
        if (i == segments_.size() || segments_[i].x || segments_[i].y) {
            appendBlock(first, i);
            first = i;
        }
    }
    ink_ = {};
    for (const Block& block : blocks_) {
        constexpr double kRendered = 1;  // see CTLine::imageBounds
        const platform::CGRect image = block.frame->imageBounds();
        const double bottom = block.box.y + block.box.height;  // where y is zero in the frame
        ink_.unite({block.box.x + image.origin.x - kRendered,
                    bottom - image.origin.y - image.size.height - kRendered,
                    image.size.width + 2 * kRendered, image.size.height + 2 * kRendered});
    }
    invalidate(true);
}

geometry::Size<double> QuartzAttributedText::getInkMargin() {
    return ink_.isEmpty() ? geometry::Size<double>()
                          : marginAround(getBounds(), ink_.movedBy({x_, y_}));
}

void QuartzAttributedText::appendBlock(std::size_t first, std::size_t last) {
    platform::CFMutableAttributedString string;
    for (std::size_t i = first; i < last; ++i) {
        const Segment& segment = segments_[i];
        const bool sized = isUsableTextSize(segment.textSize);
        platform::CTAttributes attributes;
        attributes.font =
            platform::CTFont::createWithName(segment.font.empty() ? style_.font : segment.font,
                                             double{sized ? segment.textSize : style_.textSize});
        attributes.foregroundColor =
            (plain_ ? getFillColor() : Color::fromArgb(segment.fillArgb())).cgColor();
        attributes.strokeColor =
            (plain_ ? getStrokeColor() : Color::fromArgb(segment.strokeArgb())).cgColor();
        attributes.underline = segment.isUnderlined();
        attributes.strikethrough = segment.isStruckThrough();
        attributes.alignment = paragraphAlignment(segment.textAlign);
        string.append(segment.content, attributes);
    }

    const platform::CTFramesetter framesetter(string);
    const bool wraps = width_ > 0;
    platform::CGSize size =
        framesetter.suggestFrameSize(wraps ? double{width_} : std::numeric_limits<double>::max());
    const Segment& begin = segments_[first];
    double x = double{begin.x.value_or(0)};
    if (wraps) {
        size.width = double{width_};
    } else if (begin.textAlign != TextAlign::Start) {
        x -= begin.textAlign == TextAlign::End ? size.width : size.width / 2;
    }

    Block block;
    block.frame = framesetter.createFrame({{0, 0}, size});
    const double top =
        double{begin.y.value_or(0)} - offsetToTop(begin.alignmentBaseline, *block.frame);
    block.box = {x, top, size.width, size.height};
    block.text = string.string();
    if (!blocks_.empty()) {
        const Block& before = blocks_.back();
        block.firstCharacter = before.firstCharacter + countCharacters(before.text);
    }
    blocks_.push_back(std::move(block));
}

geometry::Rect<double> QuartzAttributedText::getBounds() {
    geometry::Rect<double> around;
    for (const Block& block : blocks_) {
        around.unite(block.box);
    }
    around = around.movedBy({x_, y_});
    const double left = std::floor(around.x);
    const double top = std::floor(around.y);
    return {left, top, std::ceil(around.x + around.width) - left,
            std::ceil(around.y + around.height) - top};
}

geometry::Size<double> QuartzAttributedText::getTextBounds() {
    return getBounds().size();
}

void QuartzAttributedText::doValidate(const geometry::Rect<double>&) {
    platform::CGContext* const canvas = getCanvas();
    if (canvas == nullptr) {
        return;
    }
    for (const Block& block : blocks_) {
        const platform::CGSavedState state(*canvas);
        canvas->translateCTM(x_ + block.box.x, y_ + block.box.y + block.box.height);
        canvas->scaleCTM(1, -1);
        canvas->setTextMatrix({});
        canvas->drawFrame(*block.frame);
    }
}

// ---- points ----

double QuartzAttributedText::distanceTo(const Block& block, const Point<double>& point) const {
    const geometry::Rect<double> box = block.box.movedBy({x_, y_});
    const double dx = std::max({box.x - point.x, 0.0, point.x - box.x - box.width});
    const double dy = std::max({box.y - point.y, 0.0, point.y - box.y - box.height});
    return std::hypot(dx, dy);
}

unsigned long QuartzAttributedText::getIndexByPoint(const Point<double>& point) {
    const auto nearest =
        std::min_element(blocks_.begin(), blocks_.end(), [&](const Block& a, const Block& b) {
            return distanceTo(a, point) < distanceTo(b, point);
        });
    if (nearest == blocks_.end()) {
        return 0;
    }
    const geometry::Rect<double> box = nearest->box.movedBy({x_, y_});
    const auto byte =
        nearest->frame->stringIndexForPosition({point.x - box.x, box.y + box.height - point.y});
    return nearest->firstCharacter +
           countCharacters(std::string_view(nearest->text).substr(0, byte.value_or(0)));
}

}  // namespace orvane::display::graphics::quartz
