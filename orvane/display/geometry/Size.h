#pragma once

#include <concepts>

namespace orvane::display::geometry {

// A width and a height in points. Nothing keeps them from being negative.
template <typename T>
struct Size {
    T width{};
    T height{};

    // Zero width and height.
    constexpr Size() = default;
    // The given width and height.
    constexpr Size(T width_, T height_) : width(width_), height(height_) {}

    // Converts from any structure with the members width and height, such as the platform's size.
    template <typename S>
    requires requires(const S& s) {
        s.width;
        s.height;
    }
    constexpr explicit Size(const S& s) : width(s.width), height(s.height) {}
    // Converts to such a structure.
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
