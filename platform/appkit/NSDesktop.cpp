#include "platform/appkit/NSDesktop.h"

#include "platform/appkit/NSScriptedDesktop.h"

namespace orvane::platform {

namespace {

NSDesktop* chosen = nullptr;
std::function<void()> appearanceHandler;

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

void NSDesktop::setAppearanceHandler(std::function<void()> handler) {
    appearanceHandler = std::move(handler);
}

void NSDesktop::appearanceDidChange() const {
    if (this == &current() && appearanceHandler) {
        appearanceHandler();
    }
}

}  // namespace orvane::platform
