#pragma once

#include <cstddef>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Returns the bytes of the coverage of shapes that the calling thread keeps (MaskCache).
ORVANE_EXPORT std::size_t coverageCacheBytes();

}  // namespace orvane::platform
