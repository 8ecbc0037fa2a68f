#pragma once

namespace orvane::platform {
class CGContext;
}

namespace orvane::display {
class ContainerObject;
class DisplayObject;
class DisplayLayer;
}  // namespace orvane::display

namespace orvane::display::native {

// Clips `canvas`, which is in screen coordinates, to the clip containers around one object of a
// layer that are inside `common`, the innermost container around all objects of that layer. The
// clips around `common` are clips of the layer's view: see clipsOfLayer.
void clipGuest(platform::CGContext& canvas, const DisplayObject& guest, const DisplayLayer& layer,
               const ContainerObject* common);

}  // namespace orvane::display::native
