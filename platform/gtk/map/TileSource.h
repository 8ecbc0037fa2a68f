#pragma once

#include <shumate/shumate.h>

#include <functional>
#include <memory>
#include <string>

namespace orvane::platform {

struct NSMapTiles;

// Creates the source of a map's tiles for the desktop's library. Calls `failed` on the main thread
// whenever tiles cannot be loaded. Returns a reference that the caller owns.
ShumateMapSource* createTileSource(const NSMapTiles& tiles,
                                   std::function<void(const std::string& message)> failed);

}  // namespace orvane::platform
