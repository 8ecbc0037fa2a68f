#include "platform/gtk/GTKRenderer.h"

#include <epoxy/gl.h>
#include <glib.h>
#include <gtk/gtk.h>
#include <gtkmm/widget.h>

// After GTK's.
#include <gsk/gskcairorenderer.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace orvane::platform {

namespace {

constexpr const char* kRendererVariable = "GSK_RENDERER";

// Whether the system has a device that GL could use. False is certain, true is not: another program
// may own the device.
bool hasGPUDevice() {
    using std::filesystem::directory_iterator;
    constexpr std::array<std::string_view, 5> names = {"nvidia", "mali", "dxg", "kgsl", "pvr"};
    std::error_code error;
    for (const auto& entry : directory_iterator("/dev/dri", error)) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("renderD") || name.starts_with("card")) {
            return true;
        }
    }
    for (const auto& entry : directory_iterator("/dev", error)) {
        const std::string name = entry.path().filename().string();
        if (std::ranges::any_of(names, [&](auto prefix) { return name.starts_with(prefix); })) {
            return true;
        }
    }
    return false;
}

// The names that Mesa, ANGLE and others give to rasterizers that run on the processor.
bool isSoftware(std::string_view renderer) {
    constexpr std::array<std::string_view, 6> names = {"llvmpipe", "softpipe",    "swrast",
                                                       "Software", "SwiftShader", "OpenSWR"};
    return std::ranges::any_of(
        names, [&](auto name) { return renderer.find(name) != std::string_view::npos; });
}

bool findHardwareGL(GdkDisplay& display) {
    if (!hasGPUDevice()) {
        return false;
    }
    GdkGLContext* const context = gdk_display_create_gl_context(&display, nullptr);
    if (context == nullptr) {
        return false;
    }
    bool isHardware = false;
    if (gdk_gl_context_realize(context, nullptr) != FALSE) {
        gdk_gl_context_make_current(context);
        const auto* const name = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
        isHardware = name != nullptr && !isSoftware(name);
        gdk_gl_context_clear_current();
    }
    g_object_unref(context);
    return isHardware;
}

}  // namespace

bool hasHardwareGL(GdkDisplay& display) {
    static const bool isThere = findHardwareGL(display);
    return isThere;
}

GTKRendererKind rendererKind(Gtk::Widget& widget) {
    GskRenderer* const renderer = gtk_native_get_renderer(gtk_widget_get_native(widget.gobj()));
    return GSK_IS_CAIRO_RENDERER(renderer) ? GTKRendererKind::Processor : GTKRendererKind::GPU;
}

void chooseRenderer(GdkDisplay& display) {
    if (g_getenv(kRendererVariable) != nullptr) {
        return;
    }
    if (!hasHardwareGL(display)) {
        g_setenv(kRendererVariable, "cairo", FALSE);
    }
}

void disableSoftwareGL() {
    if (g_getenv(kRendererVariable) != nullptr || hasGPUDevice()) {
        return;
    }
    constexpr const char* variable = "GDK_DEBUG";
    const char* const set = g_getenv(variable);
    const std::string flags = set != nullptr ? std::string(set) + ",gl-disable" : "gl-disable";
    g_setenv(variable, flags.c_str(), TRUE);
}

}  // namespace orvane::platform
