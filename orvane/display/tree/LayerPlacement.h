#pragma once

#include <memory>
#include <optional>

#include "orvane/display/tree/DisplayObject.h"

namespace orvane::display {

// The mapping of the tree of objects onto the tree of layers. This is the only place that decides
// which layers an object brings with it and where they go; ContainerObject, DisplayLayer,
// DisplayObject and the native layers forward to it.
//
// Two rules follow from the order of drawing, which is the order of the siblings:
//
// - A guest, an object without a layer of its own, draws on the layer of its neighbors when they
//   agree, otherwise on its container's ascending layer.
// - The layers of a stored subtree become sublayers of the container's ascending layer, at the
//   place that the siblings of the subtree's root dictate.
//
// `link` chooses by the layers of the two neighbors. "asc" is the container's ascending layer, and
// "the list" is what the element's getDescendingLayers() returns; without an "asc" the rows that
// need it do nothing.
//
// | next's layer | previous layer | what happens                                                  |
// |--------------|----------------|---------------------------------------------------------------|
// | set          | the same       | A guest is added to that layer. An element with a layer: its  |
// |              |                | layer is stored in that layer, before the nearest sublayer    |
// |              |                | forward of the next sibling.                                  |
// | set          | another        | With asc as the deepest common superlayer: the list goes into |
// |              |                | asc before next's branch, and an element *with* a layer is    |
// |              |                | announced to asc. With another common superlayer: a guest is  |
// |              |                | added to it, a layer is stored in it before next's branch.    |
// | set          | none           | The list goes into asc before next's branch.                  |
// | none         | set            | The list goes into asc after the previous sibling's branch.   |
// | none         | none           | The list goes into asc before the nearest sublayer forward of |
// |              |                | the next sibling, or of the container when there is none.     |
//
// The last three rows then announce a guest to asc. The second row announces only an element with
// a layer, the reverse of the others: the split between painted and native content relies on it.
//
// All functions run on the application's thread.
class LayerPlacement {
public:
    using Layer = std::shared_ptr<DisplayLayer>;

    // The layers that show the children of `container`, in drawing order: those whose superlayer is
    // the layer that the container draws on, and those without a superlayer. A layer inside a
    // wrapper (DisplayLayer::isFake) is represented by the wrapper: otherwise the wrapper would
    // stay in the layer tree when the container leaves.
    static LayerList layersOf(const ContainerObject& container);

    // False when nothing in `container` has a layer of its own. Constant time.
    static bool hasLayers(const ContainerObject& container);
    // The index of the first child that has a layer in its subtree, itself included; the number of
    // children if there is none. Constant time on average.
    static std::size_t firstLayeredChild(const ContainerObject& container);

    // See DisplayObject::findNearestSublayer.
    static Layer nearestSublayer(const DisplayObject& object, SearchDirection direction,
                                 bool ascend);

    // The clip containers around all objects of a sublayer, innermost first, up to the container
    // that its superlayer lists: what is around that one clips the superlayer. Borrowed.
    //
    // A wrapper (DisplayLayer::isFake) represents the clip container inside it: the containers
    // around that one clip the wrapper, and the container itself clips the wrapped layer, which
    // can be moved inside the wrapper.
    static std::vector<ContainerObject*> clipContainersOf(const DisplayLayer& layer);

    // The innermost container around all objects of a layer; null if there is none. Borrowed.
    static const ContainerObject* commonContainer(const DisplayLayer& layer);

    // The clip containers around `object`, which `layer` lists, that are inside `common` and in the
    // container that the superlayer lists, innermost first. Borrowed.
    static std::vector<ContainerObject*> clipContainersAround(const DisplayObject& object,
                                                              const DisplayLayer& layer,
                                                              const ContainerObject* common);

    // Links the layers of `element`, which has just been stored among the children of `parent`.
    static void link(const std::shared_ptr<DisplayObject>& element, const ContainerObject& parent,
                     const Layer& ascending);
    // Links the layers of the subtree of `object`, which `layer` is about to list: before the layer
    // of the first later sibling that draws on another layer.
    static void link(const std::shared_ptr<DisplayObject>& object, DisplayLayer& layer);

    // Takes `element` off its layer before it leaves its parent. An owner stays on its layer, which
    // leaves its superlayer; a guest's descending layers leave `ascending`.
    static void unlink(const std::shared_ptr<DisplayObject>& element, const Layer& ascending);
    // The children of `container` from index `first` on have new indices, by which their layers
    // sort them.
    static void indicesChanged(const ContainerObject& container, std::uint64_t first);
    // Erases those of `layers` that are sublayers of `from`.
    static void unlink(const LayerList& layers, DisplayLayer& from);

    // What nearestSublayer(Backward, false) answers for the next child of a container, kept current
    // while the children are walked in order: a search for each child would walk all the children
    // before it. The container draws on `layer`, and so do the children that are queried.
    class NearestBelow {
    public:
        explicit NearestBelow(Layer layer) : layer_(std::move(layer)) {}

        const Layer& of(const DisplayObject& child) const;
        // The walk continues after `child`.
        void pass(const DisplayObject& child);
        // The walk continues after a container without a layer of its own, whose last layer the
        // caller knows: what last() returned after the walk over its children.
        void passGuest(const Layer& lastOfSubtree);
        // The last of layersOf the children passed so far, or null.
        const Layer& last() const { return last_; }

    private:
        Layer layer_;
        Layer forGuest_;   // the answer for a child without a layer of its own
        Layer forListed_;  // the answer for a child that layer_ lists
        Layer last_;
    };

private:
    static void appendLayers(const ContainerObject& container, const Layer& ascending,
                             LayerList& result);
    // The first of layersOf(container) or, for Backward, the last one; null for none. The container
    // draws on `ascending`.
    static Layer outermostLayer(const ContainerObject& container, const Layer& ascending,
                                SearchDirection direction);
    static std::vector<ContainerObject*> clipsOnTheWay(const DisplayObject& object,
                                                       DisplayLayer& superlayer,
                                                       const ContainerObject* common,
                                                       bool isAroundCommon);
    static bool isAround(const ContainerObject& container, const ContainerObject* node);
    static Layer branchUnder(const Layer& ascending, Layer layer);
    static std::optional<Layer> answerAt(const DisplayObject& sibling, const Layer& searchedFor,
                                         const Layer& drawnOn, SearchDirection direction);
};

}  // namespace orvane::display
