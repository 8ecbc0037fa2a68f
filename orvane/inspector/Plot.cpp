#include "orvane/inspector/Plot.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace orvane::inspector {

using display::DisplayFactory;
using display::UpdateLock;
using platform::CGPoint;
namespace graphics = display::graphics;

namespace {

constexpr float kMargin = 12;
constexpr float kHeadingTop = 9;
constexpr float kTop = 46;  // of the drawing
constexpr float kTextSize = 10;
constexpr double kBarWidth = 2;

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
    double width;
    double floor;

    double x(double time) const {
        const double share = std::clamp(1 - (now - time) / seconds, 0.0, 1.0);
        return kMargin + (width - 2 * kMargin) * share;
    }
    double y(double value) const { return floor - (floor - kTop) * std::min(value / highest, 1.0); }
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
    heading->setTranslate(kMargin, kHeadingTop);
    container_->add(heading);
    container_->getOrCreateAccessibilityElement()->setLabel(title);
    line_->setStrokeColor(palette::kEdge);
    line_->setStrokeWidth(1);
    container_->add(line_);
    container_->add(chart_);
    for (const Series& each : series_) {
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
    const Scale scale{now, seconds, roundUp(highest), size_.width, size_.height - kMargin};
    const float right = static_cast<float>(size_.width) - kMargin;
    line_->set(kMargin, kTop - 0.5F, right, kTop - 0.5F);
    setText(*top_, format_(scale.highest));
    top_->setX(right);
    top_->setY(kHeadingTop);
    chart_->show(form_ == Form::Bars ? bars(samples, scale) : areas(samples, scale), size_);
    float x = kMargin;
    for (std::size_t i = 0; i < series_.size(); ++i) {
        const std::string value = samples.empty() ? "-" : format_(samples.back().values[i]);
        setText(*legend_[i], series_[i].name.empty() ? value : series_[i].name + ' ' + value);
        legend_[i]->setX(x);
        legend_[i]->setY(27);
        x += static_cast<float>(legend_[i]->getTextBounds().width) + 10;
    }
}

std::vector<Chart::Series> Plot::areas(const std::vector<Sample>& samples,
                                       const Scale& scale) const {
    std::vector<Chart::Series> result;
    for (std::size_t i = 0; i < series_.size() && !samples.empty(); ++i) {
        std::vector<CGPoint> points{{scale.x(samples.front().time), scale.floor}};
        for (const Sample& sample : samples) {
            points.push_back({scale.x(sample.time), scale.y(sample.values[i])});
        }
        points.push_back({scale.x(samples.back().time), scale.floor});
        result.push_back(
            {(series_[i].color & 0x00FFFFFFU) | 0x60000000U, points.size(), std::move(points)});
    }
    return result;
}

std::vector<Chart::Series> Plot::bars(const std::vector<Sample>& samples,
                                      const Scale& scale) const {
    std::vector<Chart::Series> result;
    for (const Series& each : series_) {
        result.push_back({each.color, 4, {}});
        result.back().points.reserve(4 * samples.size());
    }
    for (const Sample& sample : samples) {
        const double left =
            std::min(std::floor(scale.x(sample.time)), scale.width - kMargin - kBarWidth);
        double sum = 0;
        for (std::size_t i = 0; i < series_.size(); ++i) {
            const double bottom = scale.y(sum);
            sum += sample.values[i];
            const double top = scale.y(sum);
            for (const CGPoint corner : {CGPoint{left, bottom},
                                         {left, top},
                                         {left + kBarWidth, top},
                                         {left + kBarWidth, bottom}}) {
                result[i].points.push_back(corner);
            }
        }
    }
    return result;
}

}  // namespace orvane::inspector
