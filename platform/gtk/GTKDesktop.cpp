#include "platform/gtk/GTKDesktop.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "platform/foundation/AsyncCallback.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/sessionBus.h"
#include "platform/gtk/GTKFilePanel.h"

namespace orvane::platform {

namespace {

// The session bus must answer fast; the desktop may be busy starting a portal.
constexpr int kPatience = 250;  // milliseconds

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";
constexpr const char* kSettings = "org.freedesktop.portal.Settings";
constexpr const char* kAppearance = "org.freedesktop.appearance";
constexpr const char* kDaemon = "org.freedesktop.Notifications";
constexpr const char* kDaemonPath = "/org/freedesktop/Notifications";

GdkClipboard* clipboard() {
    return gdk_display_get_clipboard(gdk_display_get_default());
}

void logAndFree(const char* what, GError* error) {
    NSLog("%s: %s", what, error != nullptr ? error->message : "no answer");
    g_clear_error(&error);
}

}  // namespace

GTKDesktop::~GTKDesktop() {
    if (settingsHandler_ != 0) {
        g_signal_handler_disconnect(gtk_settings_get_default(), settingsHandler_);
    }
    if (bus_ != nullptr) {
        for (const unsigned subscription : {portalSubscription_, daemonSubscription_}) {
            if (subscription != 0) {
                g_dbus_connection_signal_unsubscribe(bus_, subscription);
            }
        }
        g_object_unref(bus_);
    }
}

GDBusConnection* GTKDesktop::bus() {
    if (bus_ != nullptr || isBusMissing_) {
        return bus_;
    }
    GError* error = nullptr;
    if (hasSessionBus()) {
        bus_ = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error);
    }
    if (bus_ == nullptr) {
        isBusMissing_ = true;
        logAndFree("There is no session bus, so no notifications and no settings of the desktop",
                   error);
    } else {
        g_dbus_connection_set_exit_on_close(bus_, FALSE);
    }
    return bus_;
}

// ---- the clipboard ----

void GTKDesktop::copyText(const std::string& text) {
    gdk_clipboard_set_text(clipboard(), text.c_str());
}

bool GTKDesktop::copyPicture(const std::string& bytes) {
    GBytes* const data = g_bytes_new(bytes.data(), bytes.size());
    GdkTexture* const texture = gdk_texture_new_from_bytes(data, nullptr);
    g_bytes_unref(data);
    if (texture == nullptr) {
        return false;
    }
    gdk_clipboard_set_texture(clipboard(), texture);
    g_object_unref(texture);
    return true;
}

void GTKDesktop::pasteText(std::function<void(std::string)> completion) {
    auto* const pending = makeAsyncCallback([completion = std::move(completion)](
                                                GObject* source, GAsyncResult* result) {
        char* const text = gdk_clipboard_read_text_finish(GDK_CLIPBOARD(source), result, nullptr);
        completion(text != nullptr ? text : "");
        g_free(text);
    });
    gdk_clipboard_read_text_async(clipboard(), nullptr, &pending->call, pending);
}

void GTKDesktop::pastePicture(std::function<void(std::string)> completion) {
    auto* const pending = makeAsyncCallback(
        [completion = std::move(completion)](GObject* source, GAsyncResult* result) {
            GdkTexture* const texture =
                gdk_clipboard_read_texture_finish(GDK_CLIPBOARD(source), result, nullptr);
            std::string picture;
            if (texture != nullptr) {
                GBytes* const bytes = gdk_texture_save_to_png_bytes(texture);
                picture.assign(static_cast<const char*>(g_bytes_get_data(bytes, nullptr)),
                               g_bytes_get_size(bytes));
                g_bytes_unref(bytes);
                g_object_unref(texture);
            }
            completion(std::move(picture));
        });
    gdk_clipboard_read_texture_async(clipboard(), nullptr, &pending->call, pending);
}

// ---- dialogs and addresses ----

void GTKDesktop::runOpenPanel(const NSFilePanel& panel,
                              std::function<void(std::vector<std::string>)> completion) {
    GTKFilePanel::run(panel, GTKFilePanel::Kind::Open, widget_, std::move(completion));
}

void GTKDesktop::runSavePanel(const NSFilePanel& panel,
                              std::function<void(std::string)> completion) {
    GTKFilePanel::run(panel, GTKFilePanel::Kind::Save, widget_,
                      [completion = std::move(completion)](const std::vector<std::string>& paths) {
                          completion(paths.empty() ? std::string() : paths.front());
                      });
}

