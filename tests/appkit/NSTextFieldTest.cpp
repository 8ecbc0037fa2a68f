#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSPasteboard.h"
#include "platform/appkit/NSTextField.h"
#include "platform/offscreen/OffscreenWindow.h"

using namespace orvane::platform;

namespace {

using Kind = NSTextField::Kind;

// A field in an off-screen window, and a user.
class NSTextFieldTest : public testing::Test {
protected:
    NSTextFieldTest() {
        root->setFrame({{0, 0}, {300, 100}});
        window.setContentView(root);
    }
    std::shared_ptr<NSTextField> add(Kind kind, const std::string& text = {}) {
        auto field = std::make_shared<NSTextField>(kind);
        field->setFrame({{10, 10}, {120, 60}});
        field->setStringValue(text);
        NSTextField* const raw = field.get();
        field->setHandlers({[this, raw] { log += "text " + raw->stringValue() + ", "; },
                            [this] { log += "commit, "; },
                            [this, raw] { log += raw->isFocused() ? "focus, " : "blur, "; }});
        root->addSubview(field);
        return field;
    }
    void key(const std::string& name, unsigned modifiers = 0) {
        NSEvent event;
        event.type = NSEventType::KeyDown;
        event.key = name;
        event.modifierFlags = modifiers;
        window.sendEvent(event);
    }
    void type(const std::string& text) {
        NSEvent event;
        event.type = NSEventType::KeyDown;
        event.characters = text;
        window.sendEvent(event);
    }
    void click(double x, double y, double time) {
        window.sendEvent({NSEventType::LeftMouseDown, {x, y}, time});
        window.sendEvent({NSEventType::LeftMouseUp, {x, y}, time});
    }
    std::vector<std::uint32_t> pixels() {
        window.display();
        const std::uint32_t* const first = window.pixels();  // the rows have no gaps
        return {first, first + window.bytesPerRow() / 4 * 100};
    }

    static constexpr unsigned shift = kNSEventModifierShift;
    static constexpr unsigned control = kNSEventModifierControl;

    std::string log;
    std::shared_ptr<NSView> root = std::make_shared<NSView>();
    OffscreenWindow window{{300, 100}};
};

using Range = std::pair<std::size_t, std::size_t>;

Range selectionOf(const NSTextField& field) {
    return {field.selectionAnchor(), field.caret()};
}

}  // namespace

TEST_F(NSTextFieldTest, ReportsWhatTheUserDoesAndNothingElse) {
    const auto field = add(Kind::Line);
    const auto other = add(Kind::Line, "other");
    field->setStringValue("set");
    type("nobody");
    window.makeFirstResponder(field.get());
    type("!");
    key("Left");
    key("Return");
    field->setStringValue("");
    key("BackSpace");
    key("Tab");
    EXPECT_EQ(log, "focus, text set!, commit, blur, focus, ");
    EXPECT_EQ(selectionOf(*other), (Range{0, 5}));
    other->setEnabled(false);
    EXPECT_EQ(window.firstResponder(), nullptr);
    // A field that cannot be changed is read and copied.
    field->setStringValue("kept");
    field->setEditable(false);
    window.makeFirstResponder(field.get());
    log.clear();
    type("x");
    key("BackSpace");
    key("a", control);
    key("x", control);
    EXPECT_EQ(field->stringValue(), "kept");
    EXPECT_EQ(NSPasteboard::generalPasteboard().string(), "kept");
    EXPECT_EQ(log, "");
}

TEST_F(NSTextFieldTest, KeysAreTheCommandsOfTheDesktop) {
    const auto field = add(Kind::Line, "one two three");
    window.makeFirstResponder(field.get());
    const std::vector<std::tuple<std::string, unsigned, std::string, Range>> steps{
        {"Home", 0, "one two three", {0, 0}},
        {"Right", control, "one two three", {3, 3}},
        {"End", shift, "one two three", {3, 13}},
        {"c", control, "one two three", {3, 13}},
        {"Left", 0, "one two three", {3, 3}},
        {"v", control, "one two three two three", {13, 13}},
        {"z", control, "one two three", {3, 3}},
        {"z", control | shift, "one two three two three", {13, 13}},
        {"z", control, "one two three", {3, 3}},
        {"y", control, "one two three two three", {13, 13}},
        {"BackSpace", control, "one two  two three", {8, 8}},
        {"Delete", control, "one two  three", {8, 8}},
        {"Left", control | shift, "one two  three", {8, 4}},
        {"x", control, "one  three", {4, 4}},
        {"Insert", shift, "one two  three", {8, 8}},
        {"Delete", 0, "one two three", {8, 8}},
        {"a", control, "one two three", {0, 13}},
        {"a", control | shift, "one two three", {13, 13}},
        {"BackSpace", control | shift, "", {0, 0}},
    };
    for (const auto& [name, modifiers, text, selection] : steps) {
        key(name, modifiers);
        EXPECT_EQ(field->stringValue(), text) << name;
        EXPECT_EQ(selectionOf(*field), selection) << name << " " << text;
    }
    type("ab");
    key("Left");
    key("Right");
    type("c");
    key("z", control);
    EXPECT_EQ(field->stringValue(), "ab") << "a move ends a step of the history";
}

