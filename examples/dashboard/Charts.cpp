#include "Charts.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace dashboard {

using graphics::TextAlign;
using orvane::display::DisplayFactory;
using orvane::display::UpdateLock;

namespace {

void removeFill(graphics::Shape& shape) {
    shape.setFillColor(255U, 255U, 255U, ~0U);  // an alpha of -1
}

void addText(graphics::Container& inside, const std::string& content, float x, float y,
             TextAlign align = TextAlign::Start) {
    const auto text = makeText(content, 11, palette.caption);
    text->setTextAlign(align);
    text->setX(x);
    text->setY(y);
    inside.add(text);
}

void addDot(graphics::Container& inside, float x, float y, unsigned color) {
    const auto dot = DisplayFactory::createCircle();
    dot->set(x - 5, y - 5, 5);
    dot->setFillColor(color);
    inside.add(dot);
}

struct Place {
    float x, y;
};

// A smooth curve through places from left to right. Between two of them, the tangents are those of
// a Catmull-Rom spline, cut off at the height of the places so that the curve invents no extremes.
void addCurve(graphics::Container& inside, const std::vector<Place>& places, float floor,
              unsigned color) {
    const auto slopeAt = [&places](std::size_t i) {
        const Place& before = places[i == 0 ? 0 : i - 1];
        const Place& after = places[std::min(i + 1, places.size() - 1)];
        const bool isExtreme = (after.y - places[i].y) * (places[i].y - before.y) <= 0;
        return isExtreme ? 0 : (after.y - before.y) / (after.x - before.x);
    };
    const auto area = DisplayFactory::createPath();
    const auto line = DisplayFactory::createPath();
    for (const auto& path : {area, line}) {
        path->start();
        path->move(places.front().x, path == area ? floor : places.front().y, true);
        path->line(places.front().x, places.front().y, true);
        for (std::size_t i = 1; i < places.size(); ++i) {
            const auto [x0, y0] = places[i - 1];
            const auto [x1, y1] = places[i];
            const float third = (x1 - x0) / 3;
            path->cubicCurve(x1, y1, x0 + third, y0 + third * slopeAt(i - 1), x1 - third,
                             y1 - third * slopeAt(i), true);
        }
    }
    area->line(places.back().x, floor, true);
    area->close();
    area->setFillColor((color & 0x00FFFFFFU) | 0x26000000U);
    removeFill(*line);
    line->setStrokeColor(color);
    line->setStrokeWidth(2.5F);
    for (const auto& path : {area, line}) {
        path->finish();
        inside.add(path);
    }
}

}  // namespace

std::shared_ptr<graphics::Text> makeText(const std::string& content, float size, unsigned color,
                                         bool isBold) {
    auto text = DisplayFactory::createText(false);
    text->setFont(isBold ? "DejaVu Sans Bold" : "DejaVu Sans");
    text->setTextSize(size);
    text->setFillColor(color);
    text->setContent(content);
    return text;
}

Chart::Chart(Draw draw) : draw_(draw), container_(DisplayFactory::createContainer()) {}

orvane::display::layout::Item Chart::item() {
    return {.height = 0, .grow = 1, .place = [this](const auto& rect) {
                size_ = rect.size();
                container_->setTranslate(static_cast<float>(rect.x), static_cast<float>(rect.y));
                drawAgain();
            }};
}

void Chart::show(const Json& data) {
    data_ = data;
    drawAgain();
}

void Chart::drawAgain() {
    const UpdateLock lock(container_);
    container_->clear();
    if (size_.width > 100 && size_.height > 50) {
        draw_(*container_, data_, static_cast<float>(size_.width),
              static_cast<float>(size_.height));
    }
}

