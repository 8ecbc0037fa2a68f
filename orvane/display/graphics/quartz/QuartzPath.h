#pragma once

#include "orvane/display/graphics/Path.h"
#include "orvane/display/graphics/quartz/QuartzPathFillStyleable.h"
#include "orvane/display/graphics/quartz/QuartzShape.h"

namespace orvane::display::graphics::quartz {

// A path on the canvas. The outline is the only record of what was drawn.
class QuartzPath : public virtual Path,
                   public virtual QuartzShape,
                   public virtual QuartzPathFillStyleable {
public:
    std::string getDescription() const override { return "QuartzPath"; }

    void start() override;
    void finish() override;
    void move(float x, float y, bool flag) override;
    void line(float x, float y, bool flag) override;
    void cubicCurve(float x, float y, float c1x, float c1y, float c2x, float c2y,
                    bool flag) override;
    void quadCurve(float x, float y, float cx, float cy, bool flag) override;
    void arc(float x, float y, float rx, float ry, float rotation, float start,
             float delta) override;
    void close() override;

protected:
    PathWrapper& getPathWrapper() override { return path_; }
};

}  // namespace orvane::display::graphics::quartz
