#include <gio/gio.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/appkit/NSTextField.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

using platform::NSTextField;
using Kind = NSTextField::Kind;

struct Unref {
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GDBusConnection* connection) const { g_object_unref(connection); }
};
using Value = std::unique_ptr<GVariant, Unref>;

// An object on the accessibility bus: the name of the program and the path.
using Accessible = std::pair<std::string, std::string>;

// ATSPI_ROLE_TEXT and ATSPI_ROLE_PASSWORD_TEXT.
constexpr unsigned kTextRole = 61;
constexpr unsigned kPasswordRole = 40;

// What a screen reader is to the program: another party on the real accessibility bus. The program
// answers in its main loop, so all calls wait in it.
class Reader {
public:
    Reader() {
        const std::unique_ptr<GDBusConnection, Unref> session(
            g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
        if (!session) {
            return;
        }
        const Value reply(g_dbus_connection_call_sync(
            session.get(), "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", nullptr,
            nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        if (!reply) {
            return;
        }
        const char* address = nullptr;
        g_variant_get(reply.get(), "(&s)", &address);
        bus_.reset(g_dbus_connection_new_for_address_sync(
            address,
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr));
        if (bus_) {
            g_dbus_connection_signal_subscribe(
                bus_.get(), nullptr, nullptr, nullptr, nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
                [](GDBusConnection*, const char*, const char*, const char*, const char* name,
                   GVariant* arguments, void* self) {
                    char* const text = g_variant_print(arguments, FALSE);
                    static_cast<Reader*>(self)->heard_ += std::string(name) + text + "\n";
                    g_free(text);
                },
                this, nullptr);
        }
    }
    bool isConnected() const { return bus_ != nullptr; }
    // All announcements so far.
    const std::string& heard() const { return heard_; }

    Value call(const Accessible& object, const char* interface, const char* method,
               GVariant* arguments = nullptr) {
        GAsyncResult* result = nullptr;
        g_dbus_connection_call(
            bus_.get(), object.first.c_str(), object.second.c_str(), interface, method, arguments,
            nullptr, G_DBUS_CALL_FLAGS_NONE, 5000, nullptr,
            [](GObject*, GAsyncResult* finished, void* place) {
                *static_cast<GAsyncResult**>(place) =
                    static_cast<GAsyncResult*>(g_object_ref(finished));
            },
            &result);
        desktop::runUntil([&] { return result != nullptr; });
        GVariant* const reply = g_dbus_connection_call_finish(bus_.get(), result, nullptr);
        g_object_unref(result);
        if (reply != nullptr) {
            char* const text = g_variant_print(reply, FALSE);
            answers_ += std::string(text) + "\n";
            g_free(text);
        }
        return Value(reply);
    }
    // All answers so far.
    const std::string& answers() const { return answers_; }

    std::string string(const Accessible& object, const char* interface, const char* method,
                       GVariant* arguments = nullptr) {
        const Value reply = call(object, interface, method, arguments);
        const char* text = "";
        if (reply) {
            g_variant_get(reply.get(), "(&s)", &text);
        }
        return text;
    }
    Value property(const Accessible& object, const char* interface, const char* name) {
        const Value reply = call(object, "org.freedesktop.DBus.Properties", "Get",
                                 g_variant_new("(ss)", interface, name));
        GVariant* value = nullptr;
        if (reply) {
            g_variant_get(reply.get(), "(v)", &value);
        }
        return Value(value);
    }
    std::string name(const Accessible& object) {
        const Value value = property(object, "org.a11y.atspi.Accessible", "Name");
        return value ? g_variant_get_string(value.get(), nullptr) : "";
    }
    unsigned role(const Accessible& object) {
        const Value reply = call(object, "org.a11y.atspi.Accessible", "GetRole");
        unsigned number = 0;
        if (reply) {
            g_variant_get(reply.get(), "(u)", &number);
        }
        return number;
    }
    std::string text(const Accessible& object) {
        const Value count = property(object, "org.a11y.atspi.Text", "CharacterCount");
        return string(object, "org.a11y.atspi.Text", "GetText",
                      g_variant_new("(ii)", 0, count ? g_variant_get_int32(count.get()) : 0));
    }
    int caret(const Accessible& object) {
        const Value value = property(object, "org.a11y.atspi.Text", "CaretOffset");
        return value ? g_variant_get_int32(value.get()) : -1;
    }

    // Finds the objects with a name, in the whole tree of all programs.
    std::map<std::string, Accessible> byName() {
        std::map<std::string, Accessible> found;
        std::vector<Accessible> pending{
            {"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"}};
        std::set<Accessible> seen;
        while (!pending.empty()) {
            const Accessible object = pending.back();
            pending.pop_back();
            if (!seen.insert(object).second) {
                continue;
            }
            if (const std::string label = name(object); !label.empty()) {
                found.emplace(label, object);
            }
            const Value children = call(object, "org.a11y.atspi.Accessible", "GetChildren");
            if (children) {
                GVariantIter* iterator = nullptr;
                g_variant_get(children.get(), "(a(so))", &iterator);
                const char* bus = nullptr;
                const char* path = nullptr;
                while (g_variant_iter_next(iterator, "(&s&o)", &bus, &path) != FALSE) {
                    pending.emplace_back(bus, path);
                }
                g_variant_iter_free(iterator);
            }
        }
        return found;
    }

private:
    std::unique_ptr<GDBusConnection, Unref> bus_;
    std::string heard_;
    std::string answers_;
};

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
