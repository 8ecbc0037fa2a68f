#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSScrollView.h"
#include "platform/appkit/NSTextEditor.h"
#include "platform/appkit/NSTextField.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

using platform::NSTextEditor;
using platform::NSTextField;
using Kind = NSTextField::Kind;

// A field in a window on the desktop, with the keyboard.
class GTKTextInput : public WindowTest {
protected:
    std::shared_ptr<NSTextField> add(Kind kind, const std::string& text = {}) {
        auto field = std::make_shared<NSTextField>(kind);
        field->setFrame({{20, 20 + 70 * static_cast<double>(count_++)}, {300, 60}});
        field->setStringValue(text);
        field->setHandlers(
            {[this] { ++changes_; }, [this] { ++commits_; }, [this] { ++focusChanges_; }});
        root_->addSubview(field);
        window_.show();
        desktop::focus(window_.toplevel());
        window_.window().makeFirstResponder(field.get());
        return field;
    }
    static void expectText(const NSTextField& field, const std::string& expected) {
        EXPECT_TRUE(desktop::runUntil([&] { return field.stringValue() == expected; }))
            << field.stringValue() << " instead of " << expected;
    }
    // The widget that shows a field: the first of a type in the window.
    GtkWidget* find(GType type) { return find(GTK_WIDGET(window_.window().widget().gobj()), type); }
    static GtkWidget* find(GtkWidget* widget, GType type) {
        if (G_TYPE_CHECK_INSTANCE_TYPE(widget, type)) {
            return widget;
        }
        for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
             child = gtk_widget_get_next_sibling(child)) {
            if (GtkWidget* const found = find(child, type)) {
                return found;
            }
        }
        return nullptr;
    }

    // The number of widgets of a type in the window.
    int count(GType type) { return count(GTK_WIDGET(window_.window().widget().gobj()), type); }
    static int count(GtkWidget* widget, GType type) {
        int number = G_TYPE_CHECK_INSTANCE_TYPE(widget, type) ? 1 : 0;
        for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
             child = gtk_widget_get_next_sibling(child)) {
            number += count(child, type);
        }
        return number;
    }

    int count_ = 0;
    int changes_ = 0;
    int commits_ = 0;
    int focusChanges_ = 0;
};

}  // namespace

TEST_F(GTKTextInput, TheApplicationGetsWhatTheKeysEnter) {
    // A keyboard with dead keys.
    ASSERT_TRUE(g_spawn_command_line_sync("setxkbmap us intl", nullptr, nullptr, nullptr, nullptr));
    for (const Kind kind : {Kind::Line, Kind::Multiline}) {
        const auto field = add(kind);
        const std::vector<std::pair<std::string, std::string>> steps{
            {"type 'one two'", "one two"},
            {"key shift+ctrl+Left key ctrl+c key End key space key ctrl+v", "one two two"},
            {"key ctrl+Left key ctrl+BackSpace", "one two"},
            {"key ctrl+a key ctrl+x", ""},
            {"key ctrl+z", "one two"},
            {"key ctrl+shift+z", ""},
            {"key ctrl+v", "one two"},
            {"key ctrl+a key dead_acute key e", "é"},
            {"key ctrl+shift+u key 2 key 0 key a key c key Return", "é€"},
        };
        for (const auto& [keys, expected] : steps) {
            desktop::xdotool(keys);
            expectText(*field, expected);
        }
        commits_ = 0;
        desktop::xdotool(kind == Kind::Line ? "key Return" : "key ctrl+Return");
        EXPECT_TRUE(desktop::runUntil([&] { return commits_ == 1; }));
        EXPECT_EQ(field->stringValue(), "é€");
    }
    ASSERT_TRUE(g_spawn_command_line_sync("setxkbmap us", nullptr, nullptr, nullptr, nullptr));
    EXPECT_GT(changes_, 10);
    EXPECT_EQ(focusChanges_, 3);
}

