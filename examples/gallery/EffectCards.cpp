#include <cmath>
#include <numbers>

#include "Cards.h"
#include "Palette.h"

namespace gallery {

using orvane::display::graphics::ConicGradient;
using orvane::display::graphics::LinearGradient;
using orvane::display::graphics::RadialGradient;

namespace {

constexpr Color kRaised{0xFFFFFFFF, 0xFF3C434D};  // what has a shadow

std::shared_ptr<orvane::display::graphics::Rect> tile(float x, float y, float width, float height,
                                                      Color color) {
    auto rect = DisplayFactory::createRect();
    rect->set(x, y, width, height);
    rect->setRx(12);
    rect->setRy(12);
    paint(rect, color);
    return rect;
}

// Three discs that overlap.
Container discs(float x, float y, float radius) {
    auto group = DisplayFactory::createContainer();
    const unsigned colors[] = {palette::kCoral, palette::kAmber, palette::kTeal};
    for (int i = 0; i < 3; ++i) {
        const double angle = -std::numbers::pi / 2 + i * 2 * std::numbers::pi / 3;
        auto disc = DisplayFactory::createCircle();
        // The corner of the circle's box.
        disc->set(x + static_cast<float>(std::cos(angle)) * radius * 0.6F,
                  y + static_cast<float>(std::sin(angle)) * radius * 0.6F, radius);
        paint(disc, colors[i]);
        group->add(disc);
    }
    return group;
}

template <typename Gradient>
Gradient colored(std::initializer_list<unsigned> colors) {
    Gradient gradient;
    for (const unsigned color : colors) {
        gradient.addColor(color);
    }
    return gradient;
}

}  // namespace

void drawOpacity(ContainerObject& inside) {
    for (int i = 0; i < 9; ++i) {
        inside.add(tile(24 + 26.0F * static_cast<float>(i), 40, 13, 166, {0xFFD9DEE8, 0xFF3B424C}));
    }
    // On the left each disc is translucent, on the right the group.
    const auto each = discs(38, 86, 36);
    for (const auto& disc : each->getChildren()) {
        disc->setOpacity(0.5);
    }
    inside.add(each);
    const auto group = discs(158, 86, 36);
    group->setOpacity(0.5);
    inside.add(group);
}

void drawShadows(ContainerObject& inside) {
    const auto card = tile(34, 50, 84, 60, kRaised);
    card->setShadow({0, 2, 6, 0x50000000});
    inside.add(card);
    const auto raised = tile(154, 50, 84, 60, kRaised);
    raised->setShadow({0, 10, 28, 0x60000000});
    inside.add(raised);
    // The shadow of a group is that of its outline.
    const auto star = DisplayFactory::createPolyline();
    star->set(starPoints(76, 166, 38), true);
    paint(star, palette::kAmber);
    star->setShadow({5, 6, 4, 0xFFE8703A});
    inside.add(star);
    addText(inside, 150, 178, "Glow", 34, palette::kViolet)->setShadow({0, 0, 14, 0xFFB79CFF});
}

void drawBlur(ContainerObject& inside) {
    const float radii[] = {0, 4, 10, 24};
    for (int i = 0; i < 4; ++i) {
        const auto group = discs(i % 2 == 0 ? 50.0F : 164.0F, i < 2 ? 54.0F : 140.0F, 22);
        group->setBlur(radii[i]);
        inside.add(group);
    }
}

void drawRoundedClip(ContainerObject& inside) {
    const auto window = DisplayFactory::createRoundedClipContainer(44);
    window->setBounds({38, 42, 200, 160});
    for (int i = 0; i < 10; ++i) {
        const auto stripe = DisplayFactory::createRect();
        stripe->set(-40 + 34.0F * static_cast<float>(i), 0, 17, 240);
        paint(stripe, i % 2 == 0 ? palette::kTeal : palette::kBlue);
        turn(*stripe, 24, 137, 120);
        window->add(stripe);
    }
    // The clip casts the shadow, with its round corners.
    window->setShadow({0, 6, 16, 0x70000000});
    inside.add(window);
}

void drawRadialGradients(ContainerObject& inside) {
    auto light = colored<RadialGradient>({0xFFFFFFFF, 0xFF6FA8F5, palette::kBlue, 0xFF12305F});
    light.setFocus(0.34, 0.3);
    const auto ball = DisplayFactory::createCircle();
    ball->set(28, 64, 58);
    ball->setFillGradient(light);
    inside.add(ball);

    const auto banner = tile(164, 48, 84, 62, palette::kWhite);
    banner->setFillGradient(colored<RadialGradient>({palette::kAmber, palette::kCoral}));
    inside.add(banner);
    auto rings = colored<RadialGradient>(
        {palette::kViolet, 0xFFE9E0FF, palette::kViolet, 0xFFE9E0FF, palette::kViolet});
    const auto target = DisplayFactory::createCircle();
    target->set(170, 130, 36);
    target->setFillGradient(rings);
    inside.add(target);
}

void drawConicGradients(ContainerObject& inside) {
    const auto wheel = DisplayFactory::createCircle();
    wheel->set(26, 70, 52);
    wheel->setFillGradient(colored<ConicGradient>(
        {0xFFFF0000, 0xFFFFFF00, 0xFF00FF00, 0xFF00FFFF, 0xFF0000FF, 0xFFFF00FF, 0xFFFF0000}));
    inside.add(wheel);
    // Five shares of a whole: two stops with one position make an edge.
    ConicGradient shares;
    shares.setAngle(-std::numbers::pi / 2);
    const unsigned colors[] = {palette::kCoral, palette::kAmber, palette::kGreen, palette::kTeal,
                               palette::kViolet};
    for (int i = 0; i < 5; ++i) {
        shares.addColor(colors[i], static_cast<float>(i) / 5);
        shares.addColor(colors[i], static_cast<float>(i + 1) / 5);
    }
    const auto pie = DisplayFactory::createCircle();
    pie->set(150, 70, 52);
    pie->setFillGradient(shares);
    inside.add(pie);
}

void drawGradientStrokes(ContainerObject& inside) {
    auto sweep = colored<ConicGradient>({0xFFBFF0EC, palette::kTeal});
    sweep.setAngle(-std::numbers::pi / 2);
    const auto gauge = DisplayFactory::createCircle();
    gauge->set(38, 54, 46);
    gauge->setFillColor(0, 0, 0, -1);
    gauge->setStrokeGradient(sweep);
    gauge->setStrokeWidth(16);
    inside.add(gauge);

    const auto dashes = DisplayFactory::createCircle();
    dashes->set(162, 60, 40);
    dashes->setFillColor(0, 0, 0, -1);
    dashes->setStrokeGradient(
        colored<ConicGradient>({palette::kCoral, palette::kViolet, palette::kCoral}));
    dashes->setStrokeWidth(12);
    dashes->setStrokeDashArray({14, 8});
    inside.add(dashes);

    LinearGradient along;
    along.setUserSpace(false);
    along.set({0}, {0}, {1}, {0});
    along.addColor(palette::kCoral, 0);
    along.addColor(palette::kAmber, 0.5F);
    along.addColor(palette::kGreen, 1);
    const auto wave = DisplayFactory::createPath();
    wave->start();
    wave->move(30, 184, false);
    wave->cubicCurve(130, 184, 60, 140, 90, 230, false);
    wave->cubicCurve(246, 184, 170, 138, 190, 230, false);
    wave->finish();
    wave->setFillColor(0, 0, 0, -1);
    wave->setStrokeGradient(along);
    wave->setStrokeWidth(8);
    inside.add(wave);
}

void drawTogether(ContainerObject& inside) {
    // A glass panel: a blurred background that a rounded clip cuts out, and a translucent sheet.
    const auto scene = [] { return discs(88, 66, 50); };
    inside.add(scene());
    const auto glass = DisplayFactory::createRoundedClipContainer(18);
    glass->setBounds({52, 92, 172, 76});
    const auto behind = tile(0, 0, 275, 237, palette::kCard);
    glass->add(behind);
    const auto blurred = scene();
    blurred->setBlur(22);
    glass->add(blurred);
    const auto sheet = tile(52, 92, 172, 76, palette::kCard);
    sheet->setOpacity(0.55);
    glass->add(sheet);
    glass->setShadow({0, 4, 14, 0x60000000});
    inside.add(glass);
    addText(inside, 104, 138, "Glass", 22, palette::kInk);
}

void drawEffectsIcon(ContainerObject& inside) {
    const auto disc = DisplayFactory::createCircle();
    disc->set(3, 3, 9);
    paint(disc, palette::kWhite);
    disc->setBlur(3);
    inside.add(disc);
    const auto front = DisplayFactory::createCircle();
    front->set(8, 8, 7);
    paint(front, palette::kTeal);
    front->setOpacity(0.8);
    inside.add(front);
}

}  // namespace gallery
