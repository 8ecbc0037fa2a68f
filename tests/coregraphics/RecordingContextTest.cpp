#include "platform/coregraphics/CGRecordingContext.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>

#include "platform/coregraphics/CGDrawable.h"
#include "platform/coregraphics/CGGradient.h"
#include "platform/coregraphics/CGPath.h"

namespace orvane::platform {
namespace {

class FakeLine final : public CGDrawable {
public:
    void paint(CairoCanvas&) const override {}
    CGRect inkBounds() const override { return {}; }
    std::string description() const override { return "a line"; }
};

TEST(RecordingContext, KeepsCallsAsValuesInOrder) {
    CGRecordingContext canvas;
    CGPath path;
    path.addRect({{1, 2}, {3, 4}});
    canvas.saveGState();
    canvas.setLineDash(1, std::array{2.0, 3.0});
    canvas.addPath(path);
    path.closeSubpath();  // what was recorded stays as it was
    canvas.drawPath(CGPathDrawingMode::EOFill);
    canvas.drawLine(FakeLine());
    canvas.restoreGState();

    CGPath expected;
    expected.addRect({{1, 2}, {3, 4}});
    using namespace recorded;
    const std::vector<Call> calls = {SaveGState{},
                                     SetLineDash{1, {2, 3}},
                                     AddPath{outlineOf(expected)},
                                     DrawPath{CGPathDrawingMode::EOFill},
                                     DrawLine{"a line"},
                                     RestoreGState{}};
    EXPECT_EQ(canvas.calls(), calls);
    EXPECT_EQ(canvas.takeCalls(), calls);
    EXPECT_TRUE(canvas.calls().empty());
}

TEST(RecordingContext, PrintsCallsReadably) {
    using namespace recorded;
    const auto text = [](const Call& call) {
        std::ostringstream out;
        out << call;
        return out.str();
    };
    EXPECT_EQ(text(ClipToRect{{{1, 2}, {3.5, 4}}}), "clipToRect(1 2 3.5x4)");
    EXPECT_EQ(text(SetLineDash{1, {2, 3}}), "setLineDash(1, [2; 3])");
    EXPECT_EQ(text(ConcatCTM{{1, 0, 0, 1, 5, 6}}), "concatCTM(1 0 0 1 5 6)");
    EXPECT_EQ(text(Clip{}), "clip()");
}

}  // namespace
}  // namespace orvane::platform
