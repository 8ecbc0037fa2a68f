#pragma once

#include <cstdint>

namespace orvane::platform {

// What the runtime and the program orvane-svg send one another over a socket, in the machine's byte
// order. Each request has one reply. The program ends when the socket is closed.

// Followed by `length` bytes, the text of the drawing.
struct SVGRequest {
    std::uint64_t length;
    // Pixels for a unit of the drawing; the program reduces it to what the limits allow.
    double scale;
};

// Followed by the pixels, premultiplied ARGB words without gaps. The numbers are 0 if the text is
// not a drawing.
struct SVGReply {
    // The size that the drawing states, or that of its view box.
    double width;
    double height;
    std::int32_t pixelWidth;
    std::int32_t pixelHeight;
};

}  // namespace orvane::platform
