#pragma once

#include <cstddef>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Returns the bytes of the coverage of glyphs that the process keeps (GlyphCache). Any thread.
ORVANE_EXPORT std::size_t glyphCacheBytes();

}  // namespace orvane::platform
