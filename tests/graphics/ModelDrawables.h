#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "orvane/display/graphics/ClipContainer.h"
#include "orvane/display/graphics/Container.h"
#include "orvane/display/graphics/Shape.h"

namespace orvane::display::graphics {

// Kinds whose bracket goes into a log instead of onto a canvas.

using Log = std::vector<std::string>;

class LoggingDrawable : public virtual Drawable {
public:
    LoggingDrawable(std::string name, Log& log) : name_(std::move(name)), log_(log) {}

protected:
    void storeState() override { logCall("store"); }
    void clipRect(const geometry::Rect<double>& r) override {
        std::ostringstream text;
        text << "clip " << r.x << ' ' << r.y << ' ' << r.width << ' ' << r.height;
        logCall(text.str());
    }
    void applyTransform() override { logCall("transform"); }
    void restoreState() override { logCall("restore"); }

    void logCall(const std::string& what) { log_.push_back(name_ + ": " + what); }

private:
    std::string name_;
    Log& log_;
};

class LoggingContainer : public virtual Container, public virtual LoggingDrawable {
public:
    LoggingContainer(const std::string& name, Log& log) : LoggingDrawable(name, log) {}
};

class LoggingClipContainer : public virtual ClipContainer, public virtual LoggingDrawable {
public:
    LoggingClipContainer(const std::string& name, Log& log) : LoggingDrawable(name, log) {}
};

class LoggingShape : public virtual Shape, public virtual LoggingDrawable {
public:
    LoggingShape(const std::string& name, Log& log) : LoggingDrawable(name, log) {}

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

    geometry::Rect<double> box{0, 0, 10, 10};
    bool fillVisible = true;
    bool strokeVisible = true;

protected:
    void doValidate(const geometry::Rect<double>&) override { logCall("paint"); }
};

}  // namespace orvane::display::graphics
