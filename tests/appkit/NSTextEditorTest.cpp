#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/appkit/NSTextEditor.h"

using orvane::platform::NSTextEditor;
using Kind = NSTextEditor::Kind;
using Unit = NSTextEditor::Unit;
using Direction = NSTextEditor::Direction;

namespace {

// A text with its selection: [ is the anchor, | is the caret; one | alone is an empty selection.
void set(NSTextEditor& editor, const std::string& marked) {
    std::string text;
    std::size_t anchor = std::string::npos;
    std::size_t caret = 0;
    for (const char c : marked) {
        if (c == '[') {
            anchor = text.size();
        } else if (c == '|') {
            caret = text.size();
        } else {
            text += c;
        }
    }
    editor.setText(text);
    editor.setSelection(anchor == std::string::npos ? caret : anchor, caret);
}

std::string marked(const NSTextEditor& editor) {
    std::string text = editor.text();
    const auto [anchor, caret] = editor.selection();
    text.insert(caret, "|");
    if (anchor != caret) {
        text.insert(anchor + (anchor > caret ? 1 : 0), "[");
    }
    return text;
}

// Runs commands: letters are units (c, w, p, d), upper case extends; < and > move, - and + delete
// backward and forward; " inserts the text up to the next "; u and r undo and redo.
std::string run(Kind kind, const std::string& before, const std::string& commands) {
    NSTextEditor editor(kind);
    set(editor, before);
    for (std::size_t i = 0; i < commands.size(); ++i) {
        const std::string units = "cwpdCWPD";
        if (const auto unit = units.find(commands[i]); unit != std::string::npos) {
            const auto kindOfUnit = static_cast<Unit>(unit % 4);
            const char action = commands[++i];
            const auto direction =
                action == '<' || action == '-' ? Direction::Backward : Direction::Forward;
            if (action == '-' || action == '+') {
                editor.deleteText(kindOfUnit, direction);
            } else {
                editor.move(kindOfUnit, direction, unit >= 4);
            }
        } else if (commands[i] == '"') {
            const auto end = commands.find('"', i + 1);
            editor.insert(commands.substr(i + 1, end - i - 1));
            i = end;
        } else {
            commands[i] == 'u' ? editor.undo() : editor.redo();
        }
    }
    return marked(editor);
}

struct Case {
    Kind kind;
    std::string before;
    std::string commands;
    std::string after;
};

// "e" with an acute accent of its own, and a family of three people: one character each.
const std::string kAccented = "e\xCC\x81";
const std::string kFamily = "👨‍👩‍👧";

}  // namespace

