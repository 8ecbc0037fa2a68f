#include "platform/gtk/web/createWebKitView.h"

#include <gtk/gtk.h>

#include <map>

#include "platform/gtk/GTKControl.h"

namespace orvane::platform {

namespace {

// Returns a reference.
WebKitNetworkSession* sessionFor(const std::string& folder) {
    if (folder.empty()) {
        return webkit_network_session_new_ephemeral();
    }
    static std::map<std::string, WebKitNetworkSession*> sessions;  // until the process ends
    WebKitNetworkSession*& session = sessions[folder];
    if (session == nullptr) {
        session =
            webkit_network_session_new((folder + "/data").c_str(), (folder + "/cache").c_str());
        webkit_cookie_manager_set_persistent_storage(
            webkit_network_session_get_cookie_manager(session), (folder + "/cookies").c_str(),
            WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
    }
    return WEBKIT_NETWORK_SESSION(g_object_ref(session));
}

// What differs from WebKit's own values: a page in an application does less than one in a browser.
WebKitSettings* createSettings() {
    WebKitSettings* const settings = webkit_settings_new();
    webkit_settings_set_enable_fullscreen(settings, FALSE);
    webkit_settings_set_enable_media_stream(settings, FALSE);
    webkit_settings_set_enable_webrtc(settings, FALSE);
    webkit_settings_set_enable_encrypted_media(settings, FALSE);
    webkit_settings_set_media_playback_requires_user_gesture(settings, TRUE);
    // With a rasterizer for GL, WebKit leaves old pictures on screen and loses presses.
    if (!GTKControl::hasHardwareGL()) {
        webkit_settings_set_hardware_acceleration_policy(settings,
                                                         WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
        webkit_settings_set_enable_webgl(settings, FALSE);
    }
    return settings;
}

}  // namespace

WebKitWebView* createWebKitView(const std::string& dataFolder) {
    WebKitNetworkSession* const session = sessionFor(dataFolder);
    webkit_network_session_set_itp_enabled(session, TRUE);
    WebKitSettings* const settings = createSettings();
    auto* const view = WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "network-session",
                                                    session, "settings", settings, nullptr));
    g_object_ref_sink(view);
    g_object_unref(settings);
    g_object_unref(session);
    return view;
}

}  // namespace orvane::platform
