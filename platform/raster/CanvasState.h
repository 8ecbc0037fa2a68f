#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/raster/BitmapPainter.h"
#include "platform/raster/CurrentPath.h"
#include "platform/raster/DrawablePainter.h"
#include "platform/raster/GraphicsState.h"
#include "platform/raster/GroupPicture.h"
#include "platform/raster/ShapeCoverage.h"

namespace orvane::platform {

class CGDrawable;
class CGGradient;
class CGImage;
class PixelSource;

// What a bitmap canvas remembers between two calls, and the painting with it: the stack of graphics
// states, the antialiased shapes of the clip, the current path, and the groups that have begun. It
// decides what is painted where; BitmapPainter and DrawablePainter write the pixels.
//
// CGBitmapContext translates the calls of CGContext into calls of this class.
class CanvasState {
public:
    // Paints on `bitmap`, whose pixels are `owned` or belong to the caller. `base` maps user space
    // to pixels.
    CanvasState(const Bitmap& bitmap, std::vector<std::uint32_t> owned,
                const CGAffineTransform& base);
    ~CanvasState();
    CanvasState(const CanvasState&) = delete;
    CanvasState& operator=(const CanvasState&) = delete;

    // The pixels of the innermost group, or of the canvas if no group has begun.
    const Bitmap& bitmap() { return target().painter.bitmap(); }
    // The innermost graphics state, which the caller may change.
    GraphicsState& state() { return states_[depth_]; }

    void save();
    // Does nothing at the bottom of the stack.
    void restore();

    // ---- the path and the clip ----
    CurrentPath& path() { return path_; }
    // Returns the current path and empties it.
    CurrentPath::Shape takePath();
    // The next clipToPath uses the stroke of the path, with the state as it is now.
    void strokePathForClip() { stroke_ = state(); }
    // Clips to the current path or to its stroke, and empties the path.
    void clipToPath();
    void clip(const ShapeCoverage& shape);

    // ---- painting ----
    // What a shape, or the inside of a rectangle of user space, covers in the current state.
    ShapeCoverage coverageOf(const CurrentPath::Shape& shape, Coverage coverage);
    ShapeCoverage coverageOf(const CGRect& rect);
    void paint(const ShapeCoverage& shape, const GraphicsState::Paint& paint);
    // Fills the clip.
    void paint(const PixelSource& source);
    // Whether the gradient would be visible.
    bool showsGradient(const CGGradient& gradient);
    void drawImage(const CGRect& rect, const CGImage& image);
    void draw(const CGDrawable& drawable);

    // ---- groups: see CGContext ----
    void beginGroup(const CGRect& area, const CGGroupStyle& style);
    std::shared_ptr<const CGGroup> endGroup();
    bool drawGroup(const CGGroup& group, const CGAffineTransform& transform, double opacity);

    // The text matrix is not part of the graphics state.
    CGAffineTransform textMatrix;

private:
    // What is painted on.
    struct Target {
        explicit Target(const Bitmap& bitmap) : painter(bitmap), drawables(painter) {}
        BitmapPainter painter;
        DrawablePainter drawables;
    };
    // A group that has begun, and the state of the canvas around it.
    struct Group;

    Target& target();
    Clip currentClip() { return {state().clipBounds, clipShapes_}; }

    std::vector<std::uint32_t> owned_;
    Target canvas_;
    std::vector<std::unique_ptr<Group>> groups_;
    std::vector<GraphicsState> states_;
    std::size_t depth_ = 0;
    std::vector<ShapeCoverage> clipShapes_;
    // The dash of each clip shape that is a stroke; shorter than clipShapes_ if the last ones are
    // not.
    std::vector<std::vector<double>> clipDashes_;
    CurrentPath path_;
    std::optional<GraphicsState> stroke_;
};

}  // namespace orvane::platform
