#pragma once

#include "orvane/display/events/KeyEvent.h"
#include "platform/appkit/NSEvent.h"

namespace orvane::display {

// The application's form of a key event of the platform.
inline events::KeyEvent toKeyEvent(const platform::NSEvent& event) {
    static_assert(unsigned{events::kShift} == platform::kNSEventModifierShift &&
                  unsigned{events::kControl} == platform::kNSEventModifierControl &&
                  unsigned{events::kAlt} == platform::kNSEventModifierAlt &&
                  unsigned{events::kSuper} == platform::kNSEventModifierSuper);
    using events::KeyPhase;
    const KeyPhase down = event.isARepeat ? KeyPhase::Repeat : KeyPhase::Down;
    return {event.type == platform::NSEventType::KeyUp ? KeyPhase::Up : down, event.key,
            event.characters, event.modifierFlags};
}

}  // namespace orvane::display
