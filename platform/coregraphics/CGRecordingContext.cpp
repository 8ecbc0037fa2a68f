#include "platform/coregraphics/CGRecordingContext.h"

#include <ostream>
#include <sstream>
#include <utility>

#include "platform/coregraphics/CGDrawable.h"
#include "platform/coregraphics/CGGradient.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/CGPath.h"
#include "platform/coregraphics/Outline.h"

namespace orvane::platform {

namespace recorded {

namespace {

// Formats an outline's segments. Numbers have up to six significant digits.
class SegmentWriter {
public:
    void moveTo(CGPoint p) { write('M', {p}); }
    void lineTo(CGPoint p) { write('L', {p}); }
    void curveTo(CGPoint c1, CGPoint c2, CGPoint p) { write('C', {c1, c2, p}); }
    void close() { write('Z', {}); }

    std::string text() const { return out_.str(); }

private:
    void write(char verb, std::initializer_list<CGPoint> points) {
        if (out_.tellp() > 0) {
            out_ << ' ';
        }
        out_ << verb;
        for (const CGPoint& p : points) {
            out_ << ' ' << p.x << ' ' << p.y;
        }
    }

    std::ostringstream out_;
};

// Separates the arguments of one call by commas and adds the closing parenthesis.
class CallPrinter {
public:
    CallPrinter(std::ostream& out, const char* name) : out_(out) { out_ << name << '('; }
    ~CallPrinter() { out_ << ')'; }
    CallPrinter(const CallPrinter&) = delete;
    CallPrinter& operator=(const CallPrinter&) = delete;

    template <typename... Arguments>
    CallPrinter& operator()(const Arguments&... arguments) {
        (next(arguments), ...);
        return *this;
    }

private:
    template <typename T>
    void next(const T& value) {
        if (std::exchange(some_, true)) {
            out_ << ", ";
        }
        print(value);
    }

    template <typename T>
    void print(const T& value) {
        out_ << value;
    }
    void print(CGPoint p) { out_ << p.x << ' ' << p.y; }
    void print(const CGRect& r) {
        print(r.origin);
        out_ << ' ' << r.size.width << 'x' << r.size.height;
    }
    void print(const CGColor& c) {
        out_ << c.red << ' ' << c.green << ' ' << c.blue << ' ' << c.alpha;
    }
    void print(const CGAffineTransform& t) {
        out_ << t.a << ' ' << t.b << ' ' << t.c << ' ' << t.d << ' ' << t.tx << ' ' << t.ty;
    }
    template <typename T>
    void print(const std::vector<T>& values) {
        out_ << '[';
        const char* separator = "";
        for (const T& value : values) {
            out_ << separator;
            print(value);
            separator = "; ";
        }
        out_ << ']';
    }

    std::ostream& out_;
    bool some_ = false;
};

struct Printer {
    std::ostream& out;

