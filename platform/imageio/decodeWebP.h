#pragma once

#include <memory>
#include <span>

namespace orvane::platform {

class CGImage;

// Decodes a still WebP picture. Returns null for anything else, an animation included. Any thread.
std::shared_ptr<const CGImage> decodeWebP(std::span<const unsigned char> bytes);

}  // namespace orvane::platform
