#include "platform/coretext/TextBreaks.h"

#include <pango/pango.h>

#include <algorithm>
#include <utility>

#include "platform/coretext/FontMap.h"

namespace orvane::platform {

TextBreaks::TextBreaks(std::string_view text) : flags_(text.size() + 1) {
    const auto size = static_cast<int>(text.size());
    const auto count = static_cast<std::size_t>(g_utf8_strlen(text.data(), size));
    std::vector<PangoLogAttr> attributes(count + 1);
    if (size > 0) {
        FontMap::Locked map;
        pango_get_log_attrs(text.data(), size, -1, pango_language_get_default(), attributes.data(),
                            static_cast<int>(attributes.size()));
    }
    std::size_t byte = 0;
    for (const PangoLogAttr& each : attributes) {
        const bool isEnd = byte >= text.size();
        const std::pair<bool, std::uint8_t> flags[] = {
            {true, kCodePoint},
            {each.is_cursor_position != 0 || byte == 0 || isEnd, kCharacter},
            {each.is_word_start != 0, kWordStart},
            {each.is_word_end != 0, kWordEnd},
            {each.backspace_deletes_character != 0, kBackspaceByCodePoint}};
        for (const auto& [isSet, flag] : flags) {
            flags_[std::min(byte, text.size())] |= isSet ? flag : std::uint8_t{0};
        }
        if (!isEnd) {
            byte = static_cast<std::size_t>(g_utf8_next_char(text.data() + byte) - text.data());
        }
    }
}

std::size_t TextBreaks::next(std::size_t at, std::uint8_t flag) const {
    while (at < length() && (flags_[++at] & flag) == 0) {
    }
    return std::min(at, length());
}

std::size_t TextBreaks::previous(std::size_t at, std::uint8_t flag) const {
    at = std::min(at, length());
    while (at > 0 && (flags_[--at] & flag) == 0) {
    }
    return at;
}

std::size_t TextBreaks::backspaceFrom(std::size_t at) const {
    const bool isByCodePoint = (flags_[std::min(at, length())] & kBackspaceByCodePoint) != 0;
    return previous(at, isByCodePoint ? kCodePoint : kCharacter);
}

std::size_t TextBreaks::atOrBefore(std::size_t at) const {
    at = std::min(at, length());
    return (flags_[at] & kCharacter) != 0 ? at : previous(at, kCharacter);
}

CFRange TextBreaks::wordAt(std::size_t at) const {
    at = std::min(at, length());
    // A word if the last break at or before the position begins one, otherwise what is between.
    constexpr std::uint8_t either = kWordStart | kWordEnd;
    const std::size_t begin =
        (flags_[at] & either) != 0 && at < length() ? at : previous(at, either);
    return {begin, next(begin, either) - begin};
}

std::size_t TextBreaks::characterCount() const {
    return static_cast<std::size_t>(std::ranges::count_if(
        flags_.begin(), flags_.end() - 1, [](std::uint8_t flags) { return flags & kCharacter; }));
}

}  // namespace orvane::platform
