#include "orvane/display/events/Shortcuts.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <sstream>
#include <utility>

#include "orvane/commons/guardedCall.h"
#include "orvane/commons/reportMisuse.h"
#include "orvane/display/events/KeyEvent.h"

namespace orvane::display::events {

namespace {

// Names of keys are ASCII.
std::string lowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return text;
}

}  // namespace

std::shared_ptr<Shortcut> Shortcut::create(const std::string& keys, std::function<void()> action) {
    static const std::map<std::string, unsigned> modifierNames{
        {"shift", kShift}, {"ctrl", kControl}, {"alt", kAlt}, {"super", kSuper}};
    std::istringstream stream(lowerCase(keys));
    std::string key;
    unsigned modifiers = 0;
    bool readable = action != nullptr;
    for (std::string name; std::getline(stream, name, '+');) {
        if (const auto modifier = modifierNames.find(name); modifier != modifierNames.end()) {
            modifiers |= modifier->second;
        } else {
            readable = readable && key.empty();
            key = name;
        }
    }
    if (!readable || key.empty() || keys.ends_with('+')) {
        commons::reportMisuse(("the shortcut '" + keys + "'").c_str(),
                              "refused: it has to be modifiers and one key, with an action");
        return nullptr;
    }
    return std::shared_ptr<Shortcut>(new Shortcut(std::move(key), modifiers, std::move(action)));
}

Shortcut::Shortcut(std::string key, unsigned modifiers, std::function<void()> action)
    : key_(std::move(key)), modifiers_(modifiers), action_(std::move(action)) {}

bool Shortcut::handle(const KeyEvent& event) const {
    if (event.phase == KeyPhase::Up || event.modifiers != modifiers_ ||
        lowerCase(event.key) != key_) {
        return false;
    }
    commons::guardedCall("exception of a shortcut", action_);
    return true;
}

void Shortcuts::add(const std::shared_ptr<Shortcut>& shortcut) {
    std::erase_if(shortcuts_, [](const auto& entry) { return entry.expired(); });
    shortcuts_.push_back(shortcut);
}

bool Shortcuts::handle(const KeyEvent& event) {
    // An action may add shortcuts.
    for (std::size_t i = shortcuts_.size(); i-- > 0;) {
        const std::shared_ptr<Shortcut> shortcut = shortcuts_[i].lock();
        if (shortcut && shortcut->handle(event)) {
            return true;
        }
    }
    return false;
}

}  // namespace orvane::display::events
