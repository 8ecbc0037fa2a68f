#pragma once

#include <orvane/orvane.h>

#include <memory>
#include <string>

// The look that all parts of the page share.
namespace travel {

constexpr unsigned kInk = 0xFF22303C;
constexpr unsigned kCaption = 0xFF6B7680;
constexpr unsigned kPaper = 0xFFF3F1EC;
constexpr unsigned kCard = 0xFFFFFFFF;
constexpr unsigned kAccent = 0xFF2F6F8F;

inline std::shared_ptr<orvane::display::graphics::Text> makeText(const std::string& content,
                                                                 float size, unsigned color,
                                                                 bool isWrapped = false) {
    auto text = orvane::display::DisplayFactory::createText(isWrapped);
    text->setFont("DejaVu Sans");
    text->setTextSize(size);
    text->setFillColor(color);
    text->setContent(content);
    return text;
}

inline std::shared_ptr<orvane::display::graphics::Rect> makeBack(unsigned color, float radius) {
    auto back = orvane::display::DisplayFactory::createRect();
    back->setRx(radius);
    back->setRy(radius);
    back->setFillColor(color);
    return back;
}

}  // namespace travel
