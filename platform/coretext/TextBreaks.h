#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coretext/CFRange.h"

namespace orvane::platform {

// Where a text can be divided: between characters as a reader counts them (grapheme clusters, for
// example a letter with its accents or an emoji of several code points) and at words. Positions are
// bytes of the text.
class ORVANE_EXPORT TextBreaks {
public:
    // `text` must be valid UTF-8. It is not kept.
    explicit TextBreaks(std::string_view text);

    // The position of the next or the previous break of a kind; the end or the beginning of the
    // text if there is none.
    std::size_t nextCharacter(std::size_t at) const { return next(at, kCharacter); }
    std::size_t previousCharacter(std::size_t at) const { return previous(at, kCharacter); }
    std::size_t nextWordEnd(std::size_t at) const { return next(at, kWordEnd); }
    std::size_t previousWordStart(std::size_t at) const { return previous(at, kWordStart); }
    // What Backspace removes: in some scripts a part of a character only.
    std::size_t backspaceFrom(std::size_t at) const;
    // The position itself if it is between characters, otherwise the beginning of its character.
    // Positions beyond the text become its end.
    std::size_t atOrBefore(std::size_t at) const;
    // The word at a position, or the characters between two words.
    CFRange wordAt(std::size_t at) const;

    bool isWordStart(std::size_t at) const { return (flags_[at] & kWordStart) != 0; }
    bool isWordEnd(std::size_t at) const { return (flags_[at] & kWordEnd) != 0; }

    std::size_t length() const { return flags_.size() - 1; }
    // The number of characters.
    std::size_t characterCount() const;

private:
    static constexpr std::uint8_t kCharacter = 1;
    static constexpr std::uint8_t kWordStart = 2;
    static constexpr std::uint8_t kWordEnd = 4;
    static constexpr std::uint8_t kCodePoint = 8;
    static constexpr std::uint8_t kBackspaceByCodePoint = 16;

    std::size_t next(std::size_t at, std::uint8_t flag) const;
    std::size_t previous(std::size_t at, std::uint8_t flag) const;

    std::vector<std::uint8_t> flags_;  // for each byte and the end
};

}  // namespace orvane::platform
