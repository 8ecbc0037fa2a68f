#include "orvane/inspector/Plot.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace orvane::inspector {

using display::DisplayFactory;
using display::UpdateLock;
namespace graphics = display::graphics;

namespace {

constexpr float kMargin = 12;
constexpr float kTop = 46;  // of the drawing
constexpr float kTextSize = 10;
constexpr float kBarWidth = 2;

// The next number of the form 1, 2 or 5 times a power of ten.
double roundUp(double value) {
    const double power = std::pow(10, std::floor(std::log10(value)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (value <= factor * power) {
            return factor * power;
        }
    }
    return 10 * power;
}

}  // namespace

// Maps samples to places in the card.
struct Plot::Scale {
    double now;
    double seconds;
    double highest;
    float width;
    float floor;

    float x(double time) const {
        const double share = std::clamp(1 - (now - time) / seconds, 0.0, 1.0);
        return kMargin + (width - 2 * kMargin) * static_cast<float>(share);
    }
    float y(double value) const {
        return floor - (floor - kTop) * static_cast<float>(std::min(value / highest, 1.0));
    }
};

Plot::Plot(std::string title, Form form, std::vector<Series> series, double least,
           std::function<std::string(double)> format)
    : form_(form),
      series_(std::move(series)),
      least_(least),
      format_(std::move(format)),
      container_(DisplayFactory::createContainer()),
      ground_(makeRect(palette::kPanel, 8)),
      line_(DisplayFactory::createLine()),
      top_(makeText("", kTextSize, palette::kPale)) {
    container_->add(ground_);
    const auto heading = makeText(title, 11, palette::kInk, true);
    heading->setTranslate(kMargin, 9);
    container_->add(heading);
    container_->getOrCreateAccessibilityElement()->setLabel(title);
    line_->setStrokeColor(palette::kEdge);
    line_->setStrokeWidth(1);
    container_->add(line_);
    for (const Series& each : series_) {
        paths_.push_back(DisplayFactory::createPath());
        paths_.back()->setFillColor(form_ == Form::Bars ? each.color
                                                        : (each.color & 0x00FFFFFFU) | 0x60000000U);
        container_->add(paths_.back());
        legend_.push_back(makeText("", kTextSize, each.color));
        container_->add(legend_.back());
    }
    top_->setTextAlign(graphics::TextAlign::End);
    container_->add(top_);
}

void Plot::resize(const display::geometry::Rect<double>& rect) {
    size_ = rect.size();
    container_->setTranslate(static_cast<float>(rect.x), static_cast<float>(rect.y));
    ground_->set(0, 0, static_cast<float>(rect.width), static_cast<float>(rect.height));
}

void Plot::show(const std::vector<Sample>& samples, double now, double seconds) {
    const UpdateLock lock(container_);
    double highest = least_;
    for (const Sample& sample : samples) {
        const double value = form_ == Form::Bars
                                 ? std::accumulate(sample.values.begin(), sample.values.end(), 0.0)
                                 : *std::ranges::max_element(sample.values);
        highest = std::max(highest, value);
    }
    const Scale scale{now, seconds, roundUp(highest), static_cast<float>(size_.width),
                      static_cast<float>(size_.height) - kMargin};
    line_->set(kMargin, kTop - 0.5F, scale.width - kMargin, kTop - 0.5F);
    setText(*top_, format_(scale.highest));
    top_->setX(scale.width - kMargin);
    top_->setY(kTop - 15);
    for (std::size_t i = 0; i < series_.size() && form_ == Form::Areas; ++i) {
        drawArea(i, samples, scale);
    }
    if (form_ == Form::Bars) {
        drawBars(samples, scale);
    }
    float x = kMargin;
    for (std::size_t i = 0; i < series_.size(); ++i) {
        const std::string value = samples.empty() ? "-" : format_(samples.back().values[i]);
        setText(*legend_[i], series_[i].name.empty() ? value : series_[i].name + ' ' + value);
        legend_[i]->setX(x);
        legend_[i]->setY(27);
        x += static_cast<float>(legend_[i]->getTextBounds().width) + 10;
    }
}

void Plot::drawArea(std::size_t series, const std::vector<Sample>& samples, const Scale& scale) {
    graphics::Path& path = *paths_[series];
    path.start();
    if (!samples.empty()) {
        path.move(scale.x(samples.front().time), scale.floor, true);
        for (const Sample& sample : samples) {
            path.line(scale.x(sample.time), scale.y(sample.values[series]), true);
        }
        path.line(scale.x(samples.back().time), scale.floor, true);
        path.close();
    }
    path.finish();
}

void Plot::drawBars(const std::vector<Sample>& samples, const Scale& scale) {
    for (const auto& path : paths_) {
        path->start();
    }
    for (const Sample& sample : samples) {
        const float left =
            std::min(std::floor(scale.x(sample.time)), scale.width - kMargin - kBarWidth);
        double sum = 0;
        for (std::size_t i = 0; i < series_.size(); ++i) {
            const float bottom = scale.y(sum);
            sum += sample.values[i];
            const float top = scale.y(sum);
            paths_[i]->move(left, bottom, true);
            paths_[i]->line(left, top, true);
            paths_[i]->line(left + kBarWidth, top, true);
            paths_[i]->line(left + kBarWidth, bottom, true);
            paths_[i]->close();
        }
    }
    for (const auto& path : paths_) {
        path->finish();
    }
}

}  // namespace orvane::inspector
