#pragma once

#include "orvane/display/graphics/Text.h"
#include "orvane/display/graphics/quartz/QuartzDrawable.h"
#include "orvane/display/graphics/quartz/QuartzFillStyleable.h"
#include "orvane/display/graphics/quartz/QuartzStrokeStyleable.h"
#include "orvane/display/graphics/quartz/QuartzTextStyleable.h"
#include "orvane/display/graphics/quartz/TextWrapper.h"

namespace orvane::display::graphics::quartz {

// A text of one line. Gradients, patterns and italics throw a character string that says so.
class QuartzText : public virtual Text,
                   public virtual QuartzDrawable,
                   public virtual QuartzFillStyleable,
                   public virtual QuartzStrokeStyleable,
                   public virtual QuartzTextStyleable {
public:
    std::string getDescription() const override { return "QuartzText"; }

    void setX(float x) override;
    void setY(float y) override;
    void setContent(const std::string& content) override;
    std::string getContent() const override { return textWrapper_.getText(); }
    using Text::setContent;

    void setFillColor(unsigned r, unsigned g, unsigned b, unsigned a) override;
    void setFillColor(unsigned argb) override;
    void setFillColor(const LinearGradient& gradient) override;
    void setPattern(const Pattern& pattern) override;
    void setStrokeColor(int r, int g, int b, int a) override;
    void setStrokeColor(unsigned argb) override;
    void setStrokeColor(const LinearGradient& gradient) override;
    // Does nothing: the stroke color of a text is stored and never painted.
    void setStrokeWidth(float width) override;

    // The box of the measured text, without a stroke.
    geometry::Rect<double> getBounds() override;
    geometry::Size<double> getTextBounds() override;

protected:
    TextWrapper& getTextWrapper() override { return textWrapper_; }
    void update() override { invalidate(true); }
    geometry::Size<double> getInkMargin() override {
        return marginAround(getBounds(), textWrapper_.getInk());
    }
    void doValidate(const geometry::Rect<double>& rect) override;

private:
    TextWrapper textWrapper_;
};

}  // namespace orvane::display::graphics::quartz
