#include "host/EventScript.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <optional>
#include <sstream>

#include "host/parseNumber.h"

namespace orvane::host {

namespace {

using platform::NSEvent;
using platform::NSEventType;

std::optional<NSEventType> parseType(const std::string& word) {
    if (word == "down") {
        return NSEventType::LeftMouseDown;
    }
    if (word == "move") {
        return NSEventType::LeftMouseDragged;
    }
    if (word == "up") {
        return NSEventType::LeftMouseUp;
    }
    return {};
}

std::optional<NSEvent> parseEvent(const std::vector<std::string>& words) {
    if (words.size() != 4) {
        return {};
    }
    const auto seconds = parseNumber(words[0]);
    const auto type = parseType(words[1]);
    const auto x = parseNumber(words[2]);
    const auto y = parseNumber(words[3]);
    if (!seconds || *seconds < 0 || !type || !x || !y) {
        return {};
    }
    return NSEvent{*type, {*x, *y}, *seconds};
}

std::vector<std::string> splitWords(const std::string& line) {
    std::istringstream stream(line.substr(0, line.find('#')));
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

}  // namespace

std::variant<EventScript, EventScript::Error> EventScript::load(const std::string& path) {
    std::ifstream file(path);
    EventScript script;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        const auto words = splitWords(line);
        if (words.empty()) {
            continue;
        }
        const auto event = parseEvent(words);
        if (!event) {
            return Error{path + ":" + std::to_string(number) +
                         ": expected SECONDS down|move|up X Y, not '" + line + "'"};
        }
        script.events_.push_back(*event);
    }
    // Reading to the end sets eof; a file that cannot be opened, or is a directory, does not.
    if (!file.eof()) {
        return Error{path + ": " + std::strerror(errno)};
    }
    std::ranges::stable_sort(script.events_, {}, &NSEvent::timestamp);
    return script;
}

}  // namespace orvane::host
