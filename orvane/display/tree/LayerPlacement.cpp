#include "orvane/display/tree/LayerPlacement.h"

#include <algorithm>
#include <utility>

#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/DisplayLayer.h"

namespace orvane::display {

namespace {

// Stores the layers, in order, before `place`, or at the end when that is null or not a sublayer.
void storeLayers(DisplayLayer& into, const LayerList& layers,
                 const std::shared_ptr<DisplayLayer>& place) {
    for (const std::shared_ptr<DisplayLayer>& layer : layers) {
        into.store(into.find(place), layer);
    }
}

std::shared_ptr<DisplayObject> firstObjectOf(const DisplayLayer& layer) {
    for (const std::weak_ptr<DisplayObject>& entry : layer.getObjects()) {
        if (std::shared_ptr<DisplayObject> object = entry.lock()) {
            return object;
        }
    }
    return nullptr;
}

}  // namespace

// ---- queries ----

LayerList LayerPlacement::layersOf(const ContainerObject& container) {
    LayerList result;
    if (hasLayers(container)) {
        appendLayers(container, container.getAscendingLayer(), result);
    }
    // A sublayer that several children share is listed once.
    result.erase(std::unique(result.begin(), result.end()), result.end());
    return result;
}

bool LayerPlacement::hasLayers(const ContainerObject& container) {
    return container.layeredChildren_ != 0;
}

std::size_t LayerPlacement::firstLayeredChild(const ContainerObject& container) {
    return container.firstLayeredChild();
}

void LayerPlacement::appendLayers(const ContainerObject& container, const Layer& ascending,
                                  LayerList& result) {
    const auto& children = container.getChildren();
    for (std::size_t i = container.firstLayeredChild(); i < children.size(); ++i) {
        const DisplayObject& child = *children[i];
        if (const Layer layer = child.getLayer()) {
            if (Layer branch = branchUnder(ascending, layer)) {
                result.push_back(std::move(branch));
            }
        } else if (const ContainerObject* const nested = child.asContainer()) {
            appendLayers(*nested, ascending, result);
        }
    }
}

auto LayerPlacement::outermostLayer(const ContainerObject& container, const Layer& ascending,
                                    SearchDirection direction) -> Layer {
    const auto& children = container.getChildren();
    const std::size_t first = container.firstLayeredChild();
    for (std::size_t n = 0; n < children.size() - first; ++n) {
        const bool isBackward = direction == SearchDirection::Backward;
        const DisplayObject& child = *children[isBackward ? children.size() - 1 - n : first + n];
        Layer branch;
        if (const Layer layer = child.getLayer()) {
            branch = branchUnder(ascending, layer);
        } else if (const ContainerObject* const nested = child.asContainer()) {
            branch = outermostLayer(*nested, ascending, direction);
        }
        if (branch) {
            return branch;
        }
    }
    return nullptr;
}

// The layer that represents `layer` under `ascending`: itself, or the wrapper around it. Null when
// it is under a deeper layer and follows that one.
auto LayerPlacement::branchUnder(const Layer& ascending, Layer layer) -> Layer {
    Layer superlayer = layer->getSuperlayer();
    while (superlayer && superlayer != ascending && superlayer->isFake()) {
        layer = superlayer;
        superlayer = layer->getSuperlayer();
    }
    return !superlayer || superlayer == ascending ? layer : nullptr;
}

// What one sibling contributes to the search of an object whose own layer is `searchedFor` and
// which draws on `drawnOn`: nothing when the search goes on, otherwise its answer, which may be
// null. The sibling's layer is compared with the object's own layer as stored, not with the one it
// draws on.
std::optional<LayerPlacement::Layer> LayerPlacement::answerAt(const DisplayObject& sibling,
                                                              const Layer& searchedFor,
                                                              const Layer& drawnOn,
                                                              SearchDirection direction) {
    const Layer siblingLayer = sibling.getLayer();
    if (siblingLayer != searchedFor) {
        return siblingLayer ? siblingLayer->findChildOf(drawnOn) : nullptr;
    }
    const ContainerObject* const container = sibling.asContainer();
    Layer answer = container != nullptr ? outermostLayer(*container, drawnOn, direction) : nullptr;
    return answer ? std::optional(std::move(answer)) : std::nullopt;
}

LayerPlacement::Layer LayerPlacement::nearestSublayer(const DisplayObject& object,
                                                      SearchDirection direction, bool ascend) {
    const Layer own = object.getLayer();
    const Layer drawnOn = own ? own : object.getAscendingLayer();
    const DisplayObject* current = &object;
    std::shared_ptr<ContainerObject> parent = object.getParent();
    if (!drawnOn || !parent) {
        return nullptr;
    }
    // Requested again only where it changes: each request climbs the tree.
    Layer ofParent = own ? parent->getAscendingLayer() : drawnOn;
    while (true) {
        const auto& siblings = parent->getChildren();
        // For an object without a layer, siblings without layers have no answer.
        const auto first = static_cast<std::ptrdiff_t>(own ? 0 : parent->firstLayeredChild());
        const auto end = static_cast<std::ptrdiff_t>(siblings.size());
        const bool isBackward = direction == SearchDirection::Backward;
        const auto index = static_cast<std::ptrdiff_t>(current->getIndex());
        for (std::ptrdiff_t i = isBackward ? index - 1 : std::max(index + 1, first);
             i >= first && i < end; i += isBackward ? -1 : 1) {
            const DisplayObject& sibling = *siblings[static_cast<std::size_t>(i)];
            if (std::optional<Layer> answer = answerAt(sibling, own, drawnOn, direction)) {
                return *std::move(answer);
            }
        }
        // The search never leaves the layer that the object draws on.
        const std::shared_ptr<ContainerObject> grandparent = parent->getParent();
        if (!ascend || !grandparent) {
            return nullptr;
        }
        if (parent->getLayer()) {
            ofParent = grandparent->getAscendingLayer();
        }
        if (ofParent != drawnOn) {
            return nullptr;
        }
        current = parent.get();
        parent = grandparent;
    }
}

auto LayerPlacement::NearestBelow::of(const DisplayObject& child) const -> const Layer& {
    return child.getLayer() ? forListed_ : forGuest_;
}

void LayerPlacement::NearestBelow::pass(const DisplayObject& child) {
    constexpr auto kBackward = SearchDirection::Backward;
    if (std::optional<Layer> answer = answerAt(child, nullptr, layer_, kBackward)) {
        forGuest_ = *std::move(answer);
    }
    if (std::optional<Layer> answer = answerAt(child, layer_, layer_, kBackward)) {
        forListed_ = *std::move(answer);
    }
    if (const Layer childLayer = child.getLayer()) {
        if (Layer branch = branchUnder(layer_, childLayer)) {
            last_ = std::move(branch);
        }
    }
}

void LayerPlacement::NearestBelow::passGuest(const Layer& lastOfSubtree) {
    forListed_ = nullptr;  // a guest is on another layer than a listed child: on none of its own
    if (lastOfSubtree) {
        forGuest_ = last_ = lastOfSubtree;
    }
}

std::vector<ContainerObject*> LayerPlacement::clipContainersOf(const DisplayLayer& layer) {
    const Layer superlayer = layer.getSuperlayer();
    const DisplayLayer& content =
        layer.isFake() && !layer.getSublayers().empty() ? *layer.getSublayers().front() : layer;
    const std::shared_ptr<DisplayObject> object = firstObjectOf(content);
    std::vector<ContainerObject*> result;
    if (!superlayer || !object) {
        return result;
    }
    if (superlayer->isFake()) {
        if (ContainerObject* const own = object->asContainer(); own && own->clipsChildren()) {
            result.push_back(own);
        }
        return result;
    }
    return clipsOnTheWay(*object, *superlayer, commonContainer(content), true);
}

std::vector<ContainerObject*> LayerPlacement::clipContainersAround(const DisplayObject& object,
                                                                   const DisplayLayer& layer,
                                                                   const ContainerObject* common) {
    const Layer superlayer = layer.getSuperlayer();
    return superlayer ? clipsOnTheWay(object, *superlayer, common, false)
                      : std::vector<ContainerObject*>();
}

// The clip containers around an object, up to the container that `superlayer` lists: those inside
// `common`, or that one and those around it.
std::vector<ContainerObject*> LayerPlacement::clipsOnTheWay(const DisplayObject& object,
                                                            DisplayLayer& superlayer,
                                                            const ContainerObject* common,
                                                            bool isAroundCommon) {
    std::vector<ContainerObject*> result;
    bool reached = false;
    for (ContainerObject* node = object.parentOrNull(); node != nullptr;
         node = node->parentOrNull()) {
        reached = reached || node == common;
        // The view of a scroll container clips, in coordinates that the offset does not move.
        const bool clips = node->clipsChildren() && node->getScrollOffset() == nullptr;
        if (clips && reached == isAroundCommon) {
            result.push_back(node);
        }
        const Layer listed = node->layered_ ? node->getLayer() : nullptr;
        if (listed && (listed.get() == &superlayer || superlayer.findChildOf(listed))) {
            break;
        }
    }
    return result;
}

const ContainerObject* LayerPlacement::commonContainer(const DisplayLayer& layer) {
    const ContainerObject* common = nullptr;
    bool isFirst = true;
    for (const std::weak_ptr<DisplayObject>& entry : layer.getObjects()) {
        const std::shared_ptr<DisplayObject> object = entry.lock();
        if (!object) {
            continue;
        }
        const ContainerObject* const parent = object->parentOrNull();
        if (isFirst) {
            common = parent;
            isFirst = false;
        }
        while (common != nullptr && common != parent && !isAround(*common, parent)) {
            common = common->parentOrNull();
        }
    }
    return common;
}

bool LayerPlacement::isAround(const ContainerObject& container, const ContainerObject* node) {
    while (node != nullptr && node != &container) {
        node = node->parentOrNull();
    }
    return node != nullptr;
}

// ---- changes ----

void LayerPlacement::link(const std::shared_ptr<DisplayObject>& element,
                          const ContainerObject& parent, const Layer& ascending) {
    const std::shared_ptr<DisplayObject> next = element->next();
    const std::shared_ptr<DisplayObject> prev = element->prev();
    const Layer elementLayer = element->getLayer();
    const Layer nextLayer = next ? next->getLayer() : nullptr;
    const Layer prevLayer = prev ? prev->getLayer() : nullptr;

    if (nextLayer && nextLayer == prevLayer) {
        if (elementLayer) {
            const Layer nearest = next->findNearestSublayer(SearchDirection::Forward, true);
            storeLayers(*nextLayer, {elementLayer}, nearest);
        } else {
            nextLayer->addObject(element);
        }
        return;
    }

    if (nextLayer && prevLayer) {
        const Layer common = DisplayLayer::findCommonParent(nextLayer, prevLayer);
        if (ascending && ascending == common) {
            storeLayers(*ascending, element->getDescendingLayers(),
                        nextLayer->findChildOf(ascending));
            if (elementLayer) {
                ascending->onAddObjectIntoRenderingTree(element);
            }
        } else if (common && !elementLayer) {
            common->addObject(element);
        } else if (common) {
            storeLayers(*common, {elementLayer}, nextLayer->findChildOf(common));
        }
        return;
    }

    if (!ascending) {
        return;
    }
    if (const LayerList layers = element->getDescendingLayers(); !layers.empty()) {
        Layer place;
        if (nextLayer) {
            place = nextLayer->findChildOf(ascending);
        } else if (prevLayer) {
            const Layer below = prevLayer->findChildOf(ascending);
            place = below ? below->next() : nullptr;
        } else {
            const DisplayObject& start = next ? *next : static_cast<const DisplayObject&>(parent);
            place = start.findNearestSublayer(SearchDirection::Forward, true);
        }
        storeLayers(*ascending, layers, place);
    }
    if (!elementLayer) {
        ascending->onAddObjectIntoRenderingTree(element);
    }
}

void LayerPlacement::link(const std::shared_ptr<DisplayObject>& object, DisplayLayer& layer) {
    const LayerList layers = object->getDescendingLayers();
    if (layers.empty()) {
        return;
    }
    const Layer self = commons::sharedFrom(layer);
    Layer place;
    for (std::shared_ptr<DisplayObject> sibling = object->next(); sibling;
         sibling = sibling->next()) {
        const Layer siblingLayer = sibling->getAscendingLayer();
        if (siblingLayer && siblingLayer != self) {
            place = siblingLayer->findChildOf(self);
            break;
        }
    }
    storeLayers(layer, layers, place);
}

void LayerPlacement::unlink(const std::shared_ptr<DisplayObject>& element, const Layer& ascending) {
    if (const Layer elementLayer = element->getLayer()) {
        // An owner keeps its layer and stays on it, ready to be stored again.
        if (element->ownsLayer()) {
            elementLayer->removeFromParent();
        } else {
            elementLayer->removeObject(element);
        }
    } else if (ascending) {
        unlink(element->getDescendingLayers(), *ascending);
        ascending->onRemoveObjectFromRenderingTree(element);
    }
}

void LayerPlacement::indicesChanged(const ContainerObject& container, std::uint64_t first) {
    const auto& children = container.getChildren();
    for (std::size_t i = std::max<std::size_t>(first, container.firstLayeredChild());
         i < children.size(); ++i) {
        if (children[i]->layered_) {
            if (const Layer layer = children[i]->getLayer()) {
                layer->objectsSorted_ = false;
            }
        }
    }
}

void LayerPlacement::unlink(const LayerList& layers, DisplayLayer& from) {
    for (const Layer& layer : layers) {
        from.erase(from.find(layer));
    }
}

}  // namespace orvane::display
