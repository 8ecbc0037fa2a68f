#pragma once

#include <gio/gio.h>

#include <array>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/gtk/Desktop.h"

namespace orvane::tests {

struct Unref {
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GDBusConnection* connection) const { g_object_unref(connection); }
};
using Value = std::unique_ptr<GVariant, Unref>;

// An object on the accessibility bus: the name of the program and the path.
using Accessible = std::pair<std::string, std::string>;

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
            subscription_ = g_dbus_connection_signal_subscribe(
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
    ~Reader() {
        if (bus_) {
            g_dbus_connection_signal_unsubscribe(bus_.get(), subscription_);
        }
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
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
    // Where it is in its window: x, y, width and height.
    std::array<int, 4> extents(const Accessible& object) {
        std::array<int, 4> result{};
        if (const Value reply =
                call(object, "org.a11y.atspi.Component", "GetExtents", g_variant_new("(u)", 1))) {
            g_variant_get(reply.get(), "((iiii))", &result[0], &result[1], &result[2], &result[3]);
        }
        return result;
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
            for (const Accessible& child : children(object)) {
                pending.push_back(child);
            }
        }
        return found;
    }

    std::vector<Accessible> children(const Accessible& object) {
        std::vector<Accessible> found;
        if (const Value reply = call(object, "org.a11y.atspi.Accessible", "GetChildren")) {
            GVariantIter* iterator = nullptr;
            g_variant_get(reply.get(), "(a(so))", &iterator);
            const char* bus = nullptr;
            const char* path = nullptr;
            while (g_variant_iter_next(iterator, "(&s&o)", &bus, &path) != FALSE) {
                found.emplace_back(bus, path);
            }
            g_variant_iter_free(iterator);
        }
        return found;
    }
    bool hasState(const Accessible& object, unsigned state) {
        const Value reply = call(object, "org.a11y.atspi.Accessible", "GetState");
        unsigned bits[2] = {};
        if (reply) {
            const Value list(g_variant_get_child_value(reply.get(), 0));
            for (std::size_t i = 0; i < 2; ++i) {
                g_variant_get_child(list.get(), i, "u", &bits[i]);
            }
        }
        return (bits[state / 32] >> state % 32 & 1) != 0;
    }
    // What a screen reader would say of an object and of what is in it, one object a line: the
    // role, the name, the description, the states and the actions.
    std::string tree(const Accessible& object, const std::string& indent = {}) {
        constexpr const char* accessible = "org.a11y.atspi.Accessible";
        std::string text = indent + string(object, accessible, "GetRoleName");
        text += " '" + name(object) + "'";
        const Value about = property(object, accessible, "Description");
        if (const char* const described = about ? g_variant_get_string(about.get(), nullptr) : "";
            *described != 0) {
            text += std::string(" (") + described + ")";
        }
        constexpr std::pair<unsigned, const char*> states[] = {
            {4, " checked"}, {10, " expanded"}, {12, " focused"}, {23, " selected"}};
        for (const auto& [state, word] : states) {
            text += hasState(object, state) ? word : "";
        }
        const Value count = property(object, "org.a11y.atspi.Action", "NActions");
        for (int i = 0; count && i < g_variant_get_int32(count.get()); ++i) {
            text += " [" +
                    string(object, "org.a11y.atspi.Action", "GetName", g_variant_new("(i)", i)) +
                    "]";
        }
        text += "\n";
        for (const Accessible& child : children(object)) {
            text += tree(child, indent + "  ");
        }
        return text;
    }
    // Every program on the bus.
    std::vector<Accessible> programs() {
        return children({"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"});
    }

private:
    std::unique_ptr<GDBusConnection, Unref> bus_;
    unsigned subscription_ = 0;
    std::string heard_;
    std::string answers_;
};

}  // namespace orvane::tests
