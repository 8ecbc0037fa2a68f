#include <array>
#include <cmath>
#include <cstdio>

#include "Charts.h"

namespace dashboard {

using namespace orvane::display;
using namespace orvane::display::animation;
using namespace orvane::display::layout;
using BoxPointer = std::shared_ptr<Box>;

extern const char* const kData;  // data.json, which the build puts into the library

namespace {

constexpr float kSegment = 76;
constexpr unsigned kTour = 8000;  // milliseconds until the next range is shown

// The numbers between two trees with the same keys, and the texts of the second one. A list is
// compared with one of another length by the share of the way through it.
Json between(const Json& from, const Json& to, double share) {
    if (to.is_number()) {
        return std::lerp(from.get<double>(), to.get<double>(), share);
    }
    Json result = to;
    if (to.is_array()) {
        for (std::size_t i = 0; i < to.size() && !from.empty(); ++i) {
            result[i] = between(from[i * from.size() / to.size()], to[i], share);
        }
    } else if (to.is_object()) {
        for (const auto& [key, child] : to.items()) {
            result[key] = between(from.at(key), child, share);
        }
    }
    return result;
}

// A shape that the box behind which it is sizes.
std::shared_ptr<graphics::Rect> makeBack(unsigned color, float radius = 0) {
    auto back = DisplayFactory::createRect();
    back->setRx(radius);
    back->setRy(radius);
    back->setFillColor(color);
    return back;
}

BoxPointer makeColumn(double gap, double padding = 0) {
    return std::make_shared<Box>(
        BoxStyle{.direction = Direction::Column, .gap = gap, .padding = Insets::all(padding)});
}

BoxPointer makeCard(const std::string& title) {
    const auto card = makeColumn(12, 20);
    const auto back = makeBack(palette.card, 16);
    back->setStrokeColor(palette.edge);
    back->setStrokeWidth(1);
    card->setBackground(back);
    card->add(makeText(title, 13, palette.caption));
    card->getContainer()->getOrCreateAccessibilityElement()->setLabel(title);
    return card;
}

BoxPointer makeChartCard(const std::string& title, Chart& chart) {
    const auto card = makeCard(title);
    card->add(chart.object(), chart.item());
    return card;
}

class Dashboard {
public:
    void main() {
        listeners_.add<AppearanceChangedEvent>(*Display::instance(), [this](const auto&) {
            Display::instance()->remove(page_->getContainer());
            build();
        });
        build();
    }

private:
    void build() {
        palette = Display::instance()->getAppearance().isDark ? Palette::dark() : Palette();
        page_ = makeColumn(20, 28);
        lines_ = Chart(drawLines);
        ring_ = Chart(drawRing);
        bars_ = Chart(drawBars);
        pill_ = makeBack(palette.card, 15);
        numbers_.clear();
        notes_.clear();
        taps_.clear();
        page_->setBackground(makeBack(palette.paper));
        page_->add(makeHeader());
        page_->add(makeStats());
        const auto upper = std::make_shared<Box>(BoxStyle{.gap = 20});
        upper->add(makeChartCard("Power in kW", lines_), {.width = 0, .grow = 2});
        upper->add(makeChartCard("Where it goes", ring_), {.width = 0, .grow = 1});
        page_->add(upper, {.height = 0, .grow = 3});
        page_->add(makeChartCard("Battery in kWh", bars_), {.height = 0, .grow = 2});

        show(between(ranges_[0], ranges_[0], 0));
        page_->showOnDisplay();
        select(selected_);
    }

    BoxPointer makeHeader() {
        const auto header = std::make_shared<Box>(BoxStyle{.align = Align::Center});
        const auto titles = makeColumn(4);
        titles->add(makeText(data_.at("title"), 26, palette.ink, true));
        titles->add(makeText(data_.at("subtitle"), 13, palette.caption));
        header->add(titles);
        header->addSpace();
        header->add(makeSegments());
        return header;
    }

