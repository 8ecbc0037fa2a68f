#include "platform/raster/dashedRuns.h"

#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

#include "platform/raster/StrokeStyle.h"

namespace orvane::platform {

namespace {

using Run = OutlineClipper::Run;

// A position in a dash, which repeats endlessly.
class DashPosition {
public:
    DashPosition(const StrokeStyle& stroke, double distance) : dash_(stroke.dash) {
        const double sum = std::accumulate(dash_.begin(), dash_.end(), 0.0);
        double along =
            std::fmod(stroke.dashPhase + distance, dash_.size() % 2 == 1 ? 2 * sum : sum);
        while (along >= length()) {
            along -= length();
            ++index_;
        }
        left_ = length() - along;
    }

    bool isPainted() const { return index_ % 2 == 0; }
    // The distance to the next change.
    double left() const { return left_; }
    void advance(double distance) { left_ -= distance; }
    void change() {
        ++index_;
        left_ = length();
    }

private:
    double length() const { return dash_[index_ % dash_.size()]; }

    std::span<const double> dash_;
    std::size_t index_ = 0;
    double left_;
};

// Appends the painted parts of a run to `parts`. Returns whether the dash is painted at its end.
bool cut(const Run& run, const StrokeStyle& stroke, const StrokeReach& reach,
         bool continuesLastPart, std::vector<Run>& parts) {
    DashPosition dash(stroke, run.distance);
    const auto begin = [&](CGPoint p) { parts.push_back({{p}, false, false, 0}); };
    if (dash.isPainted() && !continuesLastPart) {
        begin(run.points.front());
    }
    const std::size_t count = run.closed ? run.points.size() : run.points.size() - 1;
    for (std::size_t i = 0; i < count; ++i) {
        const CGPoint p = run.points[i];
        const CGPoint q = run.points[(i + 1) % run.points.size()];
        const double whole = reach.distance(p, q);
        if (whole == 0) {
            continue;
        }
        double done = 0;
        while (dash.left() <= whole - done) {
            done += dash.left();
            const double t = done / whole;
            const CGPoint at{p.x + (q.x - p.x) * t, p.y + (q.y - p.y) * t};
            if (dash.isPainted()) {
                parts.back().points.push_back(at);
            }
            dash.change();
            if (dash.isPainted()) {
                begin(at);
            }
        }
        dash.advance(whole - done);
        if (dash.isPainted()) {
            parts.back().points.push_back(q);
        }
    }
    return dash.isPainted();
}

}  // namespace

std::vector<Run> dashedRuns(const std::vector<Run>& runs, const StrokeStyle& stroke,
                            const StrokeReach& reach) {
    std::vector<Run> parts;
    bool endsPainted = false;
    for (const Run& run : runs) {
        const std::size_t first = parts.size();
        const bool beginsPainted = DashPosition(stroke, run.distance).isPainted();
        endsPainted =
            cut(run, stroke, reach, run.continuesLast && endsPainted && beginsPainted, parts);
        if (!run.closed || !beginsPainted || !endsPainted) {
            continue;
        }
        // The last part ends where the first one begins.
        std::vector<CGPoint>& points = parts[first].points;
        parts.back().points.pop_back();
        if (parts.size() == first + 1) {
            parts[first].closed = true;
        } else {
            points.insert(points.begin(), parts.back().points.begin(), parts.back().points.end());
            parts.pop_back();
        }
    }
    return parts;
}

}  // namespace orvane::platform
