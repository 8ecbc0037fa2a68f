#pragma once

#include <orvane/orvane.h>

#include <functional>
#include <nlohmann/json.hpp>
#include <string>

namespace dashboard {

namespace graphics = orvane::display::graphics;
using Json = nlohmann::json;

namespace palette {

inline constexpr unsigned paper = 0xFFF3F1EC;
inline constexpr unsigned card = 0xFFFFFFFF;
inline constexpr unsigned edge = 0xFFE3DED4;
inline constexpr unsigned ink = 0xFF22303C;
inline constexpr unsigned caption = 0xFF6B7680;
inline constexpr unsigned amber = 0xFFF5A623;
inline constexpr unsigned teal = 0xFF19A7A0;
inline constexpr unsigned blue = 0xFF2F6FDE;
inline constexpr unsigned violet = 0xFF7A5CD6;

}  // namespace palette

std::shared_ptr<graphics::Text> makeText(const std::string& content, float size, unsigned color,
                                         bool isBold = false);

// A drawing of data that fills the rectangle that a box gives it.
class Chart {
public:
    // Draws data from 0, 0 to width, height.
    using Draw = void (*)(graphics::Container& inside, const Json& data, float width, float height);

    explicit Chart(Draw draw);
    const std::shared_ptr<graphics::Container>& object() const { return container_; }
    // The item that the object is in a box; refers to this chart.
    orvane::display::layout::Item item();
    void show(const Json& data);

private:
    void drawAgain();

    Draw draw_;
    std::shared_ptr<graphics::Container> container_;
    Json data_;
    orvane::display::geometry::Size<double> size_;
};

// Two lines over time, "produced" and "used", with "labels" of the time.
void drawLines(graphics::Container& inside, const Json& data, float width, float height);
// "bars", of which the highest stands out.
void drawBars(graphics::Container& inside, const Json& data, float width, float height);
// A ring of "shares", which are pairs of a name and a percentage, with a legend.
void drawRing(graphics::Container& inside, const Json& data, float width, float height);

}  // namespace dashboard