    void operator()(const SaveGState&) const { call("saveGState"); }
    void operator()(const RestoreGState&) const { call("restoreGState"); }
    void operator()(const TranslateCTM& c) const { call("translateCTM", c.tx, c.ty); }
    void operator()(const ScaleCTM& c) const { call("scaleCTM", c.sx, c.sy); }
    void operator()(const ConcatCTM& c) const { call("concatCTM", c.transform); }
    void operator()(const ClipToRect& c) const { call("clipToRect", c.rect); }
    void operator()(const Clip&) const { call("clip"); }
    void operator()(const SetRGBFillColor& c) const { call("setRGBFillColor", c.color); }
    void operator()(const SetRGBStrokeColor& c) const { call("setRGBStrokeColor", c.color); }
    void operator()(const SetLineWidth& c) const { call("setLineWidth", c.width); }
    void operator()(const SetLineDash& c) const { call("setLineDash", c.phase, c.lengths); }
    void operator()(const MoveToPoint& c) const { call("moveToPoint", c.point); }
    void operator()(const AddLineToPoint& c) const { call("addLineToPoint", c.point); }
    void operator()(const AddRect& c) const { call("addRect", c.rect); }
    void operator()(const AddPath& c) const { call("addPath", c.outline.segments); }
    void operator()(const DrawPath& c) const { call("drawPath", static_cast<int>(c.mode)); }
    void operator()(const StrokePath&) const { call("strokePath"); }
    void operator()(const DrawLinearGradient& c) const {
        call("drawLinearGradient", c.colors, c.locations, c.start, c.end, c.options);
    }
    void operator()(const ReplacePathWithStrokedPath&) const { call("replacePathWithStrokedPath"); }
    void operator()(const DrawRadialGradient& c) const {
        call("drawRadialGradient", c.colors, c.locations, c.startCenter, c.startRadius, c.endCenter,
             c.endRadius, c.options);
    }
    void operator()(const DrawConicGradient& c) const {
        call("drawConicGradient", c.colors, c.locations, c.center, c.angle);
    }
    void operator()(const BeginGroup& c) const {
        call("beginGroup", c.area, c.style.opacity, c.style.blurRadius, c.style.shadow.offset.width,
             c.style.shadow.offset.height, c.style.shadow.radius, c.style.shadow.color,
             c.style.transform);
    }
    void operator()(const EndGroup&) const { call("endGroup"); }
    void operator()(const DrawImage& c) const { call("drawImage", c.rect, c.width, c.height); }
    void operator()(const SetTextMatrix& c) const { call("setTextMatrix", c.matrix); }
    void operator()(const DrawLine& c) const { call("drawLine", c.description); }
    void operator()(const DrawFrame& c) const { call("drawFrame", c.description); }

private:
    template <typename... Arguments>
    void call(const char* name, const Arguments&... arguments) const {
        CallPrinter{out, name}(arguments...);
    }
};

}  // namespace

std::ostream& operator<<(std::ostream& out, const Call& call) {
    std::visit(Printer{out}, call);
    return out;
}

Outline outlineOf(const CGPath& path) {
    SegmentWriter writer;
    path.outline()->emit(writer);
    return {writer.text()};
}

}  // namespace recorded

std::vector<CGRecordingContext::Call> CGRecordingContext::takeCalls() {
    return std::exchange(calls_, {});
}

void CGRecordingContext::saveGState() {
    calls_.push_back(recorded::SaveGState{});
}

void CGRecordingContext::restoreGState() {
    calls_.push_back(recorded::RestoreGState{});
}

void CGRecordingContext::translateCTM(double tx, double ty) {
    calls_.push_back(recorded::TranslateCTM{tx, ty});
}

void CGRecordingContext::scaleCTM(double sx, double sy) {
    calls_.push_back(recorded::ScaleCTM{sx, sy});
}

void CGRecordingContext::concatCTM(const CGAffineTransform& transform) {
    calls_.push_back(recorded::ConcatCTM{transform});
}

CGSize CGRecordingContext::unitsInDevicePixels() const {
    return {1, 1};
}

void CGRecordingContext::clipToRect(const CGRect& rect) {
    calls_.push_back(recorded::ClipToRect{rect});
}

void CGRecordingContext::clip() {
    calls_.push_back(recorded::Clip{});
}

void CGRecordingContext::setRGBFillColor(double r, double g, double b, double a) {
    calls_.push_back(recorded::SetRGBFillColor{{r, g, b, a}});
}

void CGRecordingContext::setRGBStrokeColor(double r, double g, double b, double a) {
    calls_.push_back(recorded::SetRGBStrokeColor{{r, g, b, a}});
}

void CGRecordingContext::setLineWidth(double width) {
    calls_.push_back(recorded::SetLineWidth{width});
}

void CGRecordingContext::setLineDash(double phase, std::span<const double> lengths) {
    calls_.push_back(recorded::SetLineDash{phase, {lengths.begin(), lengths.end()}});
}

void CGRecordingContext::moveToPoint(double x, double y) {
    calls_.push_back(recorded::MoveToPoint{{x, y}});
}

void CGRecordingContext::addLineToPoint(double x, double y) {
    calls_.push_back(recorded::AddLineToPoint{{x, y}});
}

void CGRecordingContext::addRect(const CGRect& rect) {
    calls_.push_back(recorded::AddRect{rect});
}

void CGRecordingContext::addPath(const CGPath& path) {
    calls_.push_back(recorded::AddPath{recorded::outlineOf(path)});
}

void CGRecordingContext::drawPath(CGPathDrawingMode mode) {
    calls_.push_back(recorded::DrawPath{mode});
}

void CGRecordingContext::strokePath() {
    calls_.push_back(recorded::StrokePath{});
}

namespace {

template <typename Call>
Call withStops(Call call, const CGGradient& gradient) {
    for (const CGGradient::Stop& stop : gradient.stops()) {
        call.colors.push_back(stop.color);
        call.locations.push_back(stop.location);
    }
    return call;
}

}  // namespace

void CGRecordingContext::replacePathWithStrokedPath() {
    calls_.push_back(recorded::ReplacePathWithStrokedPath{});
}

void CGRecordingContext::drawLinearGradient(const CGGradient& gradient, CGPoint start, CGPoint end,
                                            unsigned options) {
    calls_.push_back(
        withStops(recorded::DrawLinearGradient{{}, {}, start, end, options}, gradient));
}

void CGRecordingContext::drawRadialGradient(const CGGradient& gradient, CGPoint startCenter,
                                            double startRadius, CGPoint endCenter, double endRadius,
                                            unsigned options) {
    calls_.push_back(withStops(
        recorded::DrawRadialGradient{
            {}, {}, startCenter, startRadius, endCenter, endRadius, options},
        gradient));
}

void CGRecordingContext::drawConicGradient(const CGGradient& gradient, CGPoint center,
                                           double angle) {
    calls_.push_back(withStops(recorded::DrawConicGradient{{}, {}, center, angle}, gradient));
}

void CGRecordingContext::beginGroup(const CGRect& area, const CGGroupStyle& style) {
    calls_.push_back(recorded::BeginGroup{area, style});
}

std::shared_ptr<const CGGroup> CGRecordingContext::endGroup() {
    calls_.push_back(recorded::EndGroup{});
    return nullptr;
}

bool CGRecordingContext::drawGroup(const CGGroup&, const CGAffineTransform&, double) {
    return false;
}

void CGRecordingContext::drawImage(const CGRect& rect, const CGImage& image) {
    calls_.push_back(recorded::DrawImage{rect, image.width(), image.height()});
}

void CGRecordingContext::setTextMatrix(const CGAffineTransform& matrix) {
    calls_.push_back(recorded::SetTextMatrix{matrix});
}

void CGRecordingContext::drawLine(const CGDrawable& line) {
    calls_.push_back(recorded::DrawLine{line.description()});
}

void CGRecordingContext::drawFrame(const CGDrawable& frame) {
    calls_.push_back(recorded::DrawFrame{frame.description()});
}

}  // namespace orvane::platform
