#include "Cards.h"

#include <cmath>
#include <numbers>

#include "Palette.h"

namespace gallery {

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
    paint(rail, palette::kInk);
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

    const auto caption = DisplayFactory::createText(false);
    caption->setFont("DejaVuSans");
    caption->setTextSize(12);
    caption->setFillColor(palette::kCaption);
    caption->setContent(title);
    caption->setX(18);
    caption->setY(24);
    card->add(caption);
    draw(*card);
    root_->add(card);
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
