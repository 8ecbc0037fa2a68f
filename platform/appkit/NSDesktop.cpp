#include "platform/appkit/NSDesktop.h"

#include <map>

#include "platform/appkit/NSScriptedDesktop.h"

namespace orvane::platform {

namespace {

NSDesktop* chosen = nullptr;
std::map<const void*, std::function<void()>> appearanceHandlers;

}  // namespace

NSDesktop::~NSDesktop() {
    if (chosen == this) {
        chosen = nullptr;
    }
}

NSDesktop& NSDesktop::current() {
    static NSScriptedDesktop inMemory;
    return chosen != nullptr ? *chosen : inMemory;
}

void NSDesktop::setCurrent(NSDesktop* desktop) {
    chosen = desktop;
}

bool NSDesktop::hasCurrent() {
    return chosen != nullptr;
}

void NSDesktop::setAppearanceHandler(const void* owner, std::function<void()> handler) {
    if (handler) {
        appearanceHandlers[owner] = std::move(handler);
    } else {
        appearanceHandlers.erase(owner);
    }
}

void NSDesktop::appearanceDidChange() const {
    if (this != &current()) {
        return;
    }
    const auto handlers = appearanceHandlers;  // one may remove others
    for (const auto& [owner, handler] : handlers) {
        if (appearanceHandlers.contains(owner)) {
            handler();
        }
    }
}

}  // namespace orvane::platform
