#pragma once

#include "platform/gtk/map/TileLoader.h"

namespace orvane::platform {

// Returns what loads tiles from a server by way of a cache on the disk.
TileLoader::Read readFromServer(const NSMapTiles& tiles);

}  // namespace orvane::platform
