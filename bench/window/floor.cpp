// The least that a GTK window can cost: kept render nodes and the same damage, with nothing behind
// them, drawn by GTK's Cairo renderer.
//   bench_window_floor move COUNT MOVING | turn COUNT | drag COUNT | idle COUNT | list RIVAL |
//   start
#include <cairo.h>
#include <gtk/gtk.h>
#include <malloc.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "bench/window/GTKLoop.h"
#include "bench/window/Scenes.h"

namespace {

// A widget that draws what a function appends. GTK's own drawing area would not keep nodes.
using Append = std::function<void(GtkSnapshot*)>;
struct Canvas {
    GtkWidget parent;
    Append* append;
};
struct CanvasClass {
    GtkWidgetClass parent;
};
G_DEFINE_TYPE(Canvas, canvas, GTK_TYPE_WIDGET)
void canvas_init(Canvas*) {}
void canvas_class_init(CanvasClass* type) {
    type->parent.snapshot = [](GtkWidget* widget, GtkSnapshot* snapshot) {
        (*reinterpret_cast<Canvas*>(widget)->append)(snapshot);
    };
}

cairo_surface_t* makeSurface(int width, int height, cairo_format_t format = CAIRO_FORMAT_ARGB32) {
    return cairo_image_surface_create(format, width, height);
}

void drawShape(cairo_surface_t* surface, int i, double x, double y) {
    using bench::kSide;
    cairo_t* const canvas = cairo_create(surface);
    const unsigned color = bench::shapeColor(i);
    if (i % 2 == 0) {
        cairo_rectangle(canvas, x, y, kSide, kSide);
    } else {
        cairo_arc(canvas, x + kSide / 2, y + kSide / 2, kSide / 2, 0, 2 * M_PI);
    }
    cairo_set_source_rgb(canvas, (color >> 16U & 255U) / 255.0, (color >> 8U & 255U) / 255.0,
                         (color & 255U) / 255.0);
    cairo_fill_preserve(canvas);
    cairo_set_source_rgb(canvas, 0, 0, 0);
    cairo_set_line_width(canvas, 1);
    cairo_stroke(canvas);
    cairo_destroy(canvas);
}

// A node that shows a surface.
GskRenderNode* makeNode(cairo_surface_t* surface, double x, double y, double width, double height) {
    const graphene_rect_t bounds = {{static_cast<float>(x), static_cast<float>(y)},
                                    {static_cast<float>(width), static_cast<float>(height)}};
    GskRenderNode* const node = gsk_cairo_node_new(&bounds);
    cairo_t* const canvas = gsk_cairo_node_get_draw_context(node);
    cairo_set_source_surface(canvas, surface, x, y);
    cairo_paint(canvas);
    cairo_destroy(canvas);
    return node;
}

class FloorStage final : public bench::WindowStage {
public:
    explicit FloorStage(cairo_format_t format = CAIRO_FORMAT_ARGB32)
        : picture_(makeSurface(bench::kWidth, bench::kHeight, format)) {
        widget_ = GTK_WIDGET(g_object_new(canvas_get_type(), nullptr));
        reinterpret_cast<Canvas*>(widget_)->append = &append_;
        gtk_window_set_decorated(GTK_WINDOW(toplevel_), FALSE);
        gtk_window_set_default_size(GTK_WINDOW(toplevel_), bench::kWidth, bench::kHeight);
        gtk_window_set_child(GTK_WINDOW(toplevel_), widget_);
    }

