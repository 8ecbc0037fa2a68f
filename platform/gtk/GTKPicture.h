#pragma once

#include <gsk/gsk.h>
#include <gtkmm/snapshot.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "platform/appkit/NSBackingRect.h"

namespace orvane::platform {

// Owns a render node.
struct GskRenderNodeUnref {
    void operator()(GskRenderNode* node) const { gsk_render_node_unref(node); }
};
using GskRenderNodePointer = std::unique_ptr<GskRenderNode, GskRenderNodeUnref>;

// Pixels that a Cairo node refers to and that change under it: showing them copies nothing.
//
// GTK draws a node again only when it is another node than in the frame before. So a change of the
// pixels must be reported by a GTKDamage.
class GTKPicture {
public:
    GTKPicture() = default;
    ~GTKPicture();
    GTKPicture(const GTKPicture&) = delete;
    GTKPicture& operator=(const GTKPicture&) = delete;

    // Shows `pixels` (premultiplied ARGB, packed rows; null for nothing) at `area`, in pixels of
    // the window. An opaque picture is drawn faster. `pixelsPerPoint` is the number of pixels per
    // unit of GTK's coordinates.
    void show(std::shared_ptr<const std::uint32_t[]> pixels, const NSBackingRect& area,
              bool isOpaque, double pixelsPerPoint);
    void append(GtkSnapshot* snapshot) const;

private:
    std::shared_ptr<const std::uint32_t[]> pixels_;
    NSBackingRect area_;
    bool isOpaque_ = false;
    double pixelsPerPoint_ = 1;
    cairo_surface_t* surface_ = nullptr;
    GskRenderNodePointer node_;
};

// Transparent nodes at the parts of a picture that GTK must draw again.
class GTKDamage {
public:
    // Replaces the damage of the last frame. The rectangles are in pixels of the window.
    void set(std::span<const NSBackingRect> rects, double pixelsPerPoint);
    void append(GtkSnapshot* snapshot) const;

private:
    GskRenderNodePointer node_;
    bool isOdd_ = false;  // the number of the frame
};

}  // namespace orvane::platform
