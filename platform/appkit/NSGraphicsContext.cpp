#include "platform/appkit/NSGraphicsContext.h"

namespace orvane::platform {

namespace {

CGContext* current = nullptr;

}  // namespace

CGContext* NSGraphicsContext::currentGraphicsPort() {
    return current;
}

NSGraphicsContext::Scope::Scope(CGContext& canvas) : previous_(current) {
    current = &canvas;
}

NSGraphicsContext::Scope::~Scope() {
    current = previous_;
}

}  // namespace orvane::platform
