#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/CTLine.h"
#include "platform/coretext/ShapedText.h"

namespace orvane::platform {

// Makes a line from parts of paragraphs: puts their items in the order in which they are seen, and
// their glyphs in place. Internal to this room; used under the lock of FontMap.
class LineBuilder {
public:
    explicit LineBuilder(const CFMutableAttributedString& string);

    // Appends what lies between two bytes of the paragraph.
    void add(const ShapedParagraph& paragraph, int from, int to);
    // `range` is what the line stands for, the white space that hangs included.
    std::shared_ptr<const CTLine> finish(CFRange range);

private:
    struct Piece {
        const ShapedItem* item;
        // The item, where only a part of it is in the line.
        std::unique_ptr<ShapedItem> own;
        std::int64_t tabWidth = 0;
    };

    std::vector<Piece> piecesOf(const ShapedParagraph& paragraph, int from, int to);
    void append(const Piece& piece, std::size_t paragraphBegin);
    TextRun& runFor(const ShapedItem& item, const CFMutableAttributedString::Run& attributes);

    const CFMutableAttributedString& string_;
    std::shared_ptr<const ShapedText> shapedText_;
    std::shared_ptr<CTLine> line_;
    const CFMutableAttributedString::Run* attributes_ = nullptr;  // of the run that is open
    std::int64_t x_ = 0;                                          // where the next glyph goes
    std::int64_t logicalX_ = 0;                                   // what tab stops are counted by
};

}  // namespace orvane::platform