TEST_F(NSTextFieldTest, UpAndDownKeepTheDistanceFromTheSide) {
    const auto field = add(Kind::Multiline, "aaaaaa\naa\naaaaaa");
    window.makeFirstResponder(field.get());
    field->setSelection(5, 5);
    const std::vector<std::tuple<std::string, unsigned, Range>> steps{
        {"Down", 0, {9, 9}}, {"Down", 0, {15, 15}},     {"Up", shift, {15, 9}},
        {"Up", 0, {5, 5}},   {"Home", 0, {0, 0}},       {"Down", 0, {7, 7}},
        {"Up", 0, {0, 0}},   {"End", shift, {0, 6}},    {"Home", control, {0, 0}},
        {"Up", 0, {0, 0}},   {"Page_Down", 0, {16, 16}}};
    for (const auto& [name, modifiers, selection] : steps) {
        key(name, modifiers);
        EXPECT_EQ(selectionOf(*field), selection) << name;
    }
    key("Return");
    EXPECT_EQ(field->stringValue(), "aaaaaa\naa\naaaaaa\n");
    log.clear();
    key("Return", control);
    EXPECT_EQ(log, "commit, ");
    // A wrapped line ends before its last character: behind it, the next line begins.
    field->setStringValue("aaaaaaaa bbbbbbbb cccccccc");
    field->setSelection(0, 0);
    key("End");
    const std::size_t end = field->caret();
    EXPECT_GT(end, 0U);
    EXPECT_LT(end, field->stringValue().size());
    key("Home");
    EXPECT_EQ(field->caret(), 0U);
}

TEST_F(NSTextFieldTest, ThePointerPlacesTheCaretAndSelects) {
    const auto field = add(Kind::Line, "one two three");
    click(12, 40, 1);
    EXPECT_TRUE(field->isFocused());
    EXPECT_EQ(selectionOf(*field), (Range{0, 0}));
    click(12, 40, 1.2);
    EXPECT_EQ(selectionOf(*field), (Range{0, 3}));
    click(12, 40, 1.4);
    EXPECT_EQ(selectionOf(*field), (Range{0, 13}));
    click(128, 40, 5);
    EXPECT_EQ(selectionOf(*field), (Range{13, 13}));
    // With the button held down, also outside the field.
    window.sendEvent({NSEventType::LeftMouseDown, {128, 40}, 7});
    window.sendEvent({NSEventType::LeftMouseDragged, {-50, 300}, 7.1});
    window.sendEvent({NSEventType::LeftMouseUp, {-50, 300}, 7.2});
    EXPECT_EQ(selectionOf(*field), (Range{13, 0}));
    // A word stays selected while the pointer adds to it.
    click(128, 40, 9);
    window.sendEvent({NSEventType::LeftMouseDown, {128, 40}, 9.1});
    EXPECT_EQ(selectionOf(*field), (Range{8, 13}));
    for (const auto& [x, selection] : {std::pair{12, Range{13, 0}}, {200, {8, 13}}}) {
        window.sendEvent({NSEventType::LeftMouseDragged, {x + 0.0, 40}, 9.2});
        EXPECT_EQ(selectionOf(*field), selection);
    }
    window.sendEvent({NSEventType::LeftMouseUp, {200, 40}, 9.3});
    click(12, 40, 11);
    window.sendEvent({NSEventType::LeftMouseDown, {12, 40}, 11.1});
    window.sendEvent({NSEventType::LeftMouseDragged, {200, 40}, 11.2});
    EXPECT_EQ(selectionOf(*field), (Range{0, 13}));
    window.sendEvent({NSEventType::LeftMouseDragged, {12, 40}, 11.3});
    EXPECT_EQ(selectionOf(*field), (Range{0, 3}));
    window.sendEvent({NSEventType::LeftMouseUp, {12, 40}, 11.4});
    field->setEnabled(false);
    click(60, 40, 13);
    EXPECT_EQ(selectionOf(*field), (Range{0, 3}));
}

