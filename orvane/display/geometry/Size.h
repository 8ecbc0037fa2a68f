#pragma once

#include <concepts>

namespace orvane::display::geometry {

// An extent, in points of the screen's logical space. Nothing keeps it from being negative.
template <typename T>
struct Size {
    T width{};
    T height{};

    constexpr Size() = default;
    constexpr Size(T width_, T height_) : width(width_), height(height_) {}

    // From and to any structure with width and height, such as the platform's size.
    template <typename S>
    requires requires(const S& s) {
        s.width;
        s.height;
    }
    constexpr explicit Size(const S& s) : width(s.width), height(s.height) {}
    template <typename S>
    requires(requires(S s) {
        s.width;
        s.height;
    } && std::default_initializable<S>) constexpr explicit
    operator S() const {
        S s;
        s.width = width;
        s.height = height;
        return s;
    }

    friend constexpr bool operator==(const Size&, const Size&) = default;
};

}  // namespace orvane::display::geometry
