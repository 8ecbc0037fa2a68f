#include "platform/gtk/GTKToplevel.h"

#include <gtk/gtk.h>
#include <gtkmm/window.h>
#ifdef GDK_WINDOWING_X11
#include <gdk/x11/gdkx.h>
#endif

#include <utility>

#include "platform/foundation/NSLog.h"
#include "platform/gtk/GTKWindow.h"
#include "platform/gtk/toExtent.h"

namespace orvane::platform {

GTKToplevel::GTKToplevel(Gtk::Window& window, GTKWindow& content, std::function<void()> close)
    : window_(window), content_(content), close_(std::move(close)) {
    handlers_[0] = g_signal_connect(window_.gobj(), "close-request",
                                    G_CALLBACK(+[](GtkWindow*, GTKToplevel* self) -> gboolean {
                                        self->content_.performClose();
                                        return TRUE;  // the program destroys the window
                                    }),
                                    this);
    handlers_[1] = g_signal_connect(
        window_.gobj(), "notify::fullscreened",
        G_CALLBACK(+[](GtkWindow* changed, GParamSpec*, GTKToplevel* self) {
            self->content_.fullScreenDidChange(gtk_window_is_fullscreen(changed) != FALSE);
        }),
        this);
    handlers_[2] = g_signal_connect_after(
        window_.gobj(), "realize",
        G_CALLBACK(+[](GtkWindow*, GTKToplevel* self) { self->showIcon(); }), this);
    content_.setHost(this);
}

GTKToplevel::~GTKToplevel() {
    content_.setHost(nullptr);
    for (const unsigned long handler : handlers_) {
        g_signal_handler_disconnect(window_.gobj(), handler);
    }
    g_clear_object(&icon_);
}

bool GTKToplevel::setTitle(const std::string& title) {
    if (g_utf8_validate(title.data(), static_cast<gssize>(title.size()), nullptr) == FALSE) {
        NSLog("The title of a window must be UTF-8");
        return false;
    }
    window_.set_title(title);
    return true;
}

bool GTKToplevel::setIcon(const std::string& picture) {
#ifdef GDK_WINDOWING_X11
    if (!GDK_IS_X11_DISPLAY(gdk_display_get_default())) {
        return false;
    }
    GBytes* const bytes = g_bytes_new(picture.data(), picture.size());
    GdkTexture* const texture = gdk_texture_new_from_bytes(bytes, nullptr);
    g_bytes_unref(bytes);
    if (texture == nullptr) {
        NSLog("The icon of a window must be the bytes of a PNG or JPEG picture");
        return false;
    }
    g_clear_object(&icon_);
    icon_ = texture;
    showIcon();
    return true;
#else
    return false;
#endif
}

void GTKToplevel::showIcon() {
    GdkSurface* const surface = gtk_native_get_surface(GTK_NATIVE(window_.gobj()));
    if (icon_ != nullptr && surface != nullptr) {
        GList icons = {icon_, nullptr, nullptr};
        gdk_toplevel_set_icon_list(GDK_TOPLEVEL(surface), &icons);
    }
}

bool GTKToplevel::setApplicationIdentifier(const std::string& identifier) {
    // GDK gives it to a window when it creates it.
    if (identifier.empty() || window_.get_realized()) {
        return false;
    }
    g_set_prgname(identifier.c_str());
#ifdef GDK_WINDOWING_X11
    if (GdkDisplay* const display = gdk_display_get_default(); GDK_IS_X11_DISPLAY(display)) {
        gdk_x11_display_set_program_class(display, identifier.c_str());
    }
#endif
    return true;
}

bool GTKToplevel::setMinimumSize(CGSize size) {
    content_.widget().set_size_request(toExtent(size.width), toExtent(size.height));
    return true;
}

bool GTKToplevel::setFullScreen(bool isFullScreen) {
    if (isFullScreen) {
        window_.fullscreen();
    } else {
        window_.unfullscreen();
    }
    return true;
}

bool GTKToplevel::close() {
    close_();
    return true;
}

}  // namespace orvane::platform
