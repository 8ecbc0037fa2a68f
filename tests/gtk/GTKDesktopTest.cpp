#include <gio/gio.h>
#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <thread>

#include "platform/appkit/NSDesktop.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

using platform::NSDesktop;

namespace {

constexpr const char* kInterfaces = R"(<node>
  <interface name='org.freedesktop.portal.Settings'>
    <method name='ReadAll'>
      <arg type='as' direction='in'/><arg type='a{sa{sv}}' direction='out'/>
    </method>
  </interface>
  <interface name='org.freedesktop.Notifications'>
    <method name='Notify'>
      <arg type='s' direction='in'/><arg type='u' direction='in'/><arg type='s' direction='in'/>
      <arg type='s' direction='in'/><arg type='s' direction='in'/><arg type='as' direction='in'/>
      <arg type='a{sv}' direction='in'/><arg type='i' direction='in'/>
      <arg type='u' direction='out'/>
    </method>
    <method name='CloseNotification'><arg type='u' direction='in'/></method>
  </interface>
</node>)";

// The portal and the daemon of a desktop, on a thread of their own, because some calls of a program
// wait for the answer.
class Services {
public:
    Services() {
        serve();
        thread_ = std::thread([this] {
            g_main_context_push_thread_default(context_);
            g_main_loop_run(loop_);
            g_main_context_pop_thread_default(context_);
        });
    }
    ~Services() {
        g_main_loop_quit(loop_);
        thread_.join();
        g_object_unref(bus_);
        g_main_loop_unref(loop_);
        g_main_context_unref(context_);
    }
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

    void emit(const char* path, const char* interface, const char* name, GVariant* arguments) {
        g_dbus_connection_emit_signal(bus_, nullptr, path, interface, name, arguments, nullptr);
    }
    // What was asked of the daemon last.
    std::string asked() const {
        const std::scoped_lock lock(mutex_);
        return asked_;
    }

private:
    void serve() {
        g_main_context_push_thread_default(context_);
        char* const address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
        bus_ = g_dbus_connection_new_for_address_sync(
            address,
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr);
        g_free(address);
        GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(kInterfaces, nullptr);
        static const GDBusInterfaceVTable table = {&answer, nullptr, nullptr, {}};
        const char* const places[][2] = {
            {"org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"},
            {"org.freedesktop.Notifications", "/org/freedesktop/Notifications"}};
        for (std::size_t i = 0; i < 2; ++i) {
            g_dbus_connection_register_object(bus_, places[i][1], node->interfaces[i], &table, this,
                                              nullptr, nullptr);
            g_variant_unref(g_dbus_connection_call_sync(
                bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                "RequestName", g_variant_new("(su)", places[i][0], 0), nullptr,
                G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        }
        g_dbus_node_info_unref(node);
        g_main_context_pop_thread_default(context_);
    }
    static void answer(GDBusConnection*, const char*, const char*, const char*, const char* method,
                       GVariant* arguments, GDBusMethodInvocation* invocation, void* self) {
        GVariant* reply = nullptr;
        if (std::string(method) == "ReadAll") {
            reply = g_variant_new_parsed(
                "({'org.freedesktop.appearance': {'color-scheme': <uint32 1>, "
                "'accent-color': <(0.2, 0.4, 0.6)>, 'contrast': <uint32 0>}},)");
        } else {
            auto& services = *static_cast<Services*>(self);
            char* const text = g_variant_print(arguments, FALSE);
            const std::scoped_lock lock(services.mutex_);
            services.asked_ = std::string(method) + text;
            g_free(text);
            reply = std::string(method) == "Notify" ? g_variant_new("(u)", 7) : nullptr;
        }
        g_dbus_method_invocation_return_value(invocation, reply);
        g_main_context_wakeup(nullptr);  // a test waits for what was asked
    }

    GMainContext* context_ = g_main_context_new();
    GMainLoop* loop_ = g_main_loop_new(context_, FALSE);
    GDBusConnection* bus_ = nullptr;
    mutable std::mutex mutex_;
    std::string asked_;
    std::thread thread_;
};

}  // namespace

TEST_F(WindowTest, TheAppearanceAndNotificationsAreThoseOfTheSessionBus) {
    Services services;
    NSDesktop& program = NSDesktop::current();
    EXPECT_TRUE(program.appearance().isDark);
    EXPECT_EQ(program.appearance().accentColor, 0xFF336699);
    int changes = 0;
    NSDesktop::setAppearanceHandler(this, [&] { ++changes; });
    for (const char* const value : {"<(9.0, 0.0, 0.0)>", "<uint32 2>"}) {
        const bool isColor = value[1] == '(';
        services.emit(
            "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged",
            g_variant_new("(ss@v)", "org.freedesktop.appearance",
                          isColor ? "accent-color" : "color-scheme", g_variant_new_parsed(value)));
    }
    EXPECT_TRUE(desktop::runUntil([&] { return changes == 2; }));
    EXPECT_FALSE(program.appearance().isDark);
    EXPECT_EQ(program.appearance().accentColor, platform::NSAppearance().accentColor);
    NSDesktop::setAppearanceHandler(this, {});

    int pressed = 0;
    const auto deliver = [&](const std::string& text) {
        program.deliver({"mail", "Mail", text}, [&] { ++pressed; });
        EXPECT_TRUE(desktop::runUntil(
            [&] { return services.asked().find(text.substr(0, 3)) != std::string::npos; }));
    };
    const auto press = [&] {
        services.emit("/org/freedesktop/Notifications", "org.freedesktop.Notifications",
                      "ActionInvoked", g_variant_new("(us)", 7, "default"));
    };
    deliver("one <b>");
    EXPECT_NE(services.asked().find("0, '', 'Mail', 'one &lt;b&gt;', ['default', '']"),
              std::string::npos)
        << services.asked();
    desktop::runUntil([] { return false; }, 0.1);  // the number of the notification arrives
    deliver("two");
    EXPECT_NE(services.asked().find(" 7, '', 'Mail', 'two'"), std::string::npos)
        << services.asked();
    press();
    EXPECT_TRUE(desktop::runUntil([&] { return pressed == 1; }));
    program.withdraw("mail");
    EXPECT_TRUE(desktop::runUntil([&] { return services.asked() == "CloseNotification(7,)"; }));
}

}  // namespace orvane::tests
