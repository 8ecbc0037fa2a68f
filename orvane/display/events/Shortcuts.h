#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"

namespace orvane::display::events {

struct KeyEvent;

// A combination of keys and what it does. It works for as long as the application holds it; see
// Display::addShortcut.
class ORVANE_EXPORT Shortcut {
public:
    // Reads a combination such as "Ctrl+Shift+Z", "Alt+Left" or "F5": names of modifiers (Ctrl,
    // Shift, Alt, Super) and of one key (KeyEvent::key), joined by "+"; upper and lower case are
    // the same. Returns null, and logs one line, if it cannot be read or there is no action.
    static std::shared_ptr<Shortcut> create(const std::string& keys, std::function<void()> action);

    // Calls the action if the key is this combination, and returns whether it is.
    bool handle(const KeyEvent& event) const;

private:
    Shortcut(std::string key, unsigned modifiers, std::function<void()> action);

    std::string key_;  // in lower case
    unsigned modifiers_;
    std::function<void()> action_;
};

// The shortcuts of a display, held weakly. Main thread.
class Shortcuts {
public:
    // `shortcut` must not be null.
    void add(const std::shared_ptr<Shortcut>& shortcut);
    // Calls the action of the combination that was added last, if there is one. Returns whether
    // there is.
    bool handle(const KeyEvent& event);

private:
    std::vector<std::weak_ptr<Shortcut>> shortcuts_;
};

}  // namespace orvane::display::events
