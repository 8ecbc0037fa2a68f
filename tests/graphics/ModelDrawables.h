#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "orvane/display/graphics/ClipContainer.h"
#include "orvane/display/graphics/Container.h"
#include "orvane/display/graphics/Shape.h"

namespace orvane::display::graphics {

using Box = geometry::Rect<double>;
using Log = std::vector<std::string>;

// A group or a clip container whose bracket goes into a log instead of onto a canvas.
template <typename Base>
class Logging : public virtual Base {
public:
    Logging(std::string name, Log& log) : name_(std::move(name)), log_(log) {}

protected:
    void storeState() override { note("store"); }
    void clipRect(const Box& r) override {
        std::ostringstream text;
        text << "clip " << r.x << ' ' << r.y << ' ' << r.width << ' ' << r.height;
        note(text.str());
    }
    void applyTransform() override { note("transform"); }
    void restoreState() override { note("restore"); }

    void note(const std::string& what) { log_.push_back(name_ + ": " + what); }

private:
    std::string name_;
    Log& log_;
};

class LoggingShape : public Logging<Shape> {
public:
    using Logging::Logging;

    geometry::Rect<double> getInnerBounds() override { return box; }
    void setFillColor(unsigned, unsigned, unsigned, unsigned) override {}
    void setFillColor(unsigned) override {}
    void setFillColor(const LinearGradient&) override {}
    void setPattern(const Pattern&) override {}
    void setStrokeColor(int, int, int, int) override {}
    void setStrokeColor(unsigned) override {}
    void setStrokeColor(const LinearGradient&) override {}
    bool isFillVisible() const override { return fillVisible; }
    bool isStrokeVisible() const override { return strokeVisible; }

    Box box{0, 0, 10, 10};
    bool fillVisible = true;
    bool strokeVisible = true;

protected:
    void doValidate(const Box&) override { note("paint"); }
};

}  // namespace orvane::display::graphics
