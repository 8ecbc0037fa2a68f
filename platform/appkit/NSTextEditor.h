#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coretext/CFRange.h"
#include "platform/coretext/TextBreaks.h"

namespace orvane::platform {

// A text that is being edited: the text, the selection, and the history for undo. Its commands do
// what those of the desktop's text widgets do. It knows no layout and no keys. Words are those of
// GtkText; GtkTextView differs where punctuation and emoji have no letters next to them: there a
// move by a word may leave the caret where it is, or take it to the end of the text.
//
// Positions are bytes of the text, which is always valid UTF-8; a position inside a character, as
// readers count them, becomes the beginning of that character. A command returns whether it has
// changed the text. Main thread only.
class ORVANE_EXPORT NSTextEditor {
public:
    // Longer texts are cut. GTK's entries take as many characters; a text of several lines is laid
    // out as a whole after each change.
    static constexpr std::size_t kMostBytesOfLine = 65535;
    static constexpr std::size_t kMostBytes = std::size_t{1} << 20;

    enum class Kind {
        Line,       // line breaks become spaces
        Multiline,  //
        Secret,     // a line that is not copied, has no words, and whose changes are not kept
    };
    enum class Unit { Character, Word, Paragraph, Document };
    enum class Direction { Backward, Forward };

    // Both ends are positions. The caret is the end that moves.
    struct Selection {
        std::size_t anchor = 0;
        std::size_t caret = 0;

        std::size_t begin() const { return anchor < caret ? anchor : caret; }
        std::size_t end() const { return anchor < caret ? caret : anchor; }
        bool isEmpty() const { return anchor == caret; }
        friend bool operator==(const Selection&, const Selection&) = default;
    };

    explicit NSTextEditor(Kind kind) : kind_(kind) {}

    Kind kind() const { return kind_; }
    // In characters, as readers count them; 0 means no limit. A longer text is cut.
    void setMaximumLength(std::size_t characters);
    std::size_t maximumLength() const { return maximumLength_; }

    const std::string& text() const { return text_; }
    // Replaces the text, as far as it is allowed, puts the caret at its end, and empties the
    // history.
    void setText(std::string_view text);
    const Selection& selection() const { return selection_; }
    void setSelection(std::size_t anchor, std::size_t caret);
    // The selected text; empty for a secret.
    std::string selectedText() const;

    // The form of a text that can be inserted: valid UTF-8, "\n" as the only line break, or a space
    // instead of it if there is one line only.
    std::string acceptable(std::string_view text) const;
    // The part of an acceptable text that can replace a part of this one: as much as fits.
    std::string fitting(const std::string& insertion, CFRange replaced) const;

    // ---- commands ----
    // Replaces the selection by as much of the text as is acceptable and fits.
    bool insert(std::string_view text);
    // Deletes the selection, or what is before or after the caret.
    bool deleteText(Unit unit, Direction direction);
    // Moves the caret; `extends` keeps the anchor. Without it, a selection collapses to its end in
    // that direction if the unit is a character, and in a single line also if it is a word.
    void move(Unit unit, Direction direction, bool extends);
    void moveTo(std::size_t position, bool extends);
    void selectAll() { setSelection(0, text_.size()); }
    // Selects the word at a position, or the whole of a secret.
    void selectWord(std::size_t position);
    void selectParagraph(std::size_t position);
    bool undo();
    bool redo();

    // The character that begins at or before a position, and the next one; within a paragraph they
    // do not depend on the rest of the text.
    std::size_t nextCharacter(std::size_t at) const;
    std::size_t atOrBefore(std::size_t at) const;
    // The paragraph that contains a position, without the line break at its end.
    CFRange paragraphAt(std::size_t at) const;

private:
    struct Step {
        std::size_t at = 0;
        std::string removed;
        std::string inserted;
        Selection before;
    };

    const TextBreaks& breaksOf(CFRange paragraph) const;
    std::size_t target(Unit unit, Direction direction, std::size_t from) const;
    // Empty where there is no word in that direction.
    std::optional<std::size_t> wordTarget(Direction direction, std::size_t from) const;
    // Changes the text and records the change.
    bool replace(CFRange range, const std::string& insertion);
    void apply(std::size_t at, std::size_t removed, const std::string& insertion);
    std::size_t mostBytes() const {
        return kind_ == Kind::Multiline ? kMostBytes : kMostBytesOfLine;
    }

    Kind kind_;
    std::size_t maximumLength_ = 0;
    std::string text_;
    Selection selection_;
    std::vector<Step> undone_;
    std::vector<Step> done_;
    std::size_t historyBytes_ = 0;  // in done_
    bool continuesStep_ = false;    // typing that follows belongs to the last step
    // The breaks of the paragraph that was needed last.
    mutable std::unique_ptr<const TextBreaks> breaks_;
    mutable CFRange breaksRange_;
};

}  // namespace orvane::platform
