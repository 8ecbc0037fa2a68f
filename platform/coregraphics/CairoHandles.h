#pragma once

#include <cairo.h>

#include <memory>

namespace orvane::platform {

struct CairoRelease {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_path_t* path) const { cairo_path_destroy(path); }
};

// Owning handles of Cairo's objects, for the modules that draw through Cairo.
using CairoContext = std::unique_ptr<cairo_t, CairoRelease>;
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoRelease>;
using CairoPath = std::unique_ptr<cairo_path_t, CairoRelease>;

}  // namespace orvane::platform
