#include "platform/coretext/CTLine.h"

#include <glib.h>

#include <algorithm>
#include <cstdio>

#include "platform/coregraphics/CairoCanvas.h"
#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/FontMap.h"
#include "platform/coretext/LineBuilder.h"
#include "platform/coretext/RunFont.h"
#include "platform/coretext/ShapedText.h"

namespace orvane::platform {

namespace {

std::shared_ptr<const CTLine> create(const CFMutableAttributedString& string,
                                     LineBuilder::Purpose purpose) {
    FontMap::Locked map;
    LineBuilder builder(string, purpose);
    for (const ShapedParagraph& paragraph : string.shapedText()->paragraphs()) {
        builder.add(paragraph, 0, static_cast<int>(paragraph.end - paragraph.begin));
    }
    return builder.finish(string.range());
}

}  // namespace

std::shared_ptr<const CTLine> CTLine::createWithAttributedString(
    const CFMutableAttributedString& string) {
    return create(string, LineBuilder::Purpose::HitTesting);
}

std::shared_ptr<const CTLine> CTLine::createForPainting(const CFMutableAttributedString& string) {
    return create(string, LineBuilder::Purpose::Painting);
}

CTLine::~CTLine() {
    // Fonts may be released with the runs.
    FontMap::Locked map;
    runs_.clear();
}

void CTLine::paint(CairoCanvas& canvas) const {
    FontMap::Locked map;
    CGPoint min, max;
    cairo_clip_extents(canvas.cairo, &min.x, &min.y, &max.x, &max.y);
    const CGRect clip{min, {max.x - min.x, max.y - min.y}};
    for (const TextRun& run : runs_) {
        paintRun(canvas, run, glyphs_, clip);
    }
}

std::optional<std::size_t> CTLine::stringIndexForPosition(double x) const {
    // Runs, their pieces and their glyphs are ordered from left to right.
    const auto run = std::partition_point(runs_.begin(), runs_.end(), [&](const TextRun& each) {
        return each.x + each.width <= x && &each != &runs_.back();
    });
    if (run == runs_.end() || extents_.empty()) {
        return std::nullopt;
    }
    const auto piece =
        std::partition_point(run->pieces.begin(), run->pieces.end() - 1,
                             [&](const TextRun::Piece& each) { return each.x + each.width <= x; });
    double left = piece->x;
    std::uint32_t glyph = piece->first;
    const std::uint32_t last = piece->first + piece->count - 1;
    while (glyph < last && left + double{extents_[glyph].advance} <= x) {
        left += double{extents_[glyph++].advance};
    }
    return characterInCluster(*run, glyph, x - left);
}

// A cluster has one glyph for several characters (a ligature), several for one, or several for
// several. Its characters share its width evenly.
std::size_t CTLine::characterInCluster(const TextRun& run, std::uint32_t glyph, double x) const {
    const std::uint32_t cluster = extents_[glyph].cluster;
    const std::uint32_t begin = run.pieces.front().first;
    const std::uint32_t end = run.pieces.back().first + run.pieces.back().count;
    std::uint32_t first = glyph;
    for (; first > begin && extents_[first - 1].cluster == cluster; --first) {
        x += double{extents_[first - 1].advance};
    }
    double width = 0;
    std::uint32_t after = first;
    for (; after < end && extents_[after].cluster == cluster; ++after) {
        width += double{extents_[after].advance};
    }
    // The next cluster in reading order is on the right, or on the left in right-to-left text.
    std::size_t clusterEnd = run.end;
    if (run.isRightToLeft() ? first > begin : after < end) {
        clusterEnd = extents_[run.isRightToLeft() ? first - 1 : after].cluster;
    }
    const char* const text = text_->data();
    const auto count = g_utf8_strlen(text + cluster, static_cast<gssize>(clusterEnd - cluster));
    if (count <= 1 || width <= 0) {
        return cluster;
    }
    const double share = std::clamp((run.isRightToLeft() ? width - x : x) / width, 0.0, 1.0);
    const auto number = std::min(static_cast<glong>(share * double(count)), count - 1);
    return static_cast<std::size_t>(g_utf8_offset_to_pointer(text + cluster, number) - text);
}

double CTLine::offsetForStringIndex(std::size_t index) const {
    if (extents_.empty()) {
        return 0;
    }
    const TextRun* last = nullptr;  // the run that ends the line in reading order
    for (const TextRun& run : runs_) {
        const TextRun::Piece& piece = run.isRightToLeft() ? run.pieces.back() : run.pieces.front();
        const std::uint32_t first =
            run.isRightToLeft() ? piece.first + piece.count - 1 : piece.first;
        if (extents_[first].cluster <= index && index < run.end) {
            return offsetInRun(run, index);
        }
        if (last == nullptr || run.end > last->end) {
            last = &run;
        }
    }
    if (last == nullptr) {
        return 0;
    }
    return last->isRightToLeft() ? last->x : last->x + last->width;
}

// The characters of a cluster share its width evenly, as in characterInCluster.
double CTLine::offsetInRun(const TextRun& run, std::size_t index) const {
    const std::uint32_t end = run.pieces.back().first + run.pieces.back().count;
    double left = run.x;
    for (std::uint32_t glyph = run.pieces.front().first; glyph < end;) {
        const std::uint32_t first = glyph;
        const std::uint32_t cluster = extents_[first].cluster;
        double width = 0;
        for (; glyph < end && extents_[glyph].cluster == cluster; ++glyph) {
            width += double{extents_[glyph].advance};
        }
        std::size_t clusterEnd = run.end;
        if (run.isRightToLeft() ? first > run.pieces.front().first : glyph < end) {
            clusterEnd = extents_[run.isRightToLeft() ? first - 1 : glyph].cluster;
        }
        if (cluster <= index && index < clusterEnd) {
            const char* const text = text_->data();
            const auto count =
                g_utf8_strlen(text + cluster, static_cast<gssize>(clusterEnd - cluster));
            const auto number = g_utf8_strlen(text + cluster, static_cast<gssize>(index - cluster));
            const double share = double(number) / double(std::max(count, 1L));
            return left + width * (run.isRightToLeft() ? 1 - share : share);
        }
        left += width;
    }
    return left;
}

std::string CTLine::description() const {
    std::string result = '"' + text_->substr(range_.location, range_.length) + '"';
    for (const TextRun& run : runs_) {
        char style[160];
        std::snprintf(style, sizeof style, " [%g+%g size %g color %g %g %g %g%s%s%s]", run.x,
                      run.width, run.font->size(), run.color.red, run.color.green, run.color.blue,
                      run.color.alpha, run.underline ? " underline" : "",
                      run.strikethrough ? " strikethrough" : "",
                      run.isRightToLeft() ? " right to left" : "");
        result += style;
    }
    return result;
}

}  // namespace orvane::platform
