#include "Cards.h"
#include "Palette.h"

namespace gallery {

using orvane::display::graphics::GradientUnit;
using orvane::display::graphics::LinearGradient;

namespace {

GradientUnit at(float value) {
    return {value};
}

// Returns a gradient along an axis that is given in fractions of the object.
LinearGradient across(float x2, float y2, std::initializer_list<unsigned> colors) {
    LinearGradient gradient;
    gradient.setUserSpace(false);
    gradient.set(at(0), at(0), at(x2), at(y2));
    float position = 0;
    const float step = 1 / (static_cast<float>(colors.size()) - 1);
    for (const unsigned color : colors) {
        gradient.addColor(color, position);
        position += step;
    }
    return gradient;
}

}  // namespace

void drawGradients(ContainerObject& inside) {
    const auto sky = DisplayFactory::createRect();
    sky->set(24, 38, 227, 80);
    sky->setRx(12);
    sky->setRy(12);
    sky->setFillColor(across(1, 0, {palette::kViolet, palette::kCoral, palette::kAmber}));
    inside.add(sky);

    const auto ball = DisplayFactory::createCircle();
    ball->set(28, 130, 40);
    ball->setFillColor(across(0, 1, {0xFF8FE3DC, palette::kTeal, 0xFF0B5F5B}));
    inside.add(ball);

    const auto star = DisplayFactory::createPolyline();
    star->set(starPoints(190, 176, 50), true);
    star->setFillColor(across(1, 1, {palette::kAmber, palette::kCoral}));
    inside.add(star);
}

void drawGradientStops(ContainerObject& inside) {
    // One axis in user space, of which each bar shows its part.
    LinearGradient rainbow;
    rainbow.set(at(24), at(0), at(251), at(0));
    const unsigned colors[] = {palette::kCoral, palette::kAmber, palette::kGreen,
                               palette::kTeal,  palette::kBlue,  palette::kViolet};
    float position = 0;
    for (const unsigned color : colors) {
        rainbow.addColor(color, position);
        position += 0.2F;
    }
    for (int i = 0; i < 9; ++i) {
        const float height = 40 + 130 * static_cast<float>((i * 5 % 9)) / 9;
        const auto bar = DisplayFactory::createRect();
        bar->set(24 + 25.5F * static_cast<float>(i), 206 - height, 21, height);
        bar->setRx(5);
        bar->setRy(5);
        bar->setFillColor(rainbow);
        inside.add(bar);
    }
}

void drawClips(ContainerObject& inside) {
    // The clip is the container's bounds and does not turn with the children.
    const auto window = DisplayFactory::createClipContainer(false);
    window->setBounds({28, 34, 219, 172});
    inside.add(window);
    const auto back = DisplayFactory::createRect();
    back->set(0, 0, 300, 300);
    paint(back, 0xFFFFF3D6);
    window->add(back);
    const auto turned = DisplayFactory::createContainer();
    turn(*turned, 24, 137, 120);
    window->add(turned);
    const unsigned colors[] = {palette::kCoral, palette::kAmber, palette::kTeal, palette::kBlue};
    for (int i = 0; i < 12; ++i) {
        const auto stripe = DisplayFactory::createRect();
        stripe->set(-60 + 34.0F * static_cast<float>(i), -80, 17, 400);
        paint(stripe, colors[i % 4]);
        turned->add(stripe);
    }
    const auto edge = DisplayFactory::createRect();
    edge->set(28, 34, 219, 172);
    outline(edge, palette::kInk, 2);
    inside.add(edge);
}

void drawNestedTransforms(ContainerObject& inside) {
    // Each square is inside the one before, turned and scaled by the same step.
    ContainerObject* around = &inside;
    const Color colors[] = {palette::kBlue,  palette::kCard, palette::kViolet, palette::kCard,
                            palette::kCoral, palette::kCard, palette::kAmber,  palette::kCard};
    for (int i = 0; i < 16; ++i) {
        const auto level = DisplayFactory::createContainer();
        if (i == 0) {
            level->setTranslate(137, 129);
        } else {
            level->setScale(0.86F, 0.86F);
            turn(*level, 11, 0, 0);
        }
        const auto square = DisplayFactory::createRect();
        square->set(-88, -88, 176, 176);
        square->setRx(10);
        square->setRy(10);
        paint(square, colors[i % 8]);
        level->add(square);
        around->add(level);
        around = level.get();
    }
}

}  // namespace gallery
