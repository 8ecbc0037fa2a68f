#include "platform/appkit/NSTextEditor.h"

#include <algorithm>
#include <utility>

#include "platform/coretext/validText.h"

namespace orvane::platform {

namespace {

// The history is cut at this size.
constexpr std::size_t kMostSteps = 1000;
constexpr std::size_t kMostHistoryBytes = 4 * NSTextEditor::kMostBytes;

bool isBlank(char c) {
    return c == ' ' || c == '\n' || c == '\t';
}

// The longest beginning of valid UTF-8 that has at most so many bytes.
std::string cut(std::string text, std::size_t bytes) {
    if (text.size() > bytes) {
        while (bytes > 0 && (static_cast<unsigned char>(text[bytes]) & 0xC0) == 0x80) {
            --bytes;
        }
        text.resize(bytes);
    }
    return text;
}

}  // namespace

// ---- the text ----

std::string NSTextEditor::acceptable(std::string_view text) const {
    // What is beyond the limit need not be examined; four bytes more, so that no character is cut.
    const std::string valid = validText(text.substr(0, mostBytes() + 4));
    std::string result;
    result.reserve(valid.size());
    for (std::size_t i = 0; i < valid.size(); ++i) {
        char c = valid[i];
        if (c == '\r') {
            if (i + 1 < valid.size() && valid[i + 1] == '\n') {
                continue;
            }
            c = '\n';
        }
        result += c == '\n' && kind_ != Kind::Multiline ? ' ' : c;
    }
    return result;
}

std::string NSTextEditor::fitting(const std::string& insertion, CFRange replaced) const {
    const std::size_t kept = text_.size() - replaced.length;
    std::string part = cut(insertion, mostBytes() - std::min(kept, mostBytes()));
    if (maximumLength_ == 0 || part.empty()) {
        return part;
    }
    // Characters may join with those around them, so the result is counted. The length of the
    // result grows with what is inserted: search for the longest part that fits.
    const std::string before = text_.substr(0, replaced.location);
    const std::string after = text_.substr(std::min(replaced.end(), text_.size()));
    const auto fits = [&](std::size_t bytes) {
        return TextBreaks(before + part.substr(0, bytes) + after).characterCount() <=
               maximumLength_;
    };
    if (fits(part.size())) {
        return part;
    }
    const TextBreaks breaks(part);
    std::vector<std::size_t> ends{0};
    while (ends.back() < part.size()) {
        ends.push_back(breaks.nextCharacter(ends.back()));
    }
    const auto firstThatDoesNot = std::partition_point(ends.begin() + 1, ends.end(), fits);
    part.resize(*(firstThatDoesNot - 1));
    return part;
}

void NSTextEditor::setMaximumLength(std::size_t characters) {
    maximumLength_ = characters;
    const Selection old = selection_;
    setText(std::string(text_));
    setSelection(old.anchor, old.caret);
}

void NSTextEditor::setText(std::string_view text) {
    const std::string valid = acceptable(text);
    text_.clear();
    text_ = fitting(valid, {});
    breaks_.reset();
    selection_ = {text_.size(), text_.size()};
    done_.clear();
    undone_.clear();
    historyBytes_ = 0;
    continuesStep_ = false;
}

void NSTextEditor::setSelection(std::size_t anchor, std::size_t caret) {
    selection_ = {atOrBefore(anchor), atOrBefore(caret)};
    continuesStep_ = false;
}

std::string NSTextEditor::selectedText() const {
    if (kind_ == Kind::Secret) {
        return {};
    }
    return text_.substr(selection_.begin(), selection_.end() - selection_.begin());
}

// ---- positions ----

CFRange NSTextEditor::paragraphAt(std::size_t at) const {
    at = std::min(at, text_.size());
    const std::size_t before = at > 0 ? text_.rfind('\n', at - 1) : std::string::npos;
    const std::size_t begin = before == std::string::npos ? 0 : before + 1;
    return {begin, std::min(text_.find('\n', at), text_.size()) - begin};
}

const TextBreaks& NSTextEditor::breaksOf(CFRange paragraph) const {
    if (!breaks_ || breaksRange_ != paragraph) {
        breaksRange_ = paragraph;
        breaks_ = std::make_unique<const TextBreaks>(
            std::string_view(text_).substr(paragraph.location, paragraph.length));
    }
    return *breaks_;
}

std::size_t NSTextEditor::nextCharacter(std::size_t at) const {
    return target(Unit::Character, Direction::Forward, at);
}

std::size_t NSTextEditor::atOrBefore(std::size_t at) const {
    const CFRange paragraph = paragraphAt(at);
    return paragraph.location +
           breaksOf(paragraph).atOrBefore(std::min(at, text_.size()) - paragraph.location);
}

std::optional<std::size_t> NSTextEditor::wordTarget(Direction direction, std::size_t from) const {
    if (kind_ == Kind::Secret) {  // the words of a secret are a part of it
        return direction == Direction::Forward ? text_.size() : 0;
    }
    for (;;) {
        const CFRange paragraph = paragraphAt(from);
        const TextBreaks& breaks = breaksOf(paragraph);
        const std::size_t at = from - paragraph.location;
        // Where no word is left in a paragraph, the search goes on in the next one.
        if (direction == Direction::Forward) {
            const std::size_t found = breaks.nextWordEnd(at);
            if (found > at && breaks.isWordEnd(found)) {
                return paragraph.location + found;
            }
            if (paragraph.end() >= text_.size()) {
                return std::nullopt;
            }
            from = paragraph.end() + 1;
        } else {
            const std::size_t found = breaks.previousWordStart(at);
            if (found < at && breaks.isWordStart(found)) {
                return paragraph.location + found;
            }
            if (paragraph.location == 0) {
                return std::nullopt;
            }
            from = paragraph.location - 1;
        }
    }
}

std::size_t NSTextEditor::target(Unit unit, Direction direction, std::size_t from) const {
    const bool isForward = direction == Direction::Forward;
    const CFRange paragraph = paragraphAt(from);
    switch (unit) {
        case Unit::Character: {
            if (isForward && from >= paragraph.end()) {
                return std::min(from + 1, text_.size());
            }
            if (!isForward && from == paragraph.location) {
                return from > 0 ? from - 1 : 0;
            }
            const TextBreaks& breaks = breaksOf(paragraph);
            const std::size_t at = from - paragraph.location;
            return paragraph.location +
                   (isForward ? breaks.nextCharacter(at) : breaks.previousCharacter(at));
        }
        case Unit::Word: {
            // Without a word, to the end of the paragraph, which may be the whole text.
            const std::size_t next =
                from < paragraph.end() ? from : std::min(from + 1, text_.size());
            const std::size_t end = isForward ? paragraphAt(next).end() : paragraph.location;
            return wordTarget(direction, from).value_or(end);
        }
        case Unit::Paragraph:
            return isForward ? paragraph.end() : paragraph.location;
        case Unit::Document:
            return isForward ? text_.size() : 0;
    }
    return from;
}

// ---- moving and selecting ----

void NSTextEditor::move(Unit unit, Direction direction, bool extends) {
    const bool collapses =
        unit == Unit::Character || (unit == Unit::Word && kind_ != Kind::Multiline);
    if (!extends && !selection_.isEmpty() && collapses) {
        moveTo(direction == Direction::Forward ? selection_.end() : selection_.begin(), false);
    } else {
        moveTo(target(unit, direction, selection_.caret), extends);
    }
}

void NSTextEditor::moveTo(std::size_t position, bool extends) {
    setSelection(extends ? selection_.anchor : position, position);
}

void NSTextEditor::selectWord(std::size_t position) {
    if (kind_ == Kind::Secret) {
        selectAll();
        return;
    }
    const CFRange paragraph = paragraphAt(position);
    const CFRange word =
        breaksOf(paragraph).wordAt(std::min(position, text_.size()) - paragraph.location);
    setSelection(paragraph.location + word.location, paragraph.location + word.end());
}

void NSTextEditor::selectParagraph(std::size_t position) {
    const CFRange paragraph = paragraphAt(position);
    setSelection(paragraph.location, paragraph.end());
}

// ---- changing ----

bool NSTextEditor::insert(std::string_view text) {
    const CFRange range{selection_.begin(), selection_.end() - selection_.begin()};
    return replace(range, fitting(acceptable(text), range));
}

bool NSTextEditor::deleteText(Unit unit, Direction direction) {
    if (!selection_.isEmpty()) {
        return replace({selection_.begin(), selection_.end() - selection_.begin()}, {});
    }
    const std::size_t caret = selection_.caret;
    if (unit == Unit::Word && kind_ == Kind::Multiline && !wordTarget(direction, caret)) {
        return false;  // as in GTK's text view
    }
    std::size_t other = target(unit, direction, caret);
    if (const CFRange paragraph = paragraphAt(caret);
        unit == Unit::Character && direction == Direction::Backward && caret > paragraph.location &&
        kind_ != Kind::Secret) {
        other = paragraph.location + breaksOf(paragraph).backspaceFrom(caret - paragraph.location);
    }
    const std::size_t begin = std::min(caret, other);
    return replace({begin, std::max(caret, other) - begin}, {});
}

bool NSTextEditor::replace(CFRange range, const std::string& insertion) {
    if (range.length == 0 && insertion.empty()) {
        return false;
    }
    if (kind_ != Kind::Secret) {
        undone_.clear();
        Step step{range.location, text_.substr(range.location, range.length), insertion,
                  selection_};
        Step* const last = continuesStep_ && !done_.empty() ? &done_.back() : nullptr;
        const bool isTyping = range.length == 0;
        if (last != nullptr && isTyping && last->at + last->inserted.size() == range.location &&
            !last->inserted.empty() &&
            !(isBlank(last->inserted.back()) && !isBlank(insertion.front()))) {
            // Words are undone one by one, with the blanks after them.
            last->inserted += insertion;
        } else if (last != nullptr && insertion.empty() && last->inserted.empty() &&
                   range.location + range.length == last->at) {
            last->removed = step.removed + last->removed;
            last->at = range.location;
        } else {
            done_.push_back(std::move(step));
        }
        historyBytes_ += range.length + insertion.size();
        while (done_.size() > 1 &&
               (done_.size() > kMostSteps || historyBytes_ > kMostHistoryBytes)) {
            historyBytes_ -= std::min(historyBytes_,
                                      done_.front().removed.size() + done_.front().inserted.size());
            done_.erase(done_.begin());
        }
    }
    apply(range.location, range.length, insertion);
    const std::size_t caret = range.location + insertion.size();
    selection_ = {caret, caret};
    continuesStep_ = true;
    return true;
}

void NSTextEditor::apply(std::size_t at, std::size_t removed, const std::string& insertion) {
    text_.replace(at, removed, insertion);
    breaks_.reset();
}

bool NSTextEditor::undo() {
    if (done_.empty()) {
        return false;
    }
    Step step = std::move(done_.back());
    done_.pop_back();
    historyBytes_ -= std::min(historyBytes_, step.removed.size() + step.inserted.size());
    apply(step.at, step.inserted.size(), step.removed);
    selection_ = step.before;
    continuesStep_ = false;
    undone_.push_back(std::move(step));
    return true;
}

bool NSTextEditor::redo() {
    if (undone_.empty()) {
        return false;
    }
    Step step = std::move(undone_.back());
    undone_.pop_back();
    historyBytes_ += step.removed.size() + step.inserted.size();
    apply(step.at, step.removed.size(), step.inserted);
    const std::size_t caret = step.at + step.inserted.size();
    selection_ = {caret, caret};
    continuesStep_ = false;
    done_.push_back(std::move(step));
    return true;
}

}  // namespace orvane::platform
