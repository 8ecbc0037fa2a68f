#pragma once

#include <concepts>

namespace orvane::display::geometry {

// A position in points of a coordinate space with y pointing down. The user of a point says which
// space it belongs to.
template <typename T>
struct Point {
    T x{};
    T y{};

    // The origin.
    constexpr Point() = default;
    // The position x_, y_.
    constexpr Point(T x_, T y_) : x(x_), y(y_) {}

    // Converts from any structure with the members x and y, such as the platform's point.
    template <typename P>
    requires requires(const P& p) {
        p.x;
        p.y;
    }
    constexpr explicit Point(const P& p) : x(p.x), y(p.y) {}
    // Converts to such a structure.
    template <typename P>
    requires(requires(P p) {
        p.x;
        p.y;
    } && std::default_initializable<P>) constexpr explicit
    operator P() const {
        P p;
        p.x = x;
        p.y = y;
        return p;
    }

    friend constexpr bool operator==(const Point&, const Point&) = default;
    friend constexpr Point operator+(const Point& a, const Point& b) {
        return {a.x + b.x, a.y + b.y};
    }
    friend constexpr Point operator-(const Point& a, const Point& b) {
        return {a.x - b.x, a.y - b.y};
    }
};

}  // namespace orvane::display::geometry
