#pragma once

#include <gdk/gdk.h>

#include <utility>

#include "platform/appkit/NSEvent.h"

namespace orvane::platform {

// The set of NSEventModifierFlags for the state of an event.
inline unsigned toModifierFlags(GdkModifierType state) {
    constexpr std::pair<GdkModifierType, unsigned> kModifiers[] = {
        {GDK_SHIFT_MASK, kNSEventModifierShift},
        {GDK_CONTROL_MASK, kNSEventModifierControl},
        {GDK_ALT_MASK, kNSEventModifierAlt},
        {GDK_SUPER_MASK, kNSEventModifierSuper}};
    unsigned flags = 0;
    for (const auto& [mask, flag] : kModifiers) {
        flags |= (state & mask) != 0 ? flag : 0;
    }
    return flags;
}

}  // namespace orvane::platform
