#include "platform/coretext/ShapedText.h"

#include <fribidi.h>

#include <algorithm>

#include "platform/coretext/CTFont.h"
#include "platform/coretext/FontMap.h"
#include "platform/coretext/RunFont.h"

namespace orvane::platform {

namespace {

struct AttributesRelease {
    void operator()(PangoAttrList* attributes) const { pango_attr_list_unref(attributes); }
};
using AttributesPointer = std::unique_ptr<PangoAttrList, AttributesRelease>;

// The fonts of the bytes `begin` to `end` of the text, counted from `begin`. `run` is the first run
// that may reach into them and becomes the last one, because paragraphs are processed in order.
AttributesPointer fontAttributes(const std::vector<CFMutableAttributedString::Run>& runs,
                                 std::size_t& run, std::size_t begin, std::size_t end) {
    AttributesPointer attributes(pango_attr_list_new());
    while (run + 1 < runs.size() && runs[run].range.end() <= begin) {
        ++run;
    }
    for (std::size_t i = run; i < runs.size() && runs[i].range.location < end; ++i) {
        PangoAttribute* const font =
            pango_attr_font_desc_new(fontOf(runs[i].attributes)->description());
        font->start_index = static_cast<guint>(std::max(runs[i].range.location, begin) - begin);
        font->end_index = static_cast<guint>(std::min(runs[i].range.end(), end) - begin);
        pango_attr_list_insert(attributes.get(), font);
        run = i;
    }
    return attributes;
}

// The direction of the first character that has one.
bool readsRightToLeft(const char* paragraph, int length) {
    const char* const end = paragraph + length;
    for (const char* at = paragraph; at < end; at = g_utf8_next_char(at)) {
        const FriBidiCharType type = fribidi_get_bidi_type(g_utf8_get_char(at));
        if (FRIBIDI_IS_STRONG(type)) {
            return FRIBIDI_IS_RTL(type);
        }
    }
    return false;
}

bool isInvisible(gunichar character) {
    return g_unichar_iscntrl(character) || character == 0x2028 || character == 0x2029;
}

// Resolves characters that no font has, which Pango leaves to its own renderer: control characters
// show nothing, spaces have a usual width, all others show the font's glyph for missing characters.
void resolveUnknownGlyphs(PangoGlyphString& glyphs, const RunFont& font) {
    constexpr gunichar kIdeographicSpace = 0x3000;
    for (int i = 0; i < glyphs.num_glyphs; ++i) {
        PangoGlyphInfo& glyph = glyphs.glyphs[i];
        if (glyph.glyph == PANGO_GLYPH_EMPTY || (glyph.glyph & PANGO_GLYPH_UNKNOWN_FLAG) == 0) {
            continue;
        }
        const gunichar character = glyph.glyph & ~PANGO_GLYPH_UNKNOWN_FLAG;
        int advance = font.missingGlyphAdvance();
        glyph.glyph = 0;
        if (isInvisible(character)) {
            advance = 0;
            glyph.glyph = PANGO_GLYPH_EMPTY;
        } else if (g_unichar_isspace(character)) {
            const double share = character == kIdeographicSpace ? 1 : 0.25;
            advance = static_cast<int>(font.size() * share * PANGO_SCALE);
            glyph.glyph = PANGO_GLYPH_EMPTY;
        }
        glyph.geometry = {advance, 0, 0};
    }
}

ShapedItem shaped(ItemPointer item, const char* paragraph, int length) {
    ShapedItem result;
    result.font = RunFont::of(item->analysis.font);
    result.glyphs.reset(pango_glyph_string_new());
    pango_shape_item(item.get(), paragraph, length, nullptr, result.glyphs.get(), PANGO_SHAPE_NONE);
    result.isTab = paragraph[item->offset] == '\t';
    resolveUnknownGlyphs(*result.glyphs, *result.font);
    // The library grows glyph strings by doubling, and copies the unused space as well.
    PangoGlyphString withoutUnused = *result.glyphs;
    withoutUnused.space = withoutUnused.num_glyphs;
    result.glyphs.reset(pango_glyph_string_copy(&withoutUnused));
    result.item = std::move(item);
    return result;
}

std::vector<ShapedItem> shapeParagraph(PangoContext* context, const char* paragraph, int length,
                                       bool rightToLeft, PangoAttrList* attributes) {
    std::vector<ShapedItem> items;
    GList* const list = pango_itemize_with_base_dir(
        context, rightToLeft ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR, paragraph, 0, length,
        attributes, nullptr);
    for (const GList* each = list; each != nullptr; each = each->next) {
        ItemPointer item(static_cast<PangoItem*>(each->data));
        if (item->analysis.font != nullptr) {
            items.push_back(shaped(std::move(item), paragraph, length));
        }
    }
    g_list_free(list);
    return items;
}

}  // namespace

std::shared_ptr<const CTFont> fontOf(const CTAttributes& attributes) {
    return attributes.font ? attributes.font : CTFont::createWithName({}, CTFont::kDefaultSize);
}

ShapedItem ShapedItem::part(const char* paragraph, int length, int from, int to) const {
    ItemPointer piece(pango_item_copy(item.get()));
    piece->offset = from;
    piece->length = to - from;
    piece->num_chars = static_cast<int>(g_utf8_strlen(paragraph + from, to - from));
    return shaped(std::move(piece), paragraph, length);
}

std::shared_ptr<const ShapedText> ShapedText::shape(
    std::shared_ptr<const std::string> text,
    const std::vector<CFMutableAttributedString::Run>& runs) {
    FontMap::Locked map;
    const bool hasFonts = map->hasFonts();
    std::shared_ptr<ShapedText> result(new ShapedText(std::move(text)));
    const std::string& string = *result->text_;
    std::size_t run = 0;
    std::size_t begin = 0;
    bool separated = !string.empty();
    while (separated) {
        const char* const paragraph = string.data() + begin;
        const auto rest = static_cast<int>(string.size() - begin);
        int length = 0;
        int next = 0;
        pango_find_paragraph_boundary(paragraph, rest, &length, &next);
        separated = next > length;

        ShapedParagraph added;
        added.begin = begin;
        added.end = begin + static_cast<std::size_t>(length);
        added.next = begin + static_cast<std::size_t>(next);
        added.rightToLeft = readsRightToLeft(paragraph, length);
        // Pango does not work without any font.
        if (length > 0 && hasFonts) {
            const AttributesPointer attributes = fontAttributes(runs, run, begin, added.end);
            added.items = shapeParagraph(map->context(), paragraph, length, added.rightToLeft,
                                         attributes.get());
        }
        begin = added.next;
        result->paragraphs_.push_back(std::move(added));
    }
    return result;
}

const std::vector<ShapedText::Line>& ShapedText::linesOf(double width) const {
    if (width != width_) {
        width_ = width;
        lines_.clear();
        for (const ShapedParagraph& paragraph : paragraphs_) {
            LineBreaker breaker(*this, paragraph, width);
            while (!breaker.atEnd()) {
                lines_.push_back({&paragraph, breaker.next()});
            }
        }
    }
    return lines_;
}

ShapedText::~ShapedText() {
    FontMap::Locked map;
    paragraphs_.clear();
}

}  // namespace orvane::platform
