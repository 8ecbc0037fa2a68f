#include "orvane/inspector/pathOf.h"

#include "orvane/display/Display.h"
#include "orvane/display/tree/ContainerObject.h"
#include "orvane/embedding/kindOf.h"

namespace orvane::inspector {

using display::DisplayObject;

std::string pathOf(const DisplayObject& object) {
    std::string path;
    const auto stepOf = [](const DisplayObject& step, const auto& siblings) {
        const std::string kind = embedding::kindOf(step);
        int number = 0;
        for (const auto& sibling : siblings) {
            if (sibling.get() == &step) {
                break;
            }
            number += embedding::kindOf(*sibling) == kind ? 1 : 0;
        }
        return number == 0 ? kind : kind + '[' + std::to_string(number) + ']';
    };
    const DisplayObject* step = &object;
    for (auto parent = object.getParent(); parent; parent = parent->getParent()) {
        path = '/' + stepOf(*step, parent->getChildren()) + path;
        step = parent.get();
    }
    return stepOf(*step, display::Display::instance()->getObjects()) + path;
}

}  // namespace orvane::inspector
