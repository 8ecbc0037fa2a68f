#pragma once

#include "orvane/display/geometry/Rect.h"
#include "orvane/display/tree/DisplayObject.h"

namespace orvane::display {

class ContainerObject;

// The cached frames of a tree of objects. A frame is either known or reset; a reset frame is
// computed when it is next queried. Every change of this state is here, because it rests on one
// rule:
//
//   A frame is known only while all the frames that it was computed from are known.
//
// Therefore a reset, which goes from an object to its ancestors, may end at the first frame that is
// reset already. A container computes its frame from the frames of all its children, including
// hidden ones: they add nothing, but showing one must reset the container. An object that is stored
// in a container has its whole subtree reset, because its frames depend on the new ancestors'
// transformations, and then the container.
//
// The frames of layers follow: a layer's frame is reset with the frame of any object that it lists.
class FrameCache {
public:
    using Rect = geometry::Rect<double>;

    // The frame of `object`, computed when it is reset. The reference is valid until the next
    // query.
    static const Rect& get(DisplayObject& object);

    // Resets the frames of `object` and its ancestors.
    static void reset(DisplayObject& object);

    // Resets the frames of `object` and all its descendants, which have new ancestors. Their layers
    // become dirty and are to be repainted; nothing is announced and no object is marked.
    static void resetSubtree(DisplayObject& object);

    // The union of the frames of the visible children of `container`.
    static Rect unionOfChildren(ContainerObject& container);

private:
    // How far the ink of the visible children of `container` reaches beyond the union of their
    // frames. Effects in the middle of a large container do not make its layer larger.
    static DisplayObject::InkMargin marginAround(const Rect& all, const ContainerObject& container);
};

}  // namespace orvane::display
