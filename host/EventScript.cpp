#include "host/EventScript.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <span>
#include <sstream>

#include "host/parseNumber.h"
#include "platform/appkit/NSDrop.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSScriptedDesktop.h"
#include "platform/appkit/NSWindow.h"

namespace orvane::host {

namespace {

using platform::NSAppearance;
using platform::NSDesktop;
using platform::NSDrop;
using platform::NSDropPhase;
using platform::NSEvent;
using platform::NSEventType;
using platform::NSScriptedDesktop;

// What a line contains: the steps, or the form that was expected.
using Steps = std::vector<EventScript::Step>;
using Parsed = std::variant<Steps, const char*>;
using Words = std::span<const std::string>;

EventScript::Step step(const NSEvent& event) {
    return {event.timestamp, [event](platform::NSWindow& window, double timestamp) {
                NSEvent sent = event;
                sent.timestamp = timestamp;
                window.sendEvent(sent);
            }};
}

// The parsers of lines get the time of the events and the words after the command.

Parsed parsePointer(NSEventType type, double seconds, Words arguments) {
    const auto x = arguments.size() == 2 ? parseNumber(arguments[0]) : std::nullopt;
    const auto y = arguments.size() == 2 ? parseNumber(arguments[1]) : std::nullopt;
    if (!x || !y) {
        return "SECONDS down|move|up X Y";
    }
    return Steps{step({type, {*x, *y}, seconds})};
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
    return Steps{step(event)};
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
    return Steps{step(event), step(release)};
}

// The rest of the line after a word that is in it, and one space.
std::string restAfter(const std::string& line, const std::string& word) {
    const auto begin = line.find(word) + word.size() + 1;
    return begin < line.size() ? line.substr(begin) : std::string();
}

Parsed parseText(double seconds, const std::string& line) {
    NSEvent event;
    event.type = NSEventType::KeyDown;
    event.timestamp = seconds;
    event.characters = restAfter(line, "text");
    if (event.characters.empty()) {
        return "SECONDS text STRING";
    }
    return Steps{step(event)};
}

Parsed parseDrop(double seconds, Words arguments, const std::string& line) {
    const auto x = arguments.size() >= 4 ? parseNumber(arguments[0]) : std::nullopt;
    const auto y = arguments.size() >= 4 ? parseNumber(arguments[1]) : std::nullopt;
    if (!x || !y || (arguments[2] != "file" && arguments[2] != "text")) {
        return "SECONDS drop X Y file|text STRING";
    }
    NSDrop drop{NSDropPhase::Over, {*x, *y}};
    const std::string rest = restAfter(line, " " + arguments[2]);
    if (arguments[2] == "file") {
        drop.files.push_back(std::filesystem::absolute(rest));
    } else {
        drop.text = rest;
    }
    return Steps{{seconds, [drop](platform::NSWindow& window, double) {
                      window.sendDrop(drop);
                      NSDrop released = drop;
                      released.phase = NSDropPhase::Performed;
                      window.sendDrop(released);
                  }}};
}

// The lines that stand for the desktop.

using DesktopStep = std::function<void(NSScriptedDesktop& desktop)>;

Steps desktopStep(double seconds, const DesktopStep& perform) {
    return {{seconds, [perform](platform::NSWindow&, double) {
                 if (auto* const desktop =
                         dynamic_cast<NSScriptedDesktop*>(&NSDesktop::current())) {
                     perform(*desktop);
                 }
             }}};
}

std::optional<std::uint32_t> parseColor(const std::string& text) {
    std::uint32_t color = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, color, 16);
    const bool isColor = text.size() == 6 && rest == end && error == std::errc();
    return isColor ? std::optional(0xFF000000U | color) : std::nullopt;
}

Parsed parseAppearance(double seconds, Words arguments) {
    std::function<void(NSAppearance&)> change;
    const std::string name = arguments.empty() ? "" : arguments[0];
    const std::string value = arguments.size() == 2 ? arguments[1] : "";
    if ((name == "dark" || name == "light") && arguments.size() == 1) {
        change = [isDark = name == "dark"](NSAppearance& set) { set.isDark = isDark; };
    } else if (name == "reduced-motion" && (value == "on" || value == "off")) {
        change = [isOn = value == "on"](NSAppearance& set) { set.reducesMotion = isOn; };
    } else if (const auto scale = parseNumber(value);
               name == "text-scale" && scale && *scale >= 0.25 && *scale <= 8) {
        change = [scale = *scale](NSAppearance& set) { set.textScale = scale; };
    } else if (const auto color = parseColor(value); name == "accent" && color) {
        change = [color = *color](NSAppearance& set) { set.accentColor = color; };
    } else {
        return "SECONDS appearance dark|light|accent RRGGBB|text-scale S|reduced-motion on|off";
    }
    return desktopStep(seconds, [change](NSScriptedDesktop& desktop) {
        NSAppearance appearance = desktop.appearance();
        change(appearance);
        desktop.setAppearance(appearance);
    });
}

constexpr const char* kDesktopCommands[] = {"answer", "appearance", "clipboard", "notification"};

bool isDesktopCommand(const std::string& command) {
    return std::ranges::find(kDesktopCommands, command) != std::end(kDesktopCommands);
}

Parsed parseDesktop(const std::string& command, double seconds, Words arguments,
                    const std::string& line) {
    const std::string rest = restAfter(line, command);
    if (command == "appearance") {
        return parseAppearance(seconds, arguments);
    }
    if (command == "answer") {
        std::vector<std::string> paths;
        if (!rest.empty()) {
            paths.push_back(std::filesystem::absolute(rest));
        }
        return desktopStep(seconds,
                           [paths](NSScriptedDesktop& desktop) { desktop.answerPanel(paths); });
    }
    if (command == "clipboard" && !rest.empty()) {
        return desktopStep(seconds, [rest](NSScriptedDesktop& desktop) { desktop.copyText(rest); });
    }
    if (command == "notification" && arguments.empty()) {
        return desktopStep(seconds,
                           [](NSScriptedDesktop& desktop) { desktop.pressNotification(); });
    }
    return command == "clipboard" ? "SECONDS clipboard STRING" : "SECONDS notification";
}

constexpr const char* kLine =
    "SECONDS down|move|up|scroll|key|text|drop|close|answer|appearance|clipboard|notification ...";

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
        return Steps{};
    }
    const auto seconds = parseNumber(words[0]);
    if (!seconds || *seconds < 0 || words.size() < 2) {
        return kLine;
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
    if (command == "drop") {
        return parseDrop(*seconds, arguments, line);
    }
    if (command == "close" && arguments.empty()) {
        return Steps{{*seconds, [](platform::NSWindow& window, double) { window.performClose(); }}};
    }
    if (isDesktopCommand(command)) {
        return parseDesktop(command, *seconds, arguments, line);
    }
    return kLine;
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
        const auto& steps = std::get<Steps>(parsed);
        script.steps_.insert(script.steps_.end(), steps.begin(), steps.end());
        const std::vector<std::string> words = splitWords(line);
        script.replacesDesktop_ =
            script.replacesDesktop_ || (words.size() > 1 && isDesktopCommand(words[1]));
    }
    // Reading to the end sets eof; a file that cannot be opened, or is a directory, does not.
    if (!file.eof()) {
        return Error{path + ": " + std::strerror(errno)};
    }
    std::ranges::stable_sort(script.steps_, {}, &Step::seconds);
    return script;
}

}  // namespace orvane::host