void GTKDesktop::openURL(const std::string& url, std::function<void(bool)> completion) {
    auto* const pending = makeAsyncCallback(
        [completion = std::move(completion), url](GObject*, GAsyncResult* result) {
            GError* error = nullptr;
            const bool isOpen = g_app_info_launch_default_for_uri_finish(result, &error) != FALSE;
            if (!isOpen) {
                logAndFree(("The address '" + url + "' cannot be opened").c_str(), error);
            }
            completion(isOpen);
        });
    g_app_info_launch_default_for_uri_async(url.c_str(), nullptr, nullptr, &pending->call, pending);
}

// ---- notifications ----

void GTKDesktop::deliver(const NSUserNotification& notification, std::function<void()> pressed) {
    GDBusConnection* const connection = bus();
    if (connection == nullptr) {
        return;
    }
    if (daemonSubscription_ == 0) {
        daemonSubscription_ = g_dbus_connection_signal_subscribe(
            connection, nullptr, kDaemon, nullptr, kDaemonPath, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
            [](GDBusConnection*, const char*, const char*, const char*, const char* name,
               GVariant* arguments,
               void* self) { static_cast<GTKDesktop*>(self)->hearFromDaemon(name, arguments); },
            this, nullptr);
    }
    std::uint32_t replaced = 0;
    if (!notification.tag.empty()) {
        const auto before = std::ranges::find_if(
            shown_, [&](const auto& entry) { return entry.second.tag == notification.tag; });
        replaced = before != shown_.end() ? before->first : 0;
    }
    GVariantBuilder actions;
    g_variant_builder_init(&actions, G_VARIANT_TYPE("as"));
    if (pressed) {
        g_variant_builder_add(&actions, "s", "default");
        g_variant_builder_add(&actions, "s", "");
    }
    GVariantBuilder hints;
    g_variant_builder_init(&hints, G_VARIANT_TYPE("a{sv}"));
    if (const char* const program = g_get_prgname()) {
        g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string(program));
    }
    const char* const name = g_get_application_name();
    char* const text = g_markup_escape_text(notification.text.c_str(), -1);
    GVariant* const arguments =
        g_variant_new("(susssasa{sv}i)", name != nullptr ? name : "", replaced, "",
                      notification.title.c_str(), text, &actions, &hints, -1);
    g_free(text);
    // The daemon may answer after this object has gone.
    auto* const pending =
        makeAsyncCallback([this, alive = std::weak_ptr<bool>(alive_), tag = notification.tag,
                           pressed = std::move(pressed)](GObject* source, GAsyncResult* result) {
            GError* error = nullptr;
            GVariant* const reply =
                g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error);
            if (reply == nullptr) {
                logAndFree("The notification cannot be shown", error);
                return;
            }
            std::uint32_t number = 0;
            g_variant_get(reply, "(u)", &number);
            g_variant_unref(reply);
            if (!alive.expired()) {
                shown_[number] = {tag, pressed};
            }
        });
    g_dbus_connection_call(connection, kDaemon, kDaemonPath, kDaemon, "Notify", arguments,
                           G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
                           &pending->call, pending);
}

void GTKDesktop::withdraw(const std::string& tag) {
    for (const auto& [number, shown] : shown_) {
        if (!tag.empty() && shown.tag == tag) {
            g_dbus_connection_call(bus_, kDaemon, kDaemonPath, kDaemon, "CloseNotification",
                                   g_variant_new("(u)", number), nullptr, G_DBUS_CALL_FLAGS_NONE,
                                   -1, nullptr, nullptr, nullptr);
        }
    }
}

void GTKDesktop::hearFromDaemon(const std::string& signal, GVariant* arguments) {
    std::uint32_t number = 0;
    if (g_variant_n_children(arguments) != 2) {
        return;
    }
    g_variant_get_child(arguments, 0, "u", &number);
    const auto found = shown_.find(number);
    if (found == shown_.end()) {
        return;
    }
    if (signal == "NotificationClosed") {
        shown_.erase(found);
    } else if (signal == "ActionInvoked" && found->second.pressed) {
        const std::function<void()> pressed = found->second.pressed;
        pressed();
    }
}

// ---- the appearance ----

