#include "Cards.h"
#include "Palette.h"

namespace gallery {

using FillRule = orvane::display::graphics::PathFillStyleable::FillRule;

void drawShapes(ContainerObject& inside) {
    const auto rect = DisplayFactory::createRect();
    rect->set(26, 40, 64, 48);
    paint(rect, palette::kCoral);
    inside.add(rect);

    const auto rounded = DisplayFactory::createRect();
    rounded->set(106, 40, 64, 48);
    rounded->setRx(14);
    rounded->setRy(14);
    paint(rounded, palette::kAmber, palette::kInk, 2);
    inside.add(rounded);

    const auto circle = DisplayFactory::createCircle();
    circle->set(192, 36, 28);
    paint(circle, palette::kTeal);
    inside.add(circle);

    const auto ellipse = DisplayFactory::createEllipse();
    ellipse->set(24, 118, 72, 44);
    paint(ellipse, palette::kBlue, palette::kInk, 2);
    inside.add(ellipse);

    const auto polyline = DisplayFactory::createPolyline();
    polyline->set({112, 164, 124, 120, 140, 150, 154, 116, 168, 164}, false);
    paint(polyline, 0x332F6FDE, palette::kBlue, 3);
    inside.add(polyline);

    // A heart of four curves.
    const auto heart = DisplayFactory::createPath();
    heart->start();
    heart->move(220, 176, false);
    heart->cubicCurve(188, 138, 208, 166, 188, 154, false);
    heart->cubicCurve(220, 132, 188, 116, 214, 114, false);
    heart->cubicCurve(252, 138, 226, 114, 252, 116, false);
    heart->cubicCurve(220, 176, 252, 154, 232, 166, false);
    heart->close();
    heart->finish();
    paint(heart, palette::kCoral);
    inside.add(heart);

    const auto line = DisplayFactory::createLine();
    line->set(26, 200, 249, 200);
    outline(line, palette::kInk, 3);
    inside.add(line);
}

void drawFillRules(ContainerObject& inside) {
    float x = 76;
    for (const FillRule rule : {FillRule::NonZero, FillRule::EvenOdd}) {
        const auto star = DisplayFactory::createPolyline();
        star->setFillRule(rule);
        star->set(starPoints(x, 130, 58), true);
        paint(star, rule == FillRule::NonZero ? palette::kViolet : palette::kTeal, palette::kInk,
              2);
        inside.add(star);
        x += 124;
    }
}

void drawCurves(ContainerObject& inside) {
    // Arcs of increasing sweep around one center.
    for (int i = 0; i < 6; ++i) {
        const float radius = 17 + 10.5F * static_cast<float>(i);
        const auto arc = DisplayFactory::createPath();
        arc->start();
        arc->arc(100, 128, radius, radius, 0, -90, 60 + 50.0F * static_cast<float>(i));
        arc->finish();
        const unsigned colors[] = {palette::kCoral, palette::kAmber, palette::kGreen,
                                   palette::kTeal,  palette::kBlue,  palette::kViolet};
        outline(arc, colors[i], 6);
        inside.add(arc);
    }
    const auto wave = DisplayFactory::createPath();
    wave->start();
    wave->move(222, 50, false);
    wave->quadCurve(222, 102, 270, 76, false);
    wave->quadCurve(222, 154, 174, 128, false);
    wave->quadCurve(222, 206, 270, 180, false);
    wave->finish();
    outline(wave, palette::kInk, 4);
    inside.add(wave);
}

void drawDashes(ContainerObject& inside) {
    const std::vector<std::vector<float>> patterns = {{}, {14, 8}, {2, 6}, {20, 6, 4, 6}, {1, 3}};
    const Color colors[] = {palette::kInk, palette::kCoral, palette::kAmber, palette::kTeal,
                            palette::kBlue};
    for (std::size_t i = 0; i < patterns.size(); ++i) {
        const auto line = DisplayFactory::createLine();
        const float y = 44 + 24.0F * static_cast<float>(i);
        line->set(28, y, 247, y);
        outline(line, colors[i], 2 + static_cast<float>(i));
        line->setStrokeDashArray(patterns[i]);
        inside.add(line);
    }
    const auto frame = DisplayFactory::createRect();
    frame->set(30, 168, 215, 42);
    frame->setRx(21);
    frame->setRy(21);
    paint(frame, 0x227A5CD6, palette::kViolet, 3);
    frame->setStrokeDashArray({12, 7});
    frame->setStrokeDashOffset(4);
    inside.add(frame);
}

}  // namespace gallery
