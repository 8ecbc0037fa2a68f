#pragma once

#include <gdk/gdk.h>

namespace Gtk {
class Widget;
}

namespace orvane::platform {

// What draws a window for GTK.
enum class GTKRendererKind { Processor, GPU };

// Whether a GPU executes GL on a display. The first call may create a context. False if there is no
// GL, or a software rasterizer.
bool hasHardwareGL(GdkDisplay& display);

// Returns the renderer of the window that a realized widget is in.
GTKRendererKind rendererKind(Gtk::Widget& widget);

// Makes GTK use its Cairo renderer if GL on the display is missing or is a software rasterizer.
// Does nothing if GSK_RENDERER is set. It must be called before the program's first window is
// realized, because GTK reads that variable once.
void chooseRenderer(GdkDisplay& display);

// Keeps GTK from loading a software rasterizer for GL if the machine has no GPU. It must be called
// before GTK is initialized. Does nothing if GSK_RENDERER is set.
void disableSoftwareGL();

}  // namespace orvane::platform