    // A button for each range. The pill below them, which no box places, glides to one of them.
    BoxPointer makeSegments() {
        const auto segments = std::make_shared<Box>();
        segments->setBackground(makeBack(palette.track, 18));
        pill_->set(3, 3, kSegment - 6, 30);
        segments->getContainer()->add(pill_);
        for (std::size_t i = 0; i < ranges_.size(); ++i) {
            const auto button =
                std::make_shared<Box>(BoxStyle{.justify = Justify::Center, .align = Align::Center});
            button->setBackground(makeBack(0x01FFFFFF));  // what a touch hits
            button->add(makeText(ranges_[i].at("name"), 13, palette.ink));
            taps_.add<events::PointerEvent>(*button->getContainer(),
                                            [this, i](const events::PointerEvent& event) {
                                                if (event.phase == events::PointerPhase::Down) {
                                                    select(i);
                                                }
                                                return event.phase == events::PointerPhase::Down;
                                            });
            const auto element = button->getContainer()->getOrCreateAccessibilityElement();
            element->setRole(AccessibilityRole::Button);
            segments->add(button, {.width = kSegment, .height = 36});
        }
        return segments;
    }

    BoxPointer makeStats() {
        const auto stats = std::make_shared<Box>(BoxStyle{.gap = 20, .wraps = true, .lineGap = 20});
        stats->setMotion(0.35F);
        for (const Json& stat : ranges_[0].at("stats")) {
            const auto card = makeCard(stat.at(0));
            numbers_.push_back(makeText("", 28, palette.ink, true));
            notes_.push_back(makeText("", 12, palette.caption));
            card->add(numbers_.back(), {.height = 34});
            card->add(notes_.back(), {.height = 15});
            stats->add(card, {.width = 230, .grow = 1});
        }
        return stats;
    }

    // Moves everything from what is shown to a range, and to the next one after a while.
    void select(std::size_t index) {
        selected_ = index;
        const bool moves = !Display::instance()->getAppearance().reducesMotion;
        pillRun_->stop(StopAt::Presentation);
        const float way = kSegment * static_cast<float>(index) - pillPlace();
        const auto glide = std::make_shared<ValueAnimation>("pill", AttributeName::TranslationX,
                                                            std::vector<float>{0, way});
        glide->setAnimatable(pill_->extractAnimationLayer());
        glide->setSpring(Spring::withBounce(0.4, 0.25));
        glide->setEndState(EndState::Keep);
        glide->run();
        if (!moves) {
            glide->stop(StopAt::End);
        }
        pillRun_ = glide;

        change_->stop(StopAt::Presentation);
        if (!moves) {
            show(ranges_[index]);
            return;
        }
        change_ = std::make_shared<FrameAnimation>(
            "change", [this, from = shown_, to = ranges_[index],
                       easing = Easing::make(Easing::Curve::Cubic, Easing::Direction::Out)](
                          float phase) { show(between(from, to, easing(phase))); });
        change_->setDuration(0.9F);
        change_->run();
        tour_.startOnce(kTour, [this, next = (index + 1) % ranges_.size()] { select(next); });
    }

    float pillPlace() const { return static_cast<float>(pill_->getTransformation().m02); }

    void show(const Json& range) {
        const UpdateLock lock(page_->getContainer());
        shown_ = range;
        for (Chart* const chart : {&lines_, &ring_, &bars_}) {
            chart->show(range);
        }
        for (std::size_t i = 0; i < numbers_.size(); ++i) {
            const Json& stat = range.at("stats").at(i);
            const double value = stat.at(1);
            const std::string unit = stat.at(2);
            std::array<char, 32> number{};
            std::snprintf(number.data(), number.size(),
                          value < 1000 && unit != "%" ? "%.1f " : "%.0f ", value);
            numbers_[i]->setContent(number.data() + unit);
            notes_[i]->setContent(stat.at(3).get<std::string>());
        }
    }

    const Json data_ = Json::parse(kData);
    const Json& ranges_ = data_.at("ranges");
    BoxPointer page_ = makeColumn(20, 28);
    Chart lines_{drawLines};
    Chart ring_{drawRing};
    Chart bars_{drawBars};
    std::vector<std::shared_ptr<graphics::Text>> numbers_;
    std::vector<std::shared_ptr<graphics::Text>> notes_;
    std::shared_ptr<graphics::Rect> pill_ = makeBack(palette.card, 15);
    std::shared_ptr<Animation> pillRun_ = std::make_shared<FrameAnimation>("none");
    std::shared_ptr<Animation> change_ = pillRun_;
    orvane::notification::Listeners taps_;
    Json shown_;
    std::size_t selected_ = 0;
    orvane::notification::Listeners listeners_;
    orvane::Timer tour_;
};

}  // namespace
}  // namespace dashboard

ORVANE_MAIN_CLASS(dashboard::Dashboard)
