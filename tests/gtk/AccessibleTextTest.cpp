#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "platform/appkit/NSTextField.h"
#include "tests/gtk/Reader.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

using platform::NSTextField;
using Kind = NSTextField::Kind;

// ATSPI_ROLE_TEXT and ATSPI_ROLE_PASSWORD_TEXT.
constexpr unsigned kTextRole = 61;
constexpr unsigned kPasswordRole = 40;

class AccessibleText : public WindowTest {
protected:
    std::shared_ptr<NSTextField> add(Kind kind, const std::string& label, const std::string& text) {
        auto field = std::make_shared<NSTextField>(kind);
        field->setFrame({{20, 20 + 70 * static_cast<double>(kind)}, {300, 60}});
        field->setStringValue(text);
        field->setAccessibilityLabel(label);
        root_->addSubview(field);
        return field;
    }
};

}  // namespace

TEST_F(AccessibleText, AScreenReaderFindsTheTextsButNoSecret) {
    const auto line = add(Kind::Line, "Name", "Zoë");
    const auto notes = add(Kind::Multiline, "Notes", "one\ntwo");
    const auto secret = add(Kind::Secret, "Password", "Quartz");
    window_.show();
    desktop::focus(window_.toplevel());
    Reader reader;
    ASSERT_TRUE(reader.isConnected()) << "run this test in dbus-run-session";
    std::map<std::string, Accessible> found;
    ASSERT_TRUE(desktop::runUntil([&] {
        found = reader.byName();
        return found.contains("Name") && found.contains("Notes") && found.contains("Password");
    }));
    for (const auto& [label, expected] : std::map<std::string, std::string>{
             {"Name", "Zoë"}, {"Notes", "one\ntwo"}, {"Password", "●●●●●●"}}) {
        EXPECT_EQ(reader.text(found[label]), expected);
        EXPECT_EQ(reader.role(found[label]), label == "Password" ? kPasswordRole : kTextRole);
    }
    // The caret, and what the user does, is announced.
    window_.window().makeFirstResponder(line.get());
    desktop::xdotool("key Home key Right");
    EXPECT_TRUE(desktop::runUntil([&] { return reader.caret(found["Name"]) == 1; }));
    desktop::xdotool("type X");
    EXPECT_TRUE(desktop::runUntil([&] { return reader.heard().find("'X'") != std::string::npos; }));
    window_.window().makeFirstResponder(notes.get());
    desktop::xdotool("key ctrl+Home key Y");
    EXPECT_TRUE(desktop::runUntil([&] { return reader.text(found["Notes"]) == "Yone\ntwo"; }));

    // A secret that is typed, replaced and deleted is in no answer and in no announcement.
    window_.window().makeFirstResponder(secret.get());
    desktop::xdotool("key End key K key i key w key i key BackSpace");
    ASSERT_TRUE(desktop::runUntil([&] { return secret->stringValue() == "QuartzKiw"; }));
    EXPECT_EQ(reader.text(found["Password"]), "●●●●●●●●●");
    EXPECT_EQ(reader.caret(found["Password"]), 9);
    desktop::xdotool("key ctrl+a key Delete key F key i key g");
    ASSERT_TRUE(desktop::runUntil([&] { return secret->stringValue() == "Fig"; }));
    reader.byName();
    // What was announced before this has arrived.
    desktop::xdotool("key Home");
    EXPECT_TRUE(desktop::runUntil([&] { return reader.caret(found["Password"]) == 0; }));
    for (const std::string& said : {reader.heard(), reader.answers()}) {
        for (const std::string part :
             {"Quartz", "Kiwi", "Fig", "'Q", "'K'", "'i'", "'w'", "'F'", "'g'"}) {
            EXPECT_EQ(said.find(part), std::string::npos) << part;
        }
    }
    EXPECT_NE(reader.heard().find("●"), std::string::npos);
}

}  // namespace orvane::tests
