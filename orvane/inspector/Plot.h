#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "orvane/inspector/Chart.h"
#include "orvane/inspector/widgets.h"

namespace orvane::inspector {

// A card with values of the last seconds, the present at its right edge: as areas behind one
// another, or as bars on top of one another.
class Plot {
public:
    enum class Form { Areas, Bars };

    struct Series {
        std::string name;
        unsigned color = 0;
    };
    // The values of a moment, one for each series. The time is in seconds of media time.
    struct Sample {
        double time = 0;
        std::vector<double> values;
    };

    // `least` is the smallest upper end of the scale. `format` makes a text of a value.
    Plot(std::string title, Form form, std::vector<Series> series, double least,
         std::function<std::string(double)> format);

    const std::shared_ptr<display::graphics::Container>& getContainer() const { return container_; }
    void resize(const display::geometry::Rect<double>& rect);
    // Shows the samples from `now - seconds` to `now`, in ascending order of time.
    void show(const std::vector<Sample>& samples, double now, double seconds);

private:
    struct Scale;
    std::vector<Chart::Series> areas(const std::vector<Sample>& samples, const Scale& scale) const;
    std::vector<Chart::Series> bars(const std::vector<Sample>& samples, const Scale& scale) const;

    Form form_;
    std::vector<Series> series_;
    double least_;
    std::function<std::string(double)> format_;
    std::shared_ptr<display::graphics::Container> container_;
    std::shared_ptr<display::graphics::Rect> ground_;
    std::shared_ptr<display::graphics::Line> line_;
    std::shared_ptr<display::graphics::Text> top_;
    std::shared_ptr<Chart> chart_ = std::make_shared<Chart>();
    std::vector<std::shared_ptr<display::graphics::Text>> legend_;
    display::geometry::Size<double> size_;
};

}  // namespace orvane::inspector