void drawLines(graphics::Container& inside, const Json& data, float width, float height) {
    constexpr float kLeft = 26;
    constexpr int kLines = 4;
    const std::vector<double> series[] = {data.at("produced"), data.at("used")};
    const std::vector<std::string> labels = data.at("labels");
    const unsigned colors[] = {palette.amber, palette.teal};
    const char* const names[] = {"produced", "used"};
    double highest = 1;
    for (const auto& values : series) {
        highest = std::max(highest, *std::max_element(values.begin(), values.end()));
    }
    const double top = kLines * std::ceil(highest / kLines);
    const float floor = height - 24;
    const auto yOf = [&](double value) {
        return floor - (floor - 28) * static_cast<float>(value / top);
    };
    for (int i = 0; i <= kLines; ++i) {
        const int value = static_cast<int>(top) / kLines * i;
        const float y = std::round(yOf(value)) + 0.5F;
        const auto line = DisplayFactory::createLine();
        line->set(kLeft, y, width, y);
        line->setStrokeColor(palette.edge);
        line->setStrokeWidth(1);
        inside.add(line);
        addText(inside, std::to_string(value), kLeft - 10, y + 4, TextAlign::End);
    }
    const auto xOf = [&](std::size_t i, std::size_t count) {
        return kLeft + (width - kLeft) * static_cast<float>(i) / static_cast<float>(count - 1);
    };
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const TextAlign align = i == 0                   ? TextAlign::Start
                                : i + 1 == labels.size() ? TextAlign::End
                                                         : TextAlign::Center;
        addText(inside, labels[i], xOf(i, labels.size()), height - 4, align);
    }
    for (std::size_t k = 0; k < 2; ++k) {
        std::vector<Place> places;
        for (std::size_t i = 0; i < series[k].size(); ++i) {
            places.push_back({xOf(i, series[k].size()), yOf(series[k][i])});
        }
        addCurve(inside, places, floor, colors[k]);
        addDot(inside, kLeft + 5 + 90 * static_cast<float>(k), 8, colors[k]);
        addText(inside, names[k], kLeft + 17 + 90 * static_cast<float>(k), 12);
    }
}

void drawBars(graphics::Container& inside, const Json& data, float width, float height) {
    const std::vector<double> values = data.at("bars");
    const double highest = *std::max_element(values.begin(), values.end());
    const float step = width / static_cast<float>(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const float size = (height - 22) * static_cast<float>(values[i] / std::max(highest, 0.1));
        const float x = step * (static_cast<float>(i) + 0.2F);
        const auto bar = DisplayFactory::createRect();
        bar->set(x, height - size, step * 0.6F, size);
        bar->setRx(5);
        bar->setRy(5);
        bar->setFillColor(values[i] == highest ? palette.blue : palette.pale);
        inside.add(bar);
        addText(inside, std::to_string(values[i]).substr(0, 3), x + step * 0.3F, height - size - 7,
                TextAlign::Center);
    }
}

void drawRing(graphics::Container& inside, const Json& data, float width, float height) {
    constexpr float kThickness = 22;
    constexpr float kRow = 24;
    constexpr float kGap = 2;  // degrees
    const unsigned colors[] = {palette.teal, palette.blue, palette.violet, palette.amber};
    const Json& shares = data.at("shares");
    const float legend = height - kRow * static_cast<float>(shares.size());
    const float radius = (std::min(width, legend - 12) - kThickness) / 2;
    const float x = width / 2;
    const float y = radius + kThickness / 2;
    float angle = -90;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const double percent = shares[i].at(1);
        const float extent = 3.6F * static_cast<float>(percent);
        if (radius > 10 && extent > kGap) {
            const auto arc = DisplayFactory::createPath();
            const float begin = angle * std::numbers::pi_v<float> / 180;
            arc->start();
            arc->move(x + radius * std::cos(begin), y + radius * std::sin(begin), true);
            arc->arc(x, y, radius, radius, 0, angle, extent - kGap);
            removeFill(*arc);
            arc->setStrokeColor(colors[i % 4]);
            arc->setStrokeWidth(kThickness);
            arc->finish();
            inside.add(arc);
        }
        angle += extent;
        const float row = legend + kRow * static_cast<float>(i) + 11;
        addDot(inside, 5, row, colors[i % 4]);
        addText(inside, shares[i].at(0), 18, row + 4);
        addText(inside, std::to_string(std::lround(percent)) + " %", width, row + 4,
                TextAlign::End);
    }
}

}  // namespace dashboard
