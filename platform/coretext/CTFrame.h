#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGDrawable.h"

namespace orvane::platform {

class CTLine;

// Lines of text laid out in a rectangle. Immutable: created once per change and drawn as it is. The
// y axis is up; the first line is at the largest y of the rectangle.
class ORVANE_EXPORT CTFrame final : public CGDrawable {
public:
    struct PlacedLine {
        std::shared_ptr<const CTLine> line;
        CGPoint origin;  // left end of the baseline
        double bottom;   // where the next line begins
    };

    // Lines from top to bottom. Called by CTFramesetter.
    explicit CTFrame(std::vector<PlacedLine> lines);

    const std::vector<PlacedLine>& lines() const { return lines_; }

    // The first byte of the character at a point, in the line at its height; in the first or last
    // line for a point above or below all lines. None for an empty frame.
    std::optional<std::size_t> stringIndexForPosition(const CGPoint& point) const;

    // A box around what the lines draw; see CTLine::imageBounds.
    CGRect imageBounds() const;

    void paint(CairoCanvas& canvas) const override;
    CGRect inkBounds() const override { return inkBounds_; }
    std::string description() const override;

private:
    std::vector<PlacedLine> lines_;
    CGRect inkBounds_;
    double tallestInk_ = 0;  // the largest distance between a baseline and the ink of its line
};

}  // namespace orvane::platform
