#pragma once

#include <orvane/orvane.h>

#include <functional>
#include <memory>
#include <vector>

namespace gallery {

// A color, 32-bit ARGB, that may depend on the appearance.
class Color {
public:
    // Always the same.
    constexpr Color(unsigned color) : Color(color, color) {}
    constexpr Color(unsigned light, unsigned dark) : light_(light), dark_(dark) {}
    // The one that the user has chosen for what is selected.
    static constexpr Color accent() {
        Color color{0};
        color.isAccent_ = true;
        return color;
    }

    // The color in the present appearance.
    unsigned now() const;
    // Whether it depends on the appearance.
    constexpr bool changes() const { return isAccent_ || light_ != dark_; }

private:
    unsigned light_;
    unsigned dark_;
    bool isAccent_ = false;
};

// What the gallery takes from the appearance that the user has chosen. Objects follow it: each
// change of the appearance is applied to them.
class Look {
public:
    using Appearance = orvane::display::Appearance;

    static Look& instance();

    const Appearance& appearance() const { return appearance_; }

    // Calls a function for an object now and after each change, as long as the object exists.
    template <typename Object, typename Function>
    void follow(const std::shared_ptr<Object>& object, Function apply) {
        apply(*object);
        followChanges(object, std::move(apply));
    }
    // Calls a function for an object after each change.
    template <typename Object, typename Function>
    void followChanges(const std::shared_ptr<Object>& object, Function apply) {
        followers_.push_back([weak = std::weak_ptr<Object>(object), apply = std::move(apply)] {
            const auto held = weak.lock();
            if (held) {
                apply(*held);
            }
            return held != nullptr;
        });
    }

private:
    Look();

    Appearance appearance_;
    std::vector<std::function<bool()>> followers_;  // false: the object is gone
    orvane::notification::Listeners listeners_;
};

}  // namespace gallery
