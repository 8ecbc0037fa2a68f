#pragma once

#include <memory>
#include <string>
#include <vector>

#include "orvane/display/graphics/AttributedText.h"
#include "orvane/display/graphics/quartz/QuartzDrawable.h"
#include "orvane/display/graphics/quartz/QuartzFillStyleable.h"
#include "orvane/display/graphics/quartz/QuartzStrokeStyleable.h"

namespace orvane::platform {
class CTFrame;
}

namespace orvane::display::graphics::quartz {

// Implements AttributedText with one frame of lines for each block. Every setter except those of
// the position lays out all blocks again at once. Gradients, patterns and italics throw a character
// string, as for other texts.
class QuartzAttributedText : public virtual AttributedText,
                             public virtual QuartzDrawable,
                             public virtual QuartzFillStyleable,
                             public virtual QuartzStrokeStyleable {
public:
    QuartzAttributedText();
    ~QuartzAttributedText() override;

    std::string getDescription() const override { return "QuartzAttributedText"; }

    void setX(float x) override;
    void setY(float y) override;
    // A width that is not positive means no width.
    void setWidth(float width) override;
    void setContent(const std::string& content) override;
    void setContent(const std::vector<Segment>& segments) override;
    std::string getContent() const override;
    unsigned long getIndexByPoint(const geometry::Point<double>& point) override;

    void setTextAlign(TextAlign align) override;
    void setAlignment(TextAlign align) override { setTextAlign(align); }
    void setAlignmentBaseline(AlignmentBaseline baseline) override;
    void setTextSize(float size) override;
    void setFontWeight(int) override {}
    void setItalicStyle(bool italic) override;
    void setDecoration(bool underline, bool strikethrough) override;
    void setFont(const std::string& name) override;

    using QuartzFillStyleable::setFillColor;
    using QuartzStrokeStyleable::setStrokeColor;
    void setFillColor(const LinearGradient& gradient) override;
    void setPattern(const Pattern& pattern) override;
    void setStrokeColor(const LinearGradient& gradient) override;
    void setStrokeWidth(float) override {}
    void onFillChanged() override { update(); }
    void onStrokeChanged() override { update(); }

    // The integer box around the blocks.
    geometry::Rect<double> getBounds() override;
    geometry::Size<double> getTextBounds() override;

protected:
    geometry::Size<double> getInkMargin() override;
    void doValidate(const geometry::Rect<double>& rect) override;

private:
    struct Block;

    void update();
    void appendBlock(std::size_t first, std::size_t last);
    double distanceTo(const Block& block, const geometry::Point<double>& point) const;

    float x_ = 0;
    float y_ = 0;
    float width_ = 0;
    Segment style_;  // the text's own style, and the content that was set as a string
    std::vector<Segment> segments_;
    bool plain_ = true;
    std::vector<Block> blocks_;
    geometry::Rect<double> ink_;  // around what the blocks draw, relative to the text's position
};

}  // namespace orvane::display::graphics::quartz