TEST_F(NSTextFieldTest, TheCaretStaysInViewAndTheTextDoesNotLeaveTheBounds) {
    const auto field = add(Kind::Line, std::string(200, 'i'));
    window.makeFirstResponder(field.get());
    const auto atEnd = pixels();
    key("Home");
    const auto atBeginning = pixels();
    EXPECT_NE(atEnd, atBeginning);
    // The caret is the only ink of its kind: black from top to bottom of the line, at the left.
    EXPECT_EQ(atBeginning[40 * 300 + 10], 0xFF000000U);
    EXPECT_EQ(atEnd[40 * 300 + 129], 0xFF000000U) << "at the right";
    for (std::size_t i = 0; i < atEnd.size(); ++i) {
        const std::size_t x = i % 300;
        const std::size_t y = i / 300;
        if (x < 10 || x >= 130 || y < 10 || y >= 70) {
            ASSERT_EQ(atEnd[i], atBeginning[i]) << x << "," << y;
        }
    }
}

TEST_F(NSTextFieldTest, ASecretLooksLikeAnyOtherOfItsLength) {
    const auto field = add(Kind::Secret, "abc");
    const auto secret = pixels();
    field->setStringValue(
        "e\xCC\x81"
        "w@");
    EXPECT_EQ(pixels(), secret);
    field->setStringValue("ab");
    EXPECT_NE(pixels(), secret);
    window.makeFirstResponder(field.get());
    NSPasteboard::generalPasteboard().setString("before");
    key("a", control);
    key("c", control);
    EXPECT_EQ(NSPasteboard::generalPasteboard().string(), "before");
}

TEST_F(NSTextFieldTest, ShowsEachOfItsStates) {
    const auto field = add(Kind::Line);
    std::vector<std::vector<std::uint32_t>> shown{pixels()};
    const auto looksNew = [&] {
        const auto now = pixels();
        const bool isNew = std::find(shown.begin(), shown.end(), now) == shown.end();
        shown.push_back(now);
        return isNew;
    };
    field->setPlaceholder("a placeholder");
    EXPECT_TRUE(looksNew());
    field->setStringValue("a placeholder");
    EXPECT_TRUE(looksNew());
    NSTextFieldStyle style;
    style.backgroundColor = {1, 1, 0, 1};
    field->setStyle(style);
    EXPECT_TRUE(looksNew());
    for (const CTTextAlignment alignment : {CTTextAlignment::Center, CTTextAlignment::Right}) {
        style.alignment = alignment;
        field->setStyle(style);
        EXPECT_TRUE(looksNew());
    }
    style.fontSize = 20;
    field->setStyle(style);
    EXPECT_TRUE(looksNew());
    field->setEnabled(false);
    EXPECT_TRUE(looksNew());
    field->setEnabled(true);
    window.makeFirstResponder(field.get());
    EXPECT_TRUE(looksNew());
    field->setSelection(2, 5);
    EXPECT_TRUE(looksNew());
    // An idle field costs nothing.
    EXPECT_FALSE(window.needsDisplay());
}

TEST_F(NSTextFieldTest, TheCaretIsShownWhereTypingInserts) {
    const auto field = add(Kind::Line, "     ");
    const struct {
        bool isFocused, isEditable;
        Range selection;
        bool isShown;
    } cases[] = {{true, true, {2, 2}, true},   {true, true, {2, 4}, false},
                 {true, true, {4, 2}, false},  {true, false, {2, 2}, false},
                 {false, true, {2, 2}, false}, {false, true, {2, 4}, false}};
    for (const auto& each : cases) {
        window.makeFirstResponder(each.isFocused ? field.get() : nullptr);
        field->setEditable(each.isEditable);
        field->setSelection(each.selection.first, each.selection.second);
        // Spaces have no ink, and the selection has another color.
        const auto shown = pixels();
        EXPECT_EQ(std::ranges::count(shown, 0xFF000000U) > 0, each.isShown);
        EXPECT_EQ(
            std::ranges::count(shown, 0U) < 300 * 100,
            each.isShown || (each.isFocused && each.selection.first != each.selection.second));
    }
    field->setHidden(true);
    for (const Kind kind : {Kind::Line, Kind::Multiline}) {
        const auto other = add(kind, " ");
        window.makeFirstResponder(other.get());
        other->setSelection(0, 0);
        const auto withCaret = pixels();
        const auto caret = std::ranges::find(withCaret, 0xFF000000U) - withCaret.begin();
        EXPECT_EQ(caret % 300, 10) << "at the left edge of the field";
        other->setSelection(0, 1);
        const auto selected = pixels();
        const auto first = std::ranges::find_if(selected, [](auto pixel) { return pixel != 0; });
        EXPECT_EQ((first - selected.begin()) % 300, 10);
        other->setHidden(true);
    }
}
