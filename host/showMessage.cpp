#include "host/showMessage.h"

#include <algorithm>
#include <memory>

#include "orvane/orvane.h"

namespace orvane::host {

namespace {

using namespace display;

constexpr double kMargin = 32;
constexpr double kLineHeight = 18;

std::shared_ptr<graphics::AttributedText> createText(const std::string& content, const char* font,
                                                     float size, unsigned char red,
                                                     unsigned char green, unsigned char blue,
                                                     double width) {
    graphics::Text::Segment segment;
    segment.content = content;
    segment.font = font;
    segment.textSize = size;
    segment.fillColor = {red, green, blue, 255};
    segment.alignmentBaseline = graphics::AlignmentBaseline::Top;
    auto text = DisplayFactory::createAttributedText();
    text->setWidth(static_cast<float>(width));
    text->setContent({segment});
    text->setX(static_cast<float>(kMargin));
    return text;
}

// The last lines of a text.
std::string lastLines(const std::string& text, long count) {
    auto begin = text.size();
    while (begin > 0 && (text[begin - 1] != '\n' || begin == text.size() || --count > 0)) {
        --begin;
    }
    return text.substr(begin);
}

}  // namespace

void showMessage(const std::string& text) {
    const auto display = Display::instance();
    const auto size = display->getScreenSize();
    const double width = std::max(size.width - 2 * kMargin, 1.0);
    const auto end = std::min(text.find('\n'), text.size());

    const auto background = DisplayFactory::createRect();
    background->set(0, 0, 32767, 32767);
    background->setFillColor(0xFF22303C);
    display->add(background);
    const auto headline =
        createText(text.substr(0, end), "DejaVu Sans Bold", 20, 242, 84, 91, width);
    headline->setY(static_cast<float>(kMargin));
    display->add(headline);
    const double top = 2 * kMargin + headline->getTextBounds().height;
    const auto lines = static_cast<long>((size.height - top - kMargin) / kLineHeight);
    const auto rest = std::min(text.find_first_not_of('\n', end), text.size());
    const auto details = createText(lastLines(text.substr(rest), std::max(lines, 1L)),
                                    "DejaVu Sans Mono", 13, 241, 238, 232, width);
    details->setY(static_cast<float>(top));
    display->add(details);
}

}  // namespace orvane::host