TEST_F(GTKTextInput, OnlyFieldsNearWhatIsVisibleHaveWidgets) {
    const auto scroll = platform::NSScrollView::create();
    scroll->setFrame({{0, 0}, size});
    scroll->setContentSize({600, 20000});
    scroll->setDocumentView(std::make_shared<platform::NSView>());
    root_->addSubview(scroll);
    std::vector<std::shared_ptr<NSTextField>> fields;
    for (int i = 0; i < 500; ++i) {
        fields.push_back(std::make_shared<NSTextField>(Kind::Line));
        fields.back()->setFrame({{20, 40.0 * i}, {300, 30}});
        scroll->documentView()->addSubview(fields.back());
    }
    window_.show();
    EXPECT_EQ(count(GTK_TYPE_ENTRY), 600 / 40 + 1);
    desktop::focus(window_.toplevel());
    window_.window().makeFirstResponder(fields[2].get());
    desktop::xdotool("type abc");
    expectText(*fields[2], "abc");
    fields[3]->setStringValue("three");
    window_.show();
    scroll->setContentOffset({0, 10000}, false);
    window_.show();
    EXPECT_EQ(count(GTK_TYPE_ENTRY), 800 / 40 + 2) << "one of them has the keyboard";
    desktop::xdotool("key d key shift+Left");
    EXPECT_TRUE(desktop::runUntil([&] { return fields[2]->caret() == 3; }));
    scroll->setContentOffset({0, 0}, false);
    window_.show();
    EXPECT_EQ(window_.window().firstResponder(), fields[2].get());
    desktop::xdotool("key x");
    expectText(*fields[2], "abcx");
    desktop::xdotool("key --repeat 3 ctrl+z");
    EXPECT_TRUE(desktop::runUntil([&] { return fields[2]->stringValue().empty(); }));
    desktop::xdotool("key Tab key End key x");
    expectText(*fields[3], "threex");
    // One without a widget gets it with the keyboard.
    window_.window().makeFirstResponder(fields[400].get());
    desktop::xdotool("key z");
    expectText(*fields[400], "z");
}

TEST_F(GTKTextInput, AScriptAndTheUserHaveOneClipboard) {
    const auto script = [this](const char* name, bool isControl) {
        platform::NSEvent event;
        event.type = platform::NSEventType::KeyDown;
        event.key = name;
        event.modifierFlags = isControl ? unsigned{platform::kNSEventModifierControl} : 0;
        window_.window().sendEvent(event);
    };
    const auto copied = add(Kind::Line, "script");
    script("a", true);
    script("c", true);
    const auto user = add(Kind::Line, "user");
    desktop::xdotool("key ctrl+a key ctrl+c key End key ctrl+v");
    expectText(*user, "useruser");
    window_.window().makeFirstResponder(copied.get());
    script("End", false);
    script("v", true);
    expectText(*copied, "scriptuser");
    script("a", true);
    script("x", true);
    window_.window().makeFirstResponder(user.get());
    desktop::xdotool("key Home key ctrl+v");
    expectText(*user, "scriptuseruseruser");
}

TEST_F(GTKTextInput, TheWidgetsKeepTheMaximumLength) {
    for (const Kind kind : {Kind::Line, Kind::Multiline, Kind::Secret}) {
        const auto field = add(kind, "é👨‍👩‍👧");
        field->setMaximumLength(4);
        desktop::xdotool("type abcd");
        expectText(*field, "é👨‍👩‍👧ab");
        desktop::xdotool("key Home key Delete key x key y");
        expectText(*field, "x👨‍👩‍👧ab");
        EXPECT_EQ(field->caret(), 1U);
    }
}

TEST_F(GTKTextInput, TheWidgetOfASecretDoesNotKnowIt) {
    const auto field = add(Kind::Secret, "old");
    const auto shown = [&] {
        return std::string(gtk_editable_get_text(GTK_EDITABLE(find(GTK_TYPE_PASSWORD_ENTRY))));
    };
    EXPECT_EQ(shown(), "●●●");
    desktop::xdotool("key n key e key w key Left key BackSpace key Home key 1");
    expectText(*field, "1oldnw");
    EXPECT_EQ(shown(), "●●●●●●");
    field->setSelection(1, 4);
    desktop::xdotool("type 23");
    expectText(*field, "123nw");
    EXPECT_EQ(field->caret(), 3U);
    // Nothing is copied.
    desktop::xdotool("key ctrl+a key ctrl+c key End key 4");
    expectText(*field, "123nw4");
}

