#pragma once

namespace orvane::platform {

struct CGPoint {
    double x = 0;
    double y = 0;
    friend constexpr bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
    double width = 0;
    double height = 0;
    friend constexpr bool operator==(const CGSize&, const CGSize&) = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;
    friend constexpr bool operator==(const CGRect&, const CGRect&) = default;
};

}  // namespace orvane::platform
