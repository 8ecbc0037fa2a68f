#include "platform/gtk/GTKPicture.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace orvane::platform {

namespace {

graphene_rect_t toPoints(const NSBackingRect& rect, double pixelsPerPoint) {
    const CGRect points = rect.toPoints(pixelsPerPoint);
    return {{static_cast<float>(points.origin.x), static_cast<float>(points.origin.y)},
            {static_cast<float>(points.size.width), static_cast<float>(points.size.height)}};
}

void appendNode(const GskRenderNodePointer& node, GtkSnapshot* snapshot) {
    if (node) {
        gtk_snapshot_append_node(snapshot, node.get());
    }
}

// Makes a container of nodes, and leaves the vector empty.
GskRenderNodePointer wrap(std::vector<GskRenderNode*>& nodes) {
    GskRenderNodePointer container(
        gsk_container_node_new(nodes.data(), static_cast<unsigned>(nodes.size())));
    std::ranges::for_each(nodes, gsk_render_node_unref);
    nodes.clear();
    return container;
}

}  // namespace

GTKPicture::~GTKPicture() {
    show(nullptr, {}, false, 1);
}

void GTKPicture::show(std::shared_ptr<const std::uint32_t[]> pixels, const NSBackingRect& area,
                      bool isOpaque, double pixelsPerPoint) {
    if (pixels == pixels_ && area == area_ && isOpaque == isOpaque_ &&
        pixelsPerPoint == pixelsPerPoint_) {
        return;
    }
    // GTK may hold the node for another frame. Cairo then copies the pixels for it when the surface
    // goes: they must still be there.
    node_.reset();
    if (surface_ != nullptr) {
        cairo_surface_destroy(std::exchange(surface_, nullptr));
    }
    pixels_ = std::move(pixels);
    area_ = area;
    isOpaque_ = isOpaque;
    pixelsPerPoint_ = pixelsPerPoint;
    if (!pixels_) {
        return;
    }
    const int width = static_cast<int>(area.width());
    // Cairo only reads what is the source of a drawing.
    auto* const data =
        const_cast<unsigned char*>(reinterpret_cast<const unsigned char*>(pixels_.get()));
    surface_ = cairo_image_surface_create_for_data(
        data, isOpaque ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, width,
        static_cast<int>(area.height()), width * 4);
    const graphene_rect_t bounds = toPoints(area, pixelsPerPoint);
    node_.reset(gsk_cairo_node_new(&bounds));
    cairo_t* const canvas = gsk_cairo_node_get_draw_context(node_.get());
    cairo_scale(canvas, 1 / pixelsPerPoint, 1 / pixelsPerPoint);
    cairo_set_source_surface(canvas, surface_, static_cast<double>(area.left),
                             static_cast<double>(area.top));
    cairo_paint(canvas);
    cairo_destroy(canvas);
}

void GTKPicture::append(GtkSnapshot* snapshot) const {
    appendNode(node_, snapshot);
}

void GTKDamage::set(std::span<const NSBackingRect> rects, double pixelsPerPoint) {
    // GTK gives up comparing the children of a container, and draws all of it, when many of them
    // differ. So the nodes are in containers of a few.
    constexpr std::size_t groupSize = 8;
    // A node that equals the one of the frame before would not be drawn again.
    isOdd_ = !isOdd_;
    const GdkRGBA transparent = {isOdd_ ? 1.0F : 0.0F, 0, 0, 0};
    std::vector<GskRenderNode*> groups;
    std::vector<GskRenderNode*> group;
    for (const NSBackingRect& rect : rects) {
        const graphene_rect_t bounds = toPoints(rect, pixelsPerPoint);
        group.push_back(gsk_color_node_new(&transparent, &bounds));
        if (group.size() == groupSize) {
            groups.push_back(wrap(group).release());
        }
    }
    if (!group.empty()) {
        groups.push_back(wrap(group).release());
    }
    node_ = wrap(groups);
}

void GTKDamage::append(GtkSnapshot* snapshot) const {
    appendNode(node_, snapshot);
}

}  // namespace orvane::platform
