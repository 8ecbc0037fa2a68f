#pragma once

#include <iosfwd>
#include <string>
#include <variant>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/coregraphics/CGContext.h"

namespace orvane::platform {

// One drawing operation and its arguments as a value. Tests compare and print it to check calls in
// order.
namespace recorded {

// An outline at the time when it was added: "M x y", "L x y", "C x y x y x y" and "Z", separated by
// spaces.
struct Outline {
    std::string segments;
    bool operator==(const Outline&) const = default;
};

struct SaveGState {
    bool operator==(const SaveGState&) const = default;
};
struct RestoreGState {
    bool operator==(const RestoreGState&) const = default;
};
struct TranslateCTM {
    double tx, ty;
    bool operator==(const TranslateCTM&) const = default;
};
struct ScaleCTM {
    double sx, sy;
    bool operator==(const ScaleCTM&) const = default;
};
struct ConcatCTM {
    CGAffineTransform transform;
    bool operator==(const ConcatCTM&) const = default;
};
struct ClipToRect {
    CGRect rect;
    bool operator==(const ClipToRect&) const = default;
};
struct Clip {
    bool operator==(const Clip&) const = default;
};
struct SetRGBFillColor {
    CGColor color;
    bool operator==(const SetRGBFillColor&) const = default;
};
struct SetRGBStrokeColor {
    CGColor color;
    bool operator==(const SetRGBStrokeColor&) const = default;
};
struct SetLineWidth {
    double width;
    bool operator==(const SetLineWidth&) const = default;
};
struct SetLineDash {
    double phase;
    std::vector<double> lengths;
    bool operator==(const SetLineDash&) const = default;
};
struct MoveToPoint {
    CGPoint point;
    bool operator==(const MoveToPoint&) const = default;
};
struct AddLineToPoint {
    CGPoint point;
    bool operator==(const AddLineToPoint&) const = default;
};
struct AddRect {
    CGRect rect;
    bool operator==(const AddRect&) const = default;
};
struct AddPath {
    Outline outline;
    bool operator==(const AddPath&) const = default;
};
struct DrawPath {
    CGPathDrawingMode mode;
    bool operator==(const DrawPath&) const = default;
};
struct StrokePath {
    bool operator==(const StrokePath&) const = default;
};
struct ReplacePathWithStrokedPath {
    bool operator==(const ReplacePathWithStrokedPath&) const = default;
};
struct DrawLinearGradient {
    std::vector<CGColor> colors;
    std::vector<double> locations;
    CGPoint start, end;
    unsigned options;
    bool operator==(const DrawLinearGradient&) const = default;
};
struct DrawRadialGradient {
    std::vector<CGColor> colors;
    std::vector<double> locations;
    CGPoint startCenter;
    double startRadius;
    CGPoint endCenter;
    double endRadius;
    unsigned options;
    bool operator==(const DrawRadialGradient&) const = default;
};
struct DrawConicGradient {
    std::vector<CGColor> colors;
    std::vector<double> locations;
    CGPoint center;
    double angle;
    bool operator==(const DrawConicGradient&) const = default;
};
struct DrawImage {
    CGRect rect;
    int width, height;  // the image's own size, in pixels
    bool operator==(const DrawImage&) const = default;
};
struct SetTextMatrix {
    CGAffineTransform matrix;
    bool operator==(const SetTextMatrix&) const = default;
};
struct DrawLine {
    std::string description;
    bool operator==(const DrawLine&) const = default;
};
struct DrawFrame {
    std::string description;
    bool operator==(const DrawFrame&) const = default;
};
struct BeginGroup {
    CGRect area;
    CGGroupStyle style;
    bool operator==(const BeginGroup&) const = default;
};
struct EndGroup {
    bool operator==(const EndGroup&) const = default;
};

using Call =
    std::variant<SaveGState, RestoreGState, TranslateCTM, ScaleCTM, ConcatCTM, ClipToRect, Clip,
                 SetRGBFillColor, SetRGBStrokeColor, SetLineWidth, SetLineDash, MoveToPoint,
                 AddLineToPoint, AddRect, AddPath, DrawPath, StrokePath, ReplacePathWithStrokedPath,
                 DrawLinearGradient, DrawRadialGradient, DrawConicGradient, BeginGroup, EndGroup,
                 DrawImage, SetTextMatrix, DrawLine, DrawFrame>;

// Formats the call as "name(arguments)", where the name is that of the operation.
ORVANE_EXPORT std::ostream& operator<<(std::ostream& out, const Call& call);

// The recorded form of a path, to state expected calls.
ORVANE_EXPORT Outline outlineOf(const CGPath& path);

}  // namespace recorded

// A canvas that paints nothing and records every call in order. Tests pass it to code that paints.
class ORVANE_EXPORT CGRecordingContext final : public CGContext {
public:
    using Call = recorded::Call;

    const std::vector<Call>& calls() const { return calls_; }
    // Returns the recorded calls and clears the record.
    std::vector<Call> takeCalls();

    void saveGState() override;
    void restoreGState() override;
    void translateCTM(double tx, double ty) override;
    void scaleCTM(double sx, double sy) override;
    void concatCTM(const CGAffineTransform& transform) override;
    CGSize unitsInDevicePixels() const override;
    void clipToRect(const CGRect& rect) override;
    void clip() override;
    void setRGBFillColor(double r, double g, double b, double a) override;
    void setRGBStrokeColor(double r, double g, double b, double a) override;
    void setLineWidth(double width) override;
    void setLineDash(double phase, std::span<const double> lengths) override;
    void moveToPoint(double x, double y) override;
    void addLineToPoint(double x, double y) override;
    void addRect(const CGRect& rect) override;
    void addPath(const CGPath& path) override;
    void drawPath(CGPathDrawingMode mode) override;
    void strokePath() override;
    void replacePathWithStrokedPath() override;
    void drawLinearGradient(const CGGradient& gradient, CGPoint start, CGPoint end,
                            unsigned options) override;
    void drawRadialGradient(const CGGradient& gradient, CGPoint startCenter, double startRadius,
                            CGPoint endCenter, double endRadius, unsigned options) override;
    void drawConicGradient(const CGGradient& gradient, CGPoint center, double angle) override;
    void drawImage(const CGRect& rect, const CGImage& image) override;
    void setTextMatrix(const CGAffineTransform& matrix) override;
    void drawLine(const CGDrawable& line) override;
    void drawFrame(const CGDrawable& frame) override;
    void beginGroup(const CGRect& area, const CGGroupStyle& style) override;
    std::shared_ptr<const CGGroup> endGroup() override;
    bool drawGroup(const CGGroup& group, const CGAffineTransform& transform,
                   double opacity) override;

private:
    std::vector<Call> calls_;
};

}  // namespace orvane::platform
