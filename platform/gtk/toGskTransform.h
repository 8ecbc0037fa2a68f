#pragma once

#include <gsk/gsk.h>

namespace orvane::platform {

struct CGAffineTransform;

// Whether GTK can show something under this transform: GTK stores it and its inverse in single
// precision. False for a transform with a NaN.
bool canShow(const CGAffineTransform& transform);

// Converts a transform that can be shown. The caller owns the result.
GskTransform* toGskTransform(const CGAffineTransform& transform);

}  // namespace orvane::platform