TEST(NSTextEditor, DoesWhatItsCommandsSay) {
    const Kind line = Kind::Line;
    const Kind many = Kind::Multiline;
    const std::vector<Case> cases{
        // Characters.
        {line, "ab|c", "c<", "a|bc"},
        {line, "ab|c", "c>c>", "abc|"},
        {line, "|abc", "c<", "|abc"},
        {line, "a" + kAccented + kFamily + "|", "c<c<", "a|" + kAccented + kFamily},
        {line, "a" + kAccented + kFamily + "|", "c-", "a" + kAccented + "|"},
        {line, "|" + kFamily + "b", "c+", "|b"},
        {line, "한|", "c-", "|"},
        {many, "a|\nb", "c>", "a\n|b"},
        {many, "a\n|b", "c-", "a|b"},
        // Words.
        {line, "|one, two", "w>", "one|, two"},
        {line, "one, two|", "w<w<", "|one, two"},
        {line, "one |two", "w<", "|one two"},
        {line, "one two|", "w-", "one |"},
        {line, "|one two", "w+", "| two"},
        {line, "a...|", "w<", "|a..."},
        {line, "a|...", "w>", "a...|"},
        {many, "one|\n\n two", "w>", "one\n\n two|"},
        {many, "one\n\n |two", "w<", "|one\n\n two"},
        {many, "one\n|", "w-", "|"},
        // Ends, and selections.
        {line, "a|bc", "D>", "a[bc|"},
        {line, "a[bc|", "D<", "|a[bc"},
        {many, "one\ntw|o", "p<", "one\n|two"},
        {many, "one\n|two", "P>", "one\n[two|"},
        {line, "a[bc|d", "c<", "a|bcd"},
        {line, "a|bc[d", "c>", "abc|d"},
        {line, "one t[wo|", "w<", "one t|wo"},
        {many, "one t[wo|", "w<", "one |two"},
        {line, "ab|c", "C<C<", "|ab[c"},
        {line, "a[bc|d", "\"x\"", "ax|d"},
        {line, "a|bc[d", "c-", "a|d"},
        // What can be inserted.
        {line, "|", "\"a\r\nb\nc\"", "a b c|"},
        {many, "|", "\"a\r\nb\rc\"", "a\nb\nc|"},
        {line, "|", "\"x\xFF\xC3y\"", "x\xEF\xBF\xBD\xEF\xBF\xBDy|"},
        // The history: typing is undone word by word, and deleting at once.
        {line, "|", "\"a\"\"b\"\" \"\"c\"u", "ab |"},
        {line, "|", "\"a\"\"b\"\" \"\"c\"uu", "|"},
        {line, "|", "\"a\"\"b\"\" \"\"c\"uur", "ab |"},
        {line, "abc|", "c-c-u", "abc|"},
        {line, "a[bc|", "\"x\"u", "a[bc|"},
        {line, "a[bc|", "\"x\"ur", "ax|"},
        {line, "|", "\"a\"c<\"b\"u", "|a"},
        {line, "|", "\"a\"u\"b\"r", "b|"},
        // A secret has no words and no history.
        {Kind::Secret, "one two|", "w<", "|one two"},
        {Kind::Secret, "one two|", "w-", "|"},
        {Kind::Secret, "one|", "\"x\"u", "onex|"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(run(each.kind, each.before, each.commands), each.after)
            << each.before << "  " << each.commands;
    }
}

TEST(NSTextEditor, SelectsWordsAndParagraphs) {
    NSTextEditor editor(Kind::Multiline);
    set(editor, "|one, two\nthree");
    const std::vector<std::pair<std::size_t, std::string>> words{
        {0, "[one|, two\nthree"}, {2, "[one|, two\nthree"}, {3, "one[, |two\nthree"},
        {8, "one, [two|\nthree"}, {9, "one, two\n[three|"}, {99, "one, two\n[three|"}};
    for (const auto& [position, expected] : words) {
        editor.selectWord(position);
        EXPECT_EQ(marked(editor), expected) << position;
    }
    editor.selectParagraph(4);
    EXPECT_EQ(marked(editor), "[one, two|\nthree");
    NSTextEditor secret(Kind::Secret);
    set(secret, "one two|");
    secret.selectWord(1);
    EXPECT_EQ(marked(secret), "[one two|");
    EXPECT_EQ(secret.selectedText(), "");
}

TEST(NSTextEditor, CountsTheMaximumLengthInCharactersOfReaders) {
    NSTextEditor editor(Kind::Line);
    editor.setMaximumLength(4);
    editor.setText("ab" + kFamily + kAccented + "c");
    EXPECT_EQ(editor.text(), "ab" + kFamily + kAccented);
    EXPECT_FALSE(editor.insert("x"));
    // A mark that joins the last character takes no room.
    EXPECT_TRUE(editor.insert("\xCC\xA3"));
    editor.setSelection(0, 2);
    EXPECT_TRUE(editor.insert("123"));
    EXPECT_EQ(marked(editor), "12|" + kFamily + kAccented + "\xCC\xA3");
    editor.setMaximumLength(1);
    EXPECT_EQ(editor.text(), "1");
}

TEST(NSTextEditor, TakesNoMoreThanItCanShow) {
    const std::string huge(100'000'000, 'x');
    NSTextEditor line(Kind::Line);
    line.setText(huge);
    EXPECT_EQ(line.text().size(), NSTextEditor::kMostBytesOfLine);
    EXPECT_FALSE(line.insert("y"));
    NSTextEditor many(Kind::Multiline);
    many.insert(huge);
    EXPECT_EQ(many.text().size(), NSTextEditor::kMostBytes);
    // The cut is between characters.
    std::string accents;
    while (accents.size() <= NSTextEditor::kMostBytesOfLine) {
        accents += "é";
    }
    line.setText(accents);
    EXPECT_EQ(line.text().size(), NSTextEditor::kMostBytesOfLine - 1);
    // A position inside a character is its beginning, one behind the text its end.
    line.setText("é");
    line.setSelection(1, 77);
    EXPECT_EQ(line.selection(), (NSTextEditor::Selection{0, 2}));
}
