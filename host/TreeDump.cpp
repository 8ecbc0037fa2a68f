#include "host/TreeDump.h"

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <typeinfo>
#include <vector>

#include "orvane/commons/className.h"
#include "orvane/display/Display.h"
#include "orvane/display/native/NativeLayer.h"
#include "orvane/display/tree/DisplayLayer.h"
#include "orvane/display/tree/DisplayObject.h"
#include "orvane/embedding/childrenOf.h"
#include "orvane/embedding/labelOf.h"
#include "orvane/embedding/preOrder.h"
#include "orvane/embedding/rootLayers.h"
#include "orvane/embedding/textOf.h"
#include "platform/appkit/NSView.h"
#include "platform/quartzcore/CALayer.h"

namespace orvane::host {

namespace {

using display::Display;
using display::DisplayLayer;
using display::DisplayObject;
using LayerNumbers = std::map<const DisplayLayer*, int>;

std::ostream& operator<<(std::ostream& out, const display::geometry::Rect<double>& rect) {
    return out << rect.x << ',' << rect.y << ' ' << rect.width << 'x' << rect.height;
}

std::ostream& indent(std::ostream& out, int depth) {
    return out << std::string(2 * static_cast<std::size_t>(depth), ' ');
}

const auto sublayersOf = [](const DisplayLayer& layer) -> const auto& {
    return layer.getSublayers();
};

LayerNumbers numberLayers(const Display& display) {
    LayerNumbers numbers;
    embedding::preOrder(embedding::rootLayers(display), sublayersOf,
                        [&numbers](const DisplayLayer& layer, int) {
                            numbers.emplace(&layer, static_cast<int>(numbers.size()) + 1);
                        });
    return numbers;
}

// Prints nothing for an empty text. A line break is printed as \n, so that a line stays one.
void printQuoted(std::ostream& out, const char* name, const std::string& text) {
    if (text.empty()) {
        return;
    }
    out << name << '"';
    for (const char character : text) {
        if (character == '\n') {
            out << "\\n";
        } else if (character == '"' || character == '\\') {
            out << '\\' << character;
        } else {
            out << character;
        }
    }
    out << '"';
}

void printObject(std::ostream& out, DisplayObject& object, int depth, const LayerNumbers& numbers) {
    indent(out, depth) << object.getDescription() << " #" << object.getId() << " frame "
                       << object.getFrame() << (object.isVisible() ? " visible" : " hidden");
    const auto number = numbers.find(object.getAscendingLayer().get());
    if (number == numbers.end()) {
        out << " layer none";
    } else {
        out << " layer " << number->second;
    }
    printQuoted(out, " text ", embedding::textOf(object));
    printQuoted(out, " label ", embedding::labelOf(object));
    out << '\n';
}

void printLayer(std::ostream& out, DisplayLayer& layer, int depth, const LayerNumbers& numbers) {
    indent(out, depth) << commons::className(typeid(layer)) << ' ' << numbers.at(&layer)
                       << " frame " << layer.getLayerFrame()
                       << (layer.isHidden() ? " hidden" : " visible");
    const auto* const native = dynamic_cast<const display::native::NativeLayer*>(&layer);
    const auto view = native != nullptr ? native->getLayerHandler() : nullptr;
    if (view == nullptr) {
        out << " view none\n";
        return;
    }
    out << " view " << display::geometry::Rect<double>(view->frame()) << " z "
        << (view->layer() != nullptr ? view->layer()->zPosition() : 0) << '\n';
}

}  // namespace

void dumpTree(std::ostream& out, const Display& display) {
    const LayerNumbers numbers = numberLayers(display);
    out << "objects\n";
    embedding::preOrder(
        display.getObjects(), embedding::childrenOf,
        [&](DisplayObject& object, int depth) { printObject(out, object, depth, numbers); });
    out << "layers\n";
    embedding::preOrder(
        embedding::rootLayers(display), sublayersOf,
        [&](DisplayLayer& layer, int depth) { printLayer(out, layer, depth, numbers); });
}

}  // namespace orvane::host
