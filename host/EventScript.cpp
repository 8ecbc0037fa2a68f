#include "host/EventScript.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <map>
#include <optional>
#include <span>
#include <sstream>

#include "host/parseNumber.h"

namespace orvane::host {

namespace {

using platform::NSEvent;
using platform::NSEventType;

// What a line contains: the events, or the form that was expected.
using Parsed = std::variant<std::vector<NSEvent>, const char*>;
using Words = std::span<const std::string>;

// The parsers of lines get the time of the events and the words after the command.

Parsed parsePointer(NSEventType type, double seconds, Words arguments) {
    const auto x = arguments.size() == 2 ? parseNumber(arguments[0]) : std::nullopt;
    const auto y = arguments.size() == 2 ? parseNumber(arguments[1]) : std::nullopt;
    if (!x || !y) {
        return "SECONDS down|move|up X Y";
    }
    return std::vector{NSEvent{type, {*x, *y}, seconds}};
}

Parsed parseScroll(double seconds, Words arguments) {
    static const std::map<std::string, platform::NSEventPhase> phases{
        {"began", platform::NSEventPhase::Began},
        {"changed", platform::NSEventPhase::Changed},
        {"ended", platform::NSEventPhase::Ended}};
    constexpr const char* kExpected = "SECONDS scroll X Y DX DY [began|changed|ended]";
    const bool hasPhase = arguments.size() == 5;
    const auto phase = hasPhase ? phases.find(arguments[4]) : phases.end();
    if ((arguments.size() != 4 && !hasPhase) || (hasPhase && phase == phases.end())) {
        return kExpected;
    }
    double numbers[4];
    for (std::size_t i = 0; i < 4; ++i) {
        const auto number = parseNumber(arguments[i]);
        if (!number) {
            return kExpected;
        }
        numbers[i] = *number;
    }
    NSEvent event{NSEventType::ScrollWheel, {numbers[0], numbers[1]}, seconds};
    event.scrollingDelta = {numbers[2], numbers[3]};
    event.hasPreciseScrollingDeltas = hasPhase;
    event.phase = hasPhase ? phase->second : platform::NSEventPhase::None;
    return std::vector{event};
}

std::optional<unsigned> parseModifiers(const std::string& text) {
    const std::map<std::string, unsigned> flags{{"shift", platform::kNSEventModifierShift},
                                                {"ctrl", platform::kNSEventModifierControl},
                                                {"alt", platform::kNSEventModifierAlt},
                                                {"super", platform::kNSEventModifierSuper}};
    unsigned modifiers = 0;
    std::istringstream stream(text);
    for (std::string name; std::getline(stream, name, '+');) {
        const auto flag = flags.find(name);
        if (flag == flags.end()) {
            return {};
        }
        modifiers |= flag->second;
    }
    return modifiers;
}

Parsed parseKey(double seconds, Words arguments) {
    const auto modifiers = arguments.size() == 2   ? parseModifiers(arguments[1])
                           : arguments.size() == 1 ? std::optional(0U)
                                                   : std::nullopt;
    if (!modifiers) {
        return "SECONDS key NAME [ctrl+shift+alt+super]";
    }
    NSEvent event;
    event.type = NSEventType::KeyDown;
    event.timestamp = seconds;
    event.modifierFlags = *modifiers;
    event.key = arguments[0];
    if ((*modifiers & ~unsigned{platform::kNSEventModifierShift}) == 0) {
        // The keys whose names say what they enter.
        if (event.key == "space") {
            event.characters = " ";
        } else if (event.key.size() == 1) {
            event.characters = event.key;
            const bool isShifted = *modifiers != 0;
            if (isShifted && event.key[0] >= 'a' && event.key[0] <= 'z') {
                event.characters[0] = static_cast<char>(event.key[0] - 'a' + 'A');
            }
        }
    }
    NSEvent release = event;
    release.type = NSEventType::KeyUp;
    return std::vector{event, release};
}

// The text is the rest of the line after the word and one space.
Parsed parseText(double seconds, const std::string& line) {
    const auto begin = line.find("text") + 5;
    if (begin >= line.size()) {
        return "SECONDS text STRING";
    }
    NSEvent event;
    event.type = NSEventType::KeyDown;
    event.timestamp = seconds;
    event.characters = line.substr(begin);
    return std::vector{event};
}

std::vector<std::string> splitWords(const std::string& line) {
    std::istringstream stream(line.substr(0, line.find('#')));
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

Parsed parseLine(const std::string& line) {
    const std::vector<std::string> words = splitWords(line);
    if (words.empty()) {
        return std::vector<NSEvent>{};
    }
    const auto seconds = parseNumber(words[0]);
    if (!seconds || *seconds < 0 || words.size() < 2) {
        return "SECONDS down|move|up|scroll|key|text ...";
    }
    const std::string& command = words[1];
    const Words arguments = Words(words).subspan(2);
    if (command == "down") {
        return parsePointer(NSEventType::LeftMouseDown, *seconds, arguments);
    }
    if (command == "move") {
        return parsePointer(NSEventType::LeftMouseDragged, *seconds, arguments);
    }
    if (command == "up") {
        return parsePointer(NSEventType::LeftMouseUp, *seconds, arguments);
    }
    if (command == "scroll") {
        return parseScroll(*seconds, arguments);
    }
    if (command == "key") {
        return parseKey(*seconds, arguments);
    }
    if (command == "text") {
        return parseText(*seconds, line);
    }
    return "SECONDS down|move|up|scroll|key|text ...";
}

}  // namespace

std::variant<EventScript, EventScript::Error> EventScript::load(const std::string& path) {
    std::ifstream file(path);
    EventScript script;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        const Parsed parsed = parseLine(line);
        if (const auto* const expected = std::get_if<const char*>(&parsed)) {
            return Error{path + ":" + std::to_string(number) + ": expected " + *expected +
                         ", not '" + line + "'"};
        }
        const auto& events = std::get<std::vector<NSEvent>>(parsed);
        script.events_.insert(script.events_.end(), events.begin(), events.end());
    }
    // Reading to the end sets eof; a file that cannot be opened, or is a directory, does not.
    if (!file.eof()) {
        return Error{path + ": " + std::strerror(errno)};
    }
    std::ranges::stable_sort(script.events_, {}, &NSEvent::timestamp);
    return script;
}

}  // namespace orvane::host