NSAppearance GTKDesktop::appearance() {
    watchAppearance();
    NSAppearance appearance;
    GtkSettings* const settings = gtk_settings_get_default();
    gboolean prefersDark = FALSE;
    gboolean animates = TRUE;
    char* theme = nullptr;
    char* font = nullptr;
    int dotsPerInch = -1;
    g_object_get(settings, "gtk-application-prefer-dark-theme", &prefersDark,
                 "gtk-enable-animations", &animates, "gtk-theme-name", &theme, "gtk-font-name",
                 &font, "gtk-xft-dpi", &dotsPerInch, nullptr);
    const std::string themeName = theme != nullptr ? theme : "";
    g_free(theme);
    appearance.isDark = portalScheme_ > 0 ? portalScheme_ == 1
                                          : prefersDark != FALSE || themeName.ends_with("-dark") ||
                                                themeName.ends_with("-Dark");
    appearance.reducesMotion = portalMotion_ > 0 || animates == FALSE;
    if (portalAccent_ != 0) {
        appearance.accentColor = portalAccent_;
    }
    if (PangoFontDescription* const description =
            pango_font_description_from_string(font != nullptr ? font : "")) {
        if (const char* const family = pango_font_description_get_family(description)) {
            appearance.font = family;
        }
        // A point of type is 1/72 of an inch, one of a view 1/96.
        const double size = pango_font_description_get_size(description) / double{PANGO_SCALE};
        if (size > 0) {
            appearance.textSize = pango_font_description_get_size_is_absolute(description) != FALSE
                                      ? size
                                      : size * 96 / 72;
        }
        pango_font_description_free(description);
    }
    g_free(font);
    constexpr double kUsualDotsPerInch = 96 * 1024;  // in the unit of the setting
    if (dotsPerInch > 0) {
        appearance.textScale = dotsPerInch / kUsualDotsPerInch;
    }
    lastAppearance_ = appearance;
    return appearance;
}

void GTKDesktop::watchAppearance() {
    if (std::exchange(watchesAppearance_, true)) {
        return;
    }
    settingsHandler_ =
        g_signal_connect(gtk_settings_get_default(), "notify",
                         G_CALLBACK(+[](GtkSettings*, GParamSpec*, GTKDesktop* self) {
                             if (self->lastAppearance_ != self->appearance()) {
                                 self->appearanceDidChange();
                             }
                         }),
                         this);
    GDBusConnection* const connection = bus();
    if (connection == nullptr) {
        return;
    }
    portalSubscription_ = g_dbus_connection_signal_subscribe(
        connection, nullptr, kSettings, "SettingChanged", kPortalPath, kAppearance,
        G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, const char*, const char*,
           GVariant* arguments, void* self) {
            if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(ssv)")) == FALSE) {
                return;
            }
            const char* key = nullptr;
            GVariant* value = nullptr;
            g_variant_get(arguments, "(&s&sv)", nullptr, &key, &value);
            static_cast<GTKDesktop*>(self)->takeSetting(key, value);
            g_variant_unref(value);
            static_cast<GTKDesktop*>(self)->appearanceDidChange();
        },
        this, nullptr);
    readPortal();
}

// A portal that is slow to start answers too late for this; what it says then is learned with its
// next change.
void GTKDesktop::readPortal() {
    const char* const names[] = {kAppearance, nullptr};
    GError* error = nullptr;
    GVariant* const reply = g_dbus_connection_call_sync(
        bus_, kPortal, kPortalPath, kSettings, "ReadAll", g_variant_new("(^as)", names),
        G_VARIANT_TYPE("(a{sa{sv}})"), G_DBUS_CALL_FLAGS_NONE, kPatience, nullptr, &error);
    if (reply == nullptr) {
        logAndFree("The desktop's portal does not say what the user prefers", error);
        return;
    }
    GVariantIter* spaces = nullptr;
    g_variant_get(reply, "(a{sa{sv}})", &spaces);
    GVariantIter* settings = nullptr;
    while (g_variant_iter_next(spaces, "{&sa{sv}}", nullptr, &settings) != FALSE) {
        const char* key = nullptr;
        GVariant* value = nullptr;
        while (g_variant_iter_next(settings, "{&sv}", &key, &value) != FALSE) {
            takeSetting(key, value);
            g_variant_unref(value);
        }
        g_variant_iter_free(settings);
    }
    g_variant_iter_free(spaces);
    g_variant_unref(reply);
}

// The names and values are those of the portal's namespace org.freedesktop.appearance.
void GTKDesktop::takeSetting(const char* key, GVariant* value) {
    const bool isNumber = g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32) != FALSE;
    if (g_str_equal(key, "color-scheme") != FALSE && isNumber) {
        portalScheme_ = static_cast<int>(g_variant_get_uint32(value));
    } else if (g_str_equal(key, "reduced-motion") != FALSE && isNumber) {
        portalMotion_ = static_cast<int>(g_variant_get_uint32(value));
    } else if (g_str_equal(key, "accent-color") != FALSE &&
               g_variant_is_of_type(value, G_VARIANT_TYPE("(ddd)")) != FALSE) {
        double parts[3] = {};
        g_variant_get(value, "(ddd)", &parts[0], &parts[1], &parts[2]);
        std::uint32_t color = 0xFF;
        bool isColor = true;  // others say that there is none
        for (const double part : parts) {
            isColor = isColor && part >= 0 && part <= 1;
            color = color << 8 | static_cast<std::uint32_t>(isColor ? part * 255 + 0.5 : 0);
        }
        portalAccent_ = isColor ? color : 0;
    }
}

}  // namespace orvane::platform