TEST_F(GTKTextInput, TheObjectDecidesGroundAndInk) {
    for (const Kind kind : {Kind::Line, Kind::Multiline, Kind::Secret}) {
        const auto field = add(kind);
        window_.window().makeFirstResponder(nullptr);
        platform::NSTextFieldStyle style;
        style.textColor = {1, 0, 0, 1};
        style.placeholderColor = {0, 0, 1, 1};
        style.backgroundColor = {1, 1, 0, 1};
        style.fontSize = 40;
        field->setStyle(style);
        const auto colors = [&] {
            const Picture picture = window_.picture();
            const int factor = window_.window().widget().get_scale_factor();
            const platform::CGRect frame = field->frame();
            std::vector<std::uint32_t> found;
            for (int y = 0; y < static_cast<int>(frame.size.height); ++y) {
                for (int x = 0; x < static_cast<int>(frame.size.width); ++x) {
                    const std::uint32_t color =
                        picture.at((x + static_cast<int>(frame.origin.x)) * factor,
                                   (y + static_cast<int>(frame.origin.y)) * factor);
                    // Only the pure colors, not the edges of the glyphs.
                    for (const std::uint32_t pure : {0xFF0000U, 0x0000FFU, 0xFFFF00U}) {
                        if (color == pure) {
                            found.push_back(color);
                        }
                    }
                }
            }
            const bool isAllGround =
                found.size() == static_cast<std::size_t>(frame.size.width * frame.size.height);
            std::ranges::sort(found);
            found.erase(std::unique(found.begin(), found.end()), found.end());
            return std::pair(found, isAllGround);
        };
        // No frame, no shadow, no ground of the theme's.
        EXPECT_EQ(colors(), std::pair(std::vector<std::uint32_t>{0xFFFF00}, true));
        field->setPlaceholder("MMM");
        EXPECT_EQ(colors().first, (std::vector<std::uint32_t>{0x0000FF, 0xFFFF00}));
        field->setStringValue("MMM");
        EXPECT_EQ(colors().first, (std::vector<std::uint32_t>{0xFF0000, 0xFFFF00}));
    }
}

// The commands of the editing model do what the same commands of the entry do.
TEST_F(GTKTextInput, TheEditingModelAgreesWithTheEntry) {
    using Unit = NSTextEditor::Unit;
    using Direction = NSTextEditor::Direction;
    const std::vector<std::string> pieces{"a",         "word", " ",        ", ",  "é",
                                          "e\xCC\x81", "한",   "👍🏽", "x-y", "12"};
    const auto field = add(Kind::Line);
    GtkWidget* const widget = find(GTK_TYPE_TEXT);
    NSTextEditor editor(NSTextEditor::Kind::Line);
    std::mt19937 random(7);
    const auto pick = [&](unsigned count) { return random() % count; };
    std::string history;
    for (int i = 0; i < 600; ++i) {
        const bool isForward = pick(2) == 1;
        const bool isByWord = pick(2) == 1;
        const bool extends = pick(3) == 0;
        const Direction direction = isForward ? Direction::Forward : Direction::Backward;
        const Unit unit = isByWord ? Unit::Word : Unit::Character;
        const int count = isForward ? 1 : -1;
        const std::string what =
            std::string(isByWord ? "word " : "character ") + (isForward ? "forward" : "backward");
        switch (pick(4)) {
            case 0: {
                const std::string& piece = pieces[pick(static_cast<unsigned>(pieces.size()))];
                // The signal itself keeps the selection; the widget deletes it before.
                gtk_editable_delete_selection(GTK_EDITABLE(widget));
                g_signal_emit_by_name(widget, "insert-at-cursor", piece.c_str());
                editor.insert(piece);
                history += "\ninsert " + piece;
                break;
            }
            case 1:
                if (isByWord || isForward || !editor.selection().isEmpty()) {
                    g_signal_emit_by_name(widget, "delete-from-cursor",
                                          isByWord ? GTK_DELETE_WORD_ENDS : GTK_DELETE_CHARS,
                                          count);
                } else {
                    g_signal_emit_by_name(widget, "backspace");
                }
                editor.deleteText(unit, direction);
                history += "\ndelete " + what;
                break;
            default:
                g_signal_emit_by_name(widget, "move-cursor",
                                      isByWord ? GTK_MOVEMENT_WORDS : GTK_MOVEMENT_VISUAL_POSITIONS,
                                      count, extends ? TRUE : FALSE);
                editor.move(unit, direction, extends);
                history += "\nmove " + what + (extends ? " extending" : "");
        }
        ASSERT_EQ(field->stringValue(), editor.text()) << i << history;
        ASSERT_EQ(std::pair(field->selectionAnchor(), field->caret()),
                  std::pair(editor.selection().anchor, editor.selection().caret))
            << i << " in '" << editor.text() << "'" << history;
    }
}

}  // namespace orvane::tests
