#include "platform/coretext/LineBuilder.h"

#include <algorithm>

#include "platform/coretext/CTFont.h"
#include "platform/coretext/CTLine.h"
#include "platform/coretext/LineBreaker.h"
#include "platform/coretext/RunFont.h"

namespace orvane::platform {

namespace {

double userUnits(std::int64_t units) {
    return double(units) / PANGO_SCALE;
}

// Sorts from reading order to visual order by rule L2 of the Unicode bidirectional algorithm: from
// the highest level down, reverse every sequence of that level or higher.
template <typename Pieces>
void reorder(Pieces& pieces) {
    int highest = 0;
    int lowestOdd = 255;
    const auto level = [](const auto& piece) { return int{piece.item->item->analysis.level}; };
    for (const auto& piece : pieces) {
        highest = std::max(highest, level(piece));
        if (level(piece) % 2 == 1) {
            lowestOdd = std::min(lowestOdd, level(piece));
        }
    }
    for (int turned = highest; turned >= lowestOdd; --turned) {
        const auto inside = [&](const auto& piece) { return level(piece) >= turned; };
        for (auto begin = pieces.begin(); begin != pieces.end();) {
            begin = std::find_if(begin, pieces.end(), inside);
            const auto end = std::find_if_not(begin, pieces.end(), inside);
            std::reverse(begin, end);
            begin = end;
        }
    }
}

}  // namespace

LineBuilder::LineBuilder(const CFMutableAttributedString& string, Purpose purpose)
    : string_(string), purpose_(purpose), shapedText_(string.shapedText()), line_(new CTLine) {
    line_->text_ = shapedText_->text();
}

std::vector<LineBuilder::Piece> LineBuilder::piecesOf(const ShapedParagraph& paragraph, int from,
                                                      int to) {
    std::vector<Piece> pieces;
    auto item = std::partition_point(paragraph.items.begin(), paragraph.items.end(),
                                     [&](const ShapedItem& each) { return each.end() <= from; });
    for (; item != paragraph.items.end() && item->begin() < to; ++item) {
        Piece piece{&*item, nullptr};
        if (item->begin() < from || item->end() > to) {
            piece.own = std::make_unique<ShapedItem>(
                item->part(line_->text_->data() + paragraph.begin,
                           static_cast<int>(paragraph.end - paragraph.begin),
                           std::max(item->begin(), from), std::min(item->end(), to)));
            piece.item = piece.own.get();
        }
        if (piece.item->isTab) {
            piece.tabWidth = tabAdvance(logicalX_);
            logicalX_ += piece.tabWidth;
        } else {
            const PangoGlyphString& glyphs = *piece.item->glyphs;
            for (int i = 0; i < glyphs.num_glyphs; ++i) {
                logicalX_ += glyphs.glyphs[i].geometry.width;
            }
        }
        pieces.push_back(std::move(piece));
    }
    return pieces;
}

void LineBuilder::add(const ShapedParagraph& paragraph, int from, int to) {
    std::vector<Piece> pieces = piecesOf(paragraph, from, to);
    reorder(pieces);
    for (const Piece& piece : pieces) {
        append(piece, paragraph.begin);
    }
    if (pieces.empty()) {
        // An empty line has the height of its font.
        const auto* const run = string_.runAt(paragraph.begin + static_cast<std::size_t>(from));
        const auto font = fontOf(run != nullptr ? run->attributes : CTAttributes());
        CTLine::TypographicBounds& bounds = line_->bounds_;
        bounds.ascent = std::max(bounds.ascent, font->ascent());
        bounds.descent = std::max(bounds.descent, font->descent());
        bounds.leading = std::max(bounds.leading, font->leading());
    }
}

TextRun& LineBuilder::runFor(const ShapedItem& item,
                             const CFMutableAttributedString::Run& attributes) {
    std::vector<TextRun>& runs = line_->runs_;
    if (attributes_ == &attributes && runs.back().font == item.font &&
        runs.back().level == item.item->analysis.level) {
        return runs.back();
    }
    attributes_ = &attributes;
    TextRun& run = runs.emplace_back();
    run.font = item.font;
    run.color = attributes.attributes.foregroundColor.value_or(CGColor());
    run.underline = attributes.attributes.underline;
    run.strikethrough = attributes.attributes.strikethrough;
    run.level = item.item->analysis.level;
    run.x = userUnits(x_);
    return run;
}

void LineBuilder::append(const Piece& piece, std::size_t paragraphBegin) {
    const ShapedItem& item = *piece.item;
    const std::size_t begin = paragraphBegin + static_cast<std::size_t>(item.begin());
    const std::size_t end = paragraphBegin + static_cast<std::size_t>(item.end());
    const PangoGlyphString& glyphs = *item.glyphs;
    for (int i = 0; i < glyphs.num_glyphs; ++i) {
        const PangoGlyphInfo& info = glyphs.glyphs[i];
        const std::size_t cluster = begin + static_cast<std::size_t>(glyphs.log_clusters[i]);
        const auto* attributes = attributes_;
        if (attributes == nullptr || cluster < attributes->range.location ||
            cluster >= attributes->range.end()) {
            attributes = string_.runAt(cluster);
        }
        TextRun& run = runFor(item, *attributes);
        run.end = std::max(run.end, std::min(attributes->range.end(), end));
        const std::int64_t advance = item.isTab ? piece.tabWidth : info.geometry.width;
        if (run.pieces.empty() || run.pieces.back().count == TextRun::kGlyphsInPiece) {
            run.pieces.push_back(
                {userUnits(x_), 0, static_cast<std::uint32_t>(line_->glyphs_.size()), 0});
        }
        TextRun::Piece& last = run.pieces.back();
        const double x = userUnits(x_ + info.geometry.x_offset) - last.x;
        const bool empty = info.glyph == PANGO_GLYPH_EMPTY || item.isTab;
        line_->glyphs_.push_back({empty ? TextGlyph::kNone : info.glyph, static_cast<float>(x),
                                  static_cast<float>(userUnits(info.geometry.y_offset))});
        if (purpose_ == Purpose::HitTesting) {
            line_->extents_.push_back(
                {static_cast<float>(userUnits(advance)), static_cast<std::uint32_t>(cluster)});
        }
        ++last.count;
        x_ += advance;
        last.width = userUnits(x_) - last.x;
        run.width = userUnits(x_) - run.x;
    }
    CTLine::TypographicBounds& bounds = line_->bounds_;
    bounds.ascent = std::max(bounds.ascent, item.font->ascent());
    bounds.descent = std::max(bounds.descent, item.font->descent());
    bounds.leading = std::max(bounds.leading, item.font->leading());
}

void LineBuilder::addImageBounds(const TextRun& run) {
    CGRect& all = line_->imageBounds_;
    const auto add = [&all](const CGRect& box) {
        if (!isEmpty(box)) {
            all = isEmpty(all) ? box : united(all, box);
        }
    };
    for (const TextRun::Piece& piece : run.pieces) {
        for (std::uint32_t i = piece.first; i < piece.first + piece.count; ++i) {
            const TextGlyph& glyph = line_->glyphs_[i];
            if (glyph.glyph != TextGlyph::kNone) {
                CGRect box = run.font->boundsOf(glyph.glyph);
                box.origin.x += piece.x + double{glyph.x};
                box.origin.y -= double{glyph.y};
                add(box);
            }
        }
    }
    if (run.underline || run.strikethrough) {
        const double below = run.font->underlineOffset() + run.font->underlineThickness();
        add({{run.x, -below}, {run.width, below + run.font->ascent()}});
    }
}

std::shared_ptr<const CTLine> LineBuilder::finish(CFRange range) {
    line_->range_ = range;
    line_->bounds_.width = userUnits(x_);
    for (const TextRun& run : line_->runs_) {
        const CGRect& box = run.font->glyphBox();
        const CGRect ink{{run.x + box.origin.x, box.origin.y},
                         {run.width + box.size.width, box.size.height}};
        line_->inkBounds_ = &run == &line_->runs_.front() ? ink : united(line_->inkBounds_, ink);
        addImageBounds(run);
    }
    line_->glyphs_.shrink_to_fit();
    line_->extents_.shrink_to_fit();
    return line_;
}

}  // namespace orvane::platform
