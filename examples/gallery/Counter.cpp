#include "Counter.h"

#include <array>

#include "Palette.h"

namespace gallery {

namespace {

constexpr float kDigitWidth = 40;
constexpr float kDigitHeight = 80;
constexpr float kStep = 58;
constexpr float kThickness = 9;
constexpr unsigned kPeriod = 1000;  // milliseconds

// The segments of each digit, one bit each: top, top left, top right, middle, bottom left, bottom
// right, bottom.
constexpr std::array<unsigned, 10> kShining = {0b1110111, 0b0010010, 0b1011101, 0b1011011,
                                               0b0111010, 0b1101011, 0b1101111, 0b1010010,
                                               0b1111111, 0b1111011};

std::shared_ptr<DisplayObject> segment(float x, float y, bool upright) {
    const float half = kDigitHeight / 2;
    const auto bar = DisplayFactory::createRect();
    bar->set(x, y, upright ? kThickness : kDigitWidth - kThickness,
             upright ? half - kThickness : kThickness);
    bar->setRx(kThickness / 2);
    bar->setRy(kThickness / 2);
    paint(bar, palette::kCoral);
    return bar;
}

}  // namespace

Counter::Counter(ContainerObject& inside) {
    const float half = kDigitHeight / 2;
    for (int digit = 0; digit < kDigits; ++digit) {
        const float x = 26 + kStep * static_cast<float>(digit);
        const float y = 78;
        const float in = kThickness / 2;
        const std::shared_ptr<DisplayObject> bars[] = {
            segment(x + in, y, false),
            segment(x - in, y + kThickness, true),
            segment(x + kDigitWidth - in, y + kThickness, true),
            segment(x + in, y + half, false),
            segment(x - in, y + half + kThickness, true),
            segment(x + kDigitWidth - in, y + half + kThickness, true),
            segment(x + in, y + kDigitHeight, false)};
        for (const auto& bar : bars) {
            inside.add(bar);
            segments_.push_back(bar);
        }
    }
    show();
}

void Counter::start() {
    timer_.start(kPeriod, [this] {
        ++value_;
        show();
    });
}

void Counter::show() {
    int rest = value_;
    for (int digit = kDigits - 1; digit >= 0; --digit) {
        const unsigned shining = kShining[static_cast<std::size_t>(rest % 10)];
        for (std::size_t i = 0; i < 7; ++i) {
            segments_[static_cast<std::size_t>(digit) * 7 + i]->setVisible(
                (shining >> (6 - i) & 1U) != 0);
        }
        rest /= 10;
    }
}

}  // namespace gallery
