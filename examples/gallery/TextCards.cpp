#include "Cards.h"
#include "Palette.h"

namespace gallery {

using namespace orvane::display::graphics;

namespace {

void guide(ContainerObject& inside, float x1, float y1, float x2, float y2) {
    const auto line = DisplayFactory::createLine();
    line->set(x1, y1, x2, y2);
    outline(line, palette::kCoral, 1);
    inside.add(line);
}

Text::Segment segment(const std::string& content, float size, Color color,
                      const char* font = "DejaVuSans", int decoration = 0) {
    const unsigned argb = color.now();
    const auto component = [argb](unsigned shift) {
        return static_cast<unsigned char>(argb >> shift);
    };
    Text::Segment result;
    result.content = content;
    result.textSize = size;
    result.fillColor = {component(16), component(8), component(0), component(24)};
    result.font = font;
    result.decoration = decoration;
    return result;
}

}  // namespace

void drawAlignments(ContainerObject& inside) {
    guide(inside, 137.5F, 44, 137.5F, 210);
    float y = 78;
    for (const auto& [align, name] : {std::pair{TextAlign::Start, "start"},
                                      {TextAlign::Center, "center"},
                                      {TextAlign::End, "end"}}) {
        const auto line = addText(inside, 137.5F, y, name, 22, palette::kBlue);
        line->setTextAlign(align);
        y += 52;
    }
}

void drawBaselines(ContainerObject& inside) {
    float y = 76;
    for (const auto& [baseline, name] : {std::pair{AlignmentBaseline::Baseline, "Baseline"},
                                         {AlignmentBaseline::Middle, "Middle"},
                                         {AlignmentBaseline::Top, "Top"}}) {
        guide(inside, 24, y, 251, y);
        const auto line = addText(inside, 36, y, name, 26, palette::kViolet);
        line->setAlignmentBaseline(baseline);
        y += 54;
    }
}

void drawDecorations(ContainerObject& inside) {
    addText(inside, 30, 74, "Plain", 20);
    addText(inside, 30, 110, "Underlined", 20, palette::kTeal)->setDecoration(true, false);
    addText(inside, 30, 146, "Struck through", 20, palette::kCoral)->setDecoration(false, true);
    addText(inside, 30, 182, "Both of them", 20, palette::kViolet)->setDecoration(true, true);
}

void drawFonts(ContainerObject& inside) {
    addText(inside, 28, 76, "DejaVu Sans", 21, palette::kInk, "DejaVuSans");
    addText(inside, 28, 112, "DejaVu Sans Bold", 21, palette::kInk, "DejaVuSans-Bold");
    addText(inside, 28, 148, "DejaVu Serif", 21, palette::kInk, "DejaVuSerif");
    addText(inside, 28, 184, "DejaVu Sans Mono", 21, palette::kInk, "DejaVuSansMono");
}

void drawScripts(ContainerObject& inside) {
    const char* lines[] = {"Ελληνικά · Кириллица", "שלום עולם", "مرحبا بالعالم",
                           "ffi ligatures, a\u0301 e\u0308 o\u0302", "日本の"};
    float y = 70;
    for (const char* const line : lines) {
        addText(inside, 28, y, line, 20);
        y += 34;
    }
}

void drawEmoji(ContainerObject& inside) {
    addText(inside, 28, 100, "😀 😎 🎉 🚀", 38);
    addText(inside, 28, 160, "❤ in a line of text 👍", 18);
}

void drawWrapping(ContainerObject& inside) {
    float y = 46;
    for (const TextAlign align : {TextAlign::Start, TextAlign::Center, TextAlign::End}) {
        const auto box = DisplayFactory::createRect();
        box->set(28, y, 219, 52);
        paint(box, 0x142F6FDE);
        inside.add(box);
        const auto block = DisplayFactory::createText(true);
        block->setFont("DejaVuSans");
        block->setTextSize(13);
        colorText(block, palette::kInk);
        block->setContent(
            "Text of several lines wraps at the width of its box, at spaces and hyphens.");
        block->setAlignment(align);
        block->setX(30);
        block->setY(y + 2);
        block->setWidth(215);
        inside.add(block);
        y += 60;
    }
}

void drawAttributedText(ContainerObject& inside) {
    const auto block = DisplayFactory::createAttributedText();
    block->setX(26);
    block->setY(64);
    block->setWidth(226);
    Look::instance().follow(block, [](AttributedText& text) {
        text.setContent(std::vector<Text::Segment>{
            segment("Every ", 16, palette::kInk),
            segment("segment ", 24, palette::kCoral, "DejaVuSans-Bold"),
            segment("keeps its own ", 16, palette::kInk),
            segment("font", 20, palette::kViolet, "DejaVuSerif"),
            segment(", size, ", 16, palette::kInk),
            segment("color ", 16, palette::kTeal, "DejaVuSans-Bold"),
            segment("and ", 16, palette::kInk),
            segment("decoration", 16, palette::kBlue, "DejaVuSans", 1),
            segment(", and all are laid out as one text.", 16, palette::kInk)});
    });
    inside.add(block);
}

void drawLineBreaks(ContainerObject& inside) {
    const auto card = DisplayFactory::createText(true);
    card->setFont("DejaVuSerif");
    card->setTextSize(15);
    colorText(card, palette::kInk);
    card->setWidth(226);
    card->setLineBreaks(LineBreaks::Keep);
    card->setContent(
        "Harbor café\n12 Quay Street\n\nOpen from April to October, also in the "
        "rain.\nCats welcome.");
    card->setX(26);
    card->setY(58);
    inside.add(card);
}

void drawMeasured(ContainerObject& inside) {
    // Each label is measured before its background is made, and the next one follows it.
    const FontStyle font{"DejaVuSans", 13};
    const unsigned colors[] = {palette::kTeal, palette::kBlue, palette::kViolet, palette::kCoral};
    float x = 22;
    float y = 50;
    int count = 0;
    for (const char* const word : {"labels", "as", "wide as", "their text", "and in", "rows"}) {
        const auto width = static_cast<float>(measureText(word, font).width) + 20;
        if (x + width > 253) {
            x = 22;
            y += 36;
        }
        const auto back = DisplayFactory::createRect();
        back->set(x, y, width, 28);
        back->setRx(14);
        back->setRy(14);
        paint(back, colors[count++ % 4]);
        inside.add(back);
        addText(inside, x + 10, y + 19, word, font.size, palette::kWhite);
        x += width + 8;
    }
    const std::string title = "A title that is too long for its place";
    y += 56;
    for (const float width : {226.0F, 150.0F, 80.0F}) {
        guide(inside, 26 + width, y - 14, 26 + width, y + 6);
        addText(inside, 26, y, shortenText(title, font, width), font.size);
        y += 28;
    }
}

void drawTextIcon(ContainerObject& inside) {
    addText(inside, 3, 21, "A", 24, palette::kWhite, "DejaVuSerif");
}

}  // namespace gallery
