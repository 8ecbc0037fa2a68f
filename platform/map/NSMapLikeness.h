#pragma once

#include <map>
#include <memory>

#include "platform/map/tilePictures.h"

namespace orvane::platform {

class CGContext;
class CGImage;
struct CGRect;
class NSMapCamera;
struct NSMapTiles;

// Paints a map where no library for maps does: the tiles of a folder, and elsewhere a grid of the
// edges of the tiles. Pictures are read when they are painted, and kept. Main thread.
class NSMapLikeness {
public:
    // Paints the part of the map that is in `dirty`, in view coordinates.
    void draw(CGContext& canvas, const CGRect& dirty, const NSMapCamera& camera,
              const NSMapTiles& tiles);
    // Drops what is kept: the tiles come from somewhere else.
    void reset() { pictures_.clear(); }

private:
    const CGImage* pictureOf(const NSMapTiles& tiles, const NSMapTile& tile);

    // Of the folder; null for a tile without a picture.
    std::map<NSMapTile, std::shared_ptr<const CGImage>> pictures_;
};

}  // namespace orvane::platform
