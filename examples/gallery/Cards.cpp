#include "Cards.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace gallery {

using orvane::display::graphics::Text;

namespace {

constexpr int kColumns = 4;
constexpr float kRailWidth = 72;
constexpr float kLeft = 96;
constexpr float kTop = 24;
constexpr float kGap = 20;

}  // namespace

Page::Page() : root_(DisplayFactory::createContainer()) {
    const auto paper = DisplayFactory::createRect();
    paper->set(0, 0, kPageWidth, kPageHeight);
    paint(paper, palette::kPaper);
    root_->add(paper);
    const auto rail = DisplayFactory::createRect();
    rail->set(0, 0, kRailWidth, kPageHeight);
    paint(rail, palette::kRail);
    root_->add(rail);
}

void Page::addCard(const std::string& title, const Draw& draw) {
    const auto card = DisplayFactory::createContainer();
    const auto column = static_cast<float>(count_ % kColumns);
    const auto row = static_cast<float>(count_ / kColumns);
    card->setTranslate(kLeft + column * (kCardWidth + kGap), kTop + row * (kCardHeight + kGap));
    ++count_;

    const auto back = DisplayFactory::createRect();
    back->set(0, 0, kCardWidth, kCardHeight);
    back->setRx(14);
    back->setRy(14);
    paint(back, palette::kCard, palette::kEdge, 1);
    card->add(back);
    card->getOrCreateAccessibilityElement()->setLabel(title);

    scaleText(addText(*card, 18, 24, title, 12, palette::kCaption), 12, kCardWidth - 36);
    draw(*card);
    root_->add(card);
}

std::shared_ptr<Text> addText(ContainerObject& inside, float x, float y, const std::string& content,
                              float size, Color color, const char* font) {
    const auto text = DisplayFactory::createText(false);
    text->setFont(font);
    text->setTextSize(size);
    colorText(text, color);
    text->setContent(content);
    text->setX(x);
    text->setY(y);
    inside.add(text);
    return text;
}

void colorText(const std::shared_ptr<Text>& text, Color color) {
    follow(text, color, [](Text& held, unsigned now) { held.setFillColor(now); });
}

void scaleText(const std::shared_ptr<Text>& text, float size, float width) {
    Look::instance().follow(text, [size, width](Text& scaled) {
        scaled.setTextSize(size);
        const double largest = width / std::max(scaled.getTextBounds().width, 1.0);
        const double scale = std::min(Look::instance().appearance().textScale, largest);
        scaled.setTextSize(size * static_cast<float>(scale));
    });
}

void turn(DisplayObject& object, double degrees, double x, double y) {
    const double angle = orvane::display::geometry::toRadians(degrees);
    const auto c = static_cast<float>(std::cos(angle));
    const auto s = static_cast<float>(std::sin(angle));
    object.translate(static_cast<float>(x), static_cast<float>(y));
    object.applyMatrix(c, -s, 0, s, c, 0);
    object.translate(static_cast<float>(-x), static_cast<float>(-y));
}

std::vector<float> starPoints(float cx, float cy, float radius) {
    std::vector<float> points;
    for (int i = 0; i < 5; ++i) {
        const double angle = std::numbers::pi * (i * 0.8 - 0.5);
        points.push_back(cx + radius * static_cast<float>(std::cos(angle)));
        points.push_back(cy + radius * static_cast<float>(std::sin(angle)));
    }
    return points;
}

}  // namespace gallery
