#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/ShapedText.h"

namespace orvane::platform {

class CTLine;
struct TextRun;

// Builds a line from parts of paragraphs: sorts their items into visual order and positions their
// glyphs. Internal to this module; used under the lock of FontMap.
class LineBuilder {
public:
    enum class Purpose { Painting, HitTesting };

    LineBuilder(const CFMutableAttributedString& string, Purpose purpose);

    // Appends the text between two bytes of the paragraph.
    void add(const ShapedParagraph& paragraph, int from, int to);
    // `range` is the text of the line, including trailing white space.
    std::shared_ptr<const CTLine> finish(CFRange range);

private:
    struct Piece {
        const ShapedItem* item;
        // The partial item, if the line contains only a part of it.
        std::unique_ptr<ShapedItem> own;
        std::int64_t tabWidth = 0;
    };

    std::vector<Piece> piecesOf(const ShapedParagraph& paragraph, int from, int to);
    void append(const Piece& piece, std::size_t paragraphBegin);
    TextRun& runFor(const ShapedItem& item, const CFMutableAttributedString::Run& attributes);

    void addImageBounds(const TextRun& run);

    const CFMutableAttributedString& string_;
    const Purpose purpose_;
    std::shared_ptr<const ShapedText> shapedText_;
    std::shared_ptr<CTLine> line_;
    const CFMutableAttributedString::Run* attributes_ = nullptr;  // of the current run
    std::int64_t x_ = 0;         // of the next glyph, in visual order
    std::int64_t logicalX_ = 0;  // in reading order, for tab stops
};

}  // namespace orvane::platform
