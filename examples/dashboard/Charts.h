#pragma once

#include <orvane/orvane.h>

#include <functional>
#include <nlohmann/json.hpp>
#include <string>

namespace dashboard {

namespace graphics = orvane::display::graphics;
using Json = nlohmann::json;

// The colors of everything.
struct Palette {
    unsigned paper = 0xFFF3F1EC;
    unsigned card = 0xFFFFFFFF;
    unsigned edge = 0xFFE3DED4;
    unsigned track = 0xFFE6E1D7;
    unsigned ink = 0xFF22303C;
    unsigned caption = 0xFF6B7680;
    unsigned amber = 0xFFF5A623;
    unsigned teal = 0xFF19A7A0;
    unsigned blue = 0xFF2F6FDE;
    unsigned pale = 0xFFC6D6F5;
    unsigned violet = 0xFF7A5CD6;

    static Palette dark() {
        return {.paper = 0xFF191C20,
                .card = 0xFF24282E,
                .edge = 0xFF363C45,
                .track = 0xFF30353D,
                .ink = 0xFFECEFF3,
                .caption = 0xFF9AA4B0,
                .amber = 0xFFF5B544,
                .teal = 0xFF35BDB5,
                .blue = 0xFF6B9BF2,
                .pale = 0xFF3B4A66,
                .violet = 0xFF9F86EA};
    }
};
// Those of the current appearance.
inline Palette palette;

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
