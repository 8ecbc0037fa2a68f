#include "orvane/display/graphics/measureText.h"

#include <cstddef>
#include <vector>

#include "orvane/display/graphics/quartz/TextWrapper.h"

namespace orvane::display::graphics {

using geometry::Size;

namespace {

void setFont(quartz::TextWrapper& text, const FontStyle& font) {
    text.setFontName(font.name);
    text.setFontSize(font.size);
}

}  // namespace

Size<double> measureText(const std::string& content, const FontStyle& font) {
    quartz::TextWrapper text;
    setFont(text, font);
    text.setText(content);
    return text.getBounds().size();
}

Size<double> measureText(const std::string& content, const FontStyle& font, float width,
                         LineBreaks lineBreaks) {
    quartz::TextWrapper text;
    text.setMultiline(true);
    text.setMultilineMaxWidth(width);
    text.setKeepsLineBreaks(lineBreaks == LineBreaks::Keep);
    setFont(text, font);
    text.setText(content);
    return text.getBounds().size();
}

std::string shortenText(const std::string& content, const FontStyle& font, float width) {
    const std::string line = content.substr(0, content.find('\n'));
    quartz::TextWrapper text;
    setFont(text, font);
    const auto fits = [&](const std::string& shown) {
        text.setText(shown);
        return text.getBounds().width <= double{width};
    };
    if (line.size() == content.size() && fits(line)) {
        return line;
    }
    // The ends of the characters: a byte that continues one is 10xxxxxx.
    std::vector<std::size_t> ends{0};
    for (std::size_t i = 1; i <= line.size(); ++i) {
        if (i == line.size() || (static_cast<unsigned char>(line[i]) & 0xC0U) != 0x80) {
            ends.push_back(i);
        }
    }
    const auto shortened = [&line](std::size_t end) {
        // No space before the ellipsis.
        const std::size_t last = line.find_last_not_of(' ', end == 0 ? 0 : end - 1);
        const std::size_t length = end == 0 || last == std::string::npos ? 0 : last + 1;
        return line.substr(0, length) + "\u2026";
    };
    std::size_t low = 0;
    std::size_t high = ends.size() - 1;
    while (low < high) {
        const std::size_t middle = (low + high + 1) / 2;
        if (fits(shortened(ends[middle]))) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    const std::string result = shortened(ends[low]);
    return fits(result) ? result : std::string();
}

}  // namespace orvane::display::graphics
