#include "platform/raster/CurrentPath.h"

#include <utility>

namespace orvane::platform {

namespace {

// Appends transformed points to segments.
class TransformedSink {
public:
    TransformedSink(Segments& segments, const CGAffineTransform& transform)
        : segments_(segments), transform_(transform) {}

    void moveTo(CGPoint p) { segments_.moveTo(transform_.apply(p)); }
    void lineTo(CGPoint p) { segments_.lineTo(transform_.apply(p)); }
    void curveTo(CGPoint c1, CGPoint c2, CGPoint p) {
        segments_.curveTo(transform_.apply(c1), transform_.apply(c2), transform_.apply(p));
    }
    void close() { segments_.close(); }

private:
    Segments& segments_;
    const CGAffineTransform& transform_;
};

}  // namespace

Segments& CurrentPath::pieces() {
    if (single_) {
        TransformedSink sink(pieces_, singleToPixels_);
        std::exchange(single_, nullptr)->emit(sink);
    }
    return pieces_;
}

void CurrentPath::moveTo(CGPoint p, const CGAffineTransform& ctm) {
    TransformedSink(pieces(), ctm).moveTo(p);
}

void CurrentPath::lineTo(CGPoint p, const CGAffineTransform& ctm) {
    TransformedSink(pieces(), ctm).lineTo(p);
}

void CurrentPath::add(std::shared_ptr<const CGPath::Outline> outline,
                      const CGAffineTransform& ctm) {
    if (outline->isEmpty()) {
        return;
    }
    if (!single_ && !pieces_.hasCurrentPoint()) {
        single_ = std::move(outline);
        singleToPixels_ = ctm;
        return;
    }
    TransformedSink sink(pieces(), ctm);
    outline->emit(sink);
}

CurrentPath::Shape CurrentPath::take() {
    if (single_) {
        return {std::exchange(single_, nullptr), singleToPixels_, true};
    }
    auto outline = std::make_shared<CGPath::Outline>();
    outline->form = std::exchange(pieces_, Segments{});
    return {std::move(outline), {}, false};
}

}  // namespace orvane::platform
