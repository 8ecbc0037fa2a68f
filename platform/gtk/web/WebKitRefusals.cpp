#include "platform/gtk/web/WebKitRefusals.h"

#include <algorithm>
#include <array>

#include "platform/foundation/NSLog.h"
#include "platform/web/NSWebPage.h"

namespace orvane::platform {

namespace {

const char* nameOf(WebKitPermissionRequest* request) {
    if (WEBKIT_IS_GEOLOCATION_PERMISSION_REQUEST(request) != FALSE) {
        return "its position";
    }
    if (WEBKIT_IS_USER_MEDIA_PERMISSION_REQUEST(request) != FALSE) {
        return "a camera or a microphone";
    }
    if (WEBKIT_IS_NOTIFICATION_PERMISSION_REQUEST(request) != FALSE) {
        return "notifications";
    }
    if (WEBKIT_IS_CLIPBOARD_PERMISSION_REQUEST(request) != FALSE) {
        return "the clipboard";
    }
    return "something that it is not permitted";
}

gboolean refusePermission(WebKitWebView* view, WebKitPermissionRequest* request, gpointer) {
    const char* const address = webkit_web_view_get_uri(view);
    NSLog("The page %s was refused %s", shownAddress(address != nullptr ? address : "").c_str(),
          nameOf(request));
    webkit_permission_request_deny(request);
    return TRUE;
}

void refuseDownload(WebKitNetworkSession*, WebKitDownload* download, gpointer) {
    const char* const address = webkit_uri_request_get_uri(webkit_download_get_request(download));
    NSLog("The download of %s was refused", shownAddress(address).c_str());
    webkit_download_cancel(download);
}

gboolean refuse() {
    return TRUE;
}

gboolean shortenMenu(WebKitWebView*, WebKitContextMenu* menu, WebKitHitTestResult*, gpointer) {
    constexpr std::array refused = {WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK_IN_NEW_WINDOW,
                                    WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_LINK_TO_DISK,
                                    WEBKIT_CONTEXT_MENU_ACTION_OPEN_IMAGE_IN_NEW_WINDOW,
                                    WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_IMAGE_TO_DISK,
                                    WEBKIT_CONTEXT_MENU_ACTION_OPEN_FRAME_IN_NEW_WINDOW,
                                    WEBKIT_CONTEXT_MENU_ACTION_OPEN_VIDEO_IN_NEW_WINDOW,
                                    WEBKIT_CONTEXT_MENU_ACTION_OPEN_AUDIO_IN_NEW_WINDOW,
                                    WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_VIDEO_TO_DISK,
                                    WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_AUDIO_TO_DISK};
    for (guint i = webkit_context_menu_get_n_items(menu); i-- > 0;) {
        WebKitContextMenuItem* const item = webkit_context_menu_get_item_at_position(menu, i);
        if (std::ranges::find(refused, webkit_context_menu_item_get_stock_action(item)) !=
            refused.end()) {
            webkit_context_menu_remove(menu, item);
        }
    }
    return FALSE;
}

}  // namespace

void refusePowers(WebKitWebView* view) {
    g_signal_connect(view, "permission-request", G_CALLBACK(refusePermission), nullptr);
    g_signal_connect(view, "enter-fullscreen", G_CALLBACK(refuse), nullptr);
    g_signal_connect(view, "print", G_CALLBACK(refuse), nullptr);
    g_signal_connect(view, "context-menu", G_CALLBACK(shortenMenu), nullptr);
    // A session with a folder is shared by several views.
    WebKitNetworkSession* const session = webkit_web_view_get_network_session(view);
    g_signal_handlers_disconnect_by_func(session, reinterpret_cast<gpointer>(refuseDownload),
                                         nullptr);
    g_signal_connect(session, "download-started", G_CALLBACK(refuseDownload), nullptr);
}

}  // namespace orvane::platform
