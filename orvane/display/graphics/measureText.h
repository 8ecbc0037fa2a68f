#pragma once

#include <string>

#include "orvane/commons/Export.h"
#include "orvane/display/geometry/Size.h"
#include "orvane/display/graphics/Text.h"

namespace orvane::display::graphics {

// The font of a text that is measured; see TextStyleable.
struct FontStyle {
    // A name as in TextStyleable::setFont; empty for a default font.
    std::string name;
    // In the coordinates in which the text is measured. 0, NaN and infinity count as 12.
    float size = 12;
};

// Return what Text::getTextBounds of a text with this content would return, without creating one:
// of one line, or wrapped at a width. The lengths are in the same unit as the size of the font. A
// width that is not above 0 gives a height of 0. Main thread.
ORVANE_EXPORT geometry::Size<double> measureText(const std::string& content, const FontStyle& font);
ORVANE_EXPORT geometry::Size<double> measureText(const std::string& content, const FontStyle& font,
                                                 float width,
                                                 LineBreaks lineBreaks = LineBreaks::Drop);

// Returns as much of the beginning of `content` as fits into a width, with an ellipsis at its end
// if something is missing. A line break ends it. Empty if not even the ellipsis fits. Main thread.
ORVANE_EXPORT std::string shortenText(const std::string& content, const FontStyle& font,
                                      float width);

}  // namespace orvane::display::graphics