    void addShape(int i) override {
        const bench::Place place = bench::place(i);
        drawShape(picture_, i, place.x, place.y);
        places_.push_back(place);
    }
    void move(int i, const bench::Place& place) override {
        bench::Place& last = places_[static_cast<std::size_t>(i)];
        damage(last, place);
        last = place;
        gtk_widget_queue_draw(widget_);
    }
    void addTurning(int i) override {
        const int side = static_cast<int>(bench::kSide) + 2;
        cairo_surface_t* const surface = makeSurface(side, side);
        drawShape(surface, i, 1, 1);
        layers_.push_back({bench::place(i), makeNode(surface, -side / 2, -side / 2, side, side)});
    }
    void turn(double radians) override {
        angle_ = radians;
        gtk_widget_queue_draw(widget_);
    }
    void makeDraggable(int i) override { dragged_ = i; }
    void sendPointer(bench::Pointer what, const bench::Place& place) override {
        if (what == bench::Pointer::Drag) {
            move(dragged_, place);
        }
    }
    void run(double seconds, const std::function<void()>& tick) override {
        if (!loop_) {
            // The picture is complete: from here on it is only referred to.
            node_ = makeNode(picture_, 0, 0, bench::kWidth, bench::kHeight);
            gtk_window_present(GTK_WINDOW(toplevel_));
            loop_.emplace(toplevel_);
        }
        bench::GTKLoop::run(seconds, bench::kTickMilliseconds, tick);
    }
    int framesShown() const override { return loop_->framesShown(); }
    void damageAll() {
        damage_.push_back({{0, 0}, {bench::kWidth, bench::kHeight}});
        gtk_widget_queue_draw(widget_);
    }

private:
    // The old and the new place of what moves are one rectangle: movers take small steps.
    void damage(const bench::Place& from, const bench::Place& to) {
        const auto low = [](double a, double b) { return std::floor(std::min(a, b)) - 1; };
        const auto high = [](double a, double b) {
            return std::ceil(std::max(a, b) + bench::kSide) + 1;
        };
        const double left = low(from.x, to.x);
        const double top = low(from.y, to.y);
        damage_.push_back({{static_cast<float>(left), static_cast<float>(top)},
                           {static_cast<float>(high(from.x, to.x) - left),
                            static_cast<float>(high(from.y, to.y) - top)}});
    }
    // Appends transparent nodes where GTK is to draw the picture again. GTK stops comparing the
    // children of a container, and draws all of it, when many of them differ: containers of a few.
    void appendDamage(GtkSnapshot* snapshot) {
        constexpr std::size_t group = 8;
        // A node that is equal in two frames is not drawn: each frame has a color of its own.
        const GdkRGBA transparent = {static_cast<float>(loop_->framesShown() % 2), 0, 0, 0};
        std::vector<GskRenderNode*> groups;
        for (std::size_t first = 0; first < damage_.size(); first += group) {
            std::array<GskRenderNode*, group> nodes{};
            const std::size_t count = std::min(group, damage_.size() - first);
            for (std::size_t i = 0; i < count; ++i) {
                nodes[i] = gsk_color_node_new(&transparent, &damage_[first + i]);
            }
            groups.push_back(gsk_container_node_new(nodes.data(), static_cast<unsigned>(count)));
            std::for_each_n(nodes.begin(), count, gsk_render_node_unref);
        }
        GskRenderNode* const all =
            gsk_container_node_new(groups.data(), static_cast<unsigned>(groups.size()));
        std::for_each(groups.begin(), groups.end(), gsk_render_node_unref);
        gtk_snapshot_append_node(snapshot, all);
        gsk_render_node_unref(all);
        damage_.clear();
    }
    void append(GtkSnapshot* snapshot) {
        gtk_snapshot_append_node(snapshot, node_);
        appendDamage(snapshot);
        for (const auto& [place, node] : layers_) {
            const graphene_point_t middle = {static_cast<float>(place.x + bench::kSide / 2),
                                             static_cast<float>(place.y + bench::kSide / 2)};
            gtk_snapshot_save(snapshot);
            gtk_snapshot_translate(snapshot, &middle);
            gtk_snapshot_rotate(snapshot, static_cast<float>(angle_ * 180 / M_PI));
            gtk_snapshot_append_node(snapshot, node);
            gtk_snapshot_restore(snapshot);
        }
    }

    GtkWidget* toplevel_ = gtk_window_new();
    GtkWidget* widget_ = nullptr;
    Append append_ = [this](GtkSnapshot* snapshot) { append(snapshot); };
    std::optional<bench::GTKLoop> loop_;
    cairo_surface_t* picture_;
    GskRenderNode* node_ = nullptr;
    std::vector<bench::Place> places_;
    std::vector<std::pair<bench::Place, GskRenderNode*>> layers_;
    std::vector<graphene_rect_t> damage_;
    double angle_ = 0;
    int dragged_ = 0;
};

// An opaque picture, all of which GTK draws in each frame.
class FloorList final : public bench::WindowList {
public:
    // Something must be drawn: Cairo leaves out a surface that was never drawn on.
    FloorList() { stage_.addShape(0); }

    void scrollBy(int) override { stage_.damageAll(); }
    void run(double seconds, const std::function<void()>& tick) override {
        stage_.run(seconds, tick);
    }
    int framesShown() const override { return stage_.framesShown(); }

private:
    FloorStage stage_{CAIRO_FORMAT_RGB24};
};

}  // namespace

int main(int argc, char** argv) {
    // GTK's copies of the window are reused, as in a program that has released as much memory once.
    mallopt(M_MMAP_THRESHOLD, 64 << 20);
    mallopt(M_TRIM_THRESHOLD, 64 << 20);
    g_setenv("GSK_RENDERER", "cairo", FALSE);
    g_setenv("GDK_DEBUG", "gl-disable", FALSE);
    gtk_init();
    if (argc > 2 && std::strcmp(argv[1], "list") == 0) {
        FloorList list;
        bench::measureScrolling(list, argv[2]);
        return 0;
    }
    FloorStage stage;
    if (argc > 1 && std::strcmp(argv[1], "start") == 0) {
        stage.addShape(0);
        stage.run(0, nullptr);
        while (stage.framesShown() == 0) {
            g_main_context_iteration(nullptr, TRUE);
        }
        bench::reportStart();
        return 0;
    }
    bench::measureWindow(stage, argc, argv);
    return 0;
}
