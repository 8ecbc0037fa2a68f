#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGDrawable.h"

namespace orvane::platform {

class CTLine;

// Lines of text laid out in a rectangle. Immutable: made once a change, drawn as it is. Its y axis
// runs up; the first line stands at the rectangle's far y edge.
class ORVANE_EXPORT CTFrame final : public CGDrawable {
public:
    struct PlacedLine {
        std::shared_ptr<const CTLine> line;
        CGPoint origin;  // left end of the baseline
        double bottom;   // where the next line begins
    };

    // From the top down. Made by CTFramesetter.
    explicit CTFrame(std::vector<PlacedLine> lines);

    const std::vector<PlacedLine>& lines() const { return lines_; }

    // The byte where the character begins that a point lies on: in the line at its height, or the
    // first or last line for a point above or below all. Nothing for an empty frame.
    std::optional<std::size_t> stringIndexForPosition(const CGPoint& point) const;

    void paint(CairoCanvas& canvas) const override;
    CGRect inkBounds() const override { return inkBounds_; }
    std::string description() const override;

private:
    std::vector<PlacedLine> lines_;
    CGRect inkBounds_;
    double tallestInk_ = 0;  // how far from its baseline any line's ink reaches
};

}  // namespace orvane::platform
