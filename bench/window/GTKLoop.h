#pragma once

#include <gtk/gtk.h>

#include <functional>

namespace bench {

// The frames and the main loop of a GTK window.
class GTKLoop {
public:
    // For a window that has been presented.
    explicit GTKLoop(GtkWidget* window) {
        g_signal_connect_swapped(gtk_widget_get_frame_clock(window), "paint",
                                 G_CALLBACK(+[](GTKLoop* self) { ++self->frames_; }), this);
    }
    GTKLoop(const GTKLoop&) = delete;
    GTKLoop& operator=(const GTKLoop&) = delete;

    int framesShown() const { return frames_; }

    // Calls `tick` every `interval` milliseconds, if there is one.
    static void run(double seconds, unsigned interval, const std::function<void()>& tick) {
        GMainLoop* const loop = g_main_loop_new(nullptr, FALSE);
        unsigned ticks = 0;
        if (tick) {
            ticks = g_timeout_add(
                interval,
                [](void* work) -> gboolean {
                    (*static_cast<const std::function<void()>*>(work))();
                    return G_SOURCE_CONTINUE;
                },
                const_cast<std::function<void()>*>(&tick));
        }
        // A tick that takes longer than the interval must not keep the end away.
        g_timeout_add_full(
            G_PRIORITY_HIGH, static_cast<unsigned>(seconds * 1000),
            [](void* data) -> gboolean {
                g_main_loop_quit(static_cast<GMainLoop*>(data));
                return G_SOURCE_REMOVE;
            },
            loop, nullptr);
        g_main_loop_run(loop);
        if (ticks != 0) {
            g_source_remove(ticks);
        }
        g_main_loop_unref(loop);
    }

private:
    int frames_ = 0;
};

}  // namespace bench
