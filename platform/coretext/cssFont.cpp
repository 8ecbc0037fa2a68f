#include "platform/coretext/cssFont.h"

#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>

#include <set>

#include "platform/coretext/CTFont.h"

namespace orvane::platform {

namespace {

void shareWithDesktop(const CTFont& font) {
    static std::set<std::string> shared;
    const std::string& file = font.registeredFile();
    if (!file.empty() && shared.insert(file).second) {
        const auto* const path = reinterpret_cast<const FcChar8*>(file.c_str());
        PangoFontMap* const map = pango_cairo_font_map_get_default();
        if (FcConfigAppFontAddFile(nullptr, path) != FcFalse && PANGO_IS_FC_FONT_MAP(map)) {
            pango_fc_font_map_config_changed(PANGO_FC_FONT_MAP(map));
        }
    }
}

}  // namespace

std::string cssFont(const CTFont& font) {
    shareWithDesktop(font);
    const PangoFontDescription* const description = font.description();
    // CSS has decimal points in every language.
    char size[G_ASCII_DTOSTR_BUF_SIZE];
    std::string css = "font-size:";
    css += g_ascii_formatd(size, sizeof size, "%.6g", font.size());
    css += "px;font-family:\"";
    for (const char c : font.familyName()) {
        css += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    }
    css += "\";font-weight:";
    css += std::to_string(static_cast<int>(pango_font_description_get_weight(description)));
    const PangoStyle slant = pango_font_description_get_style(description);
    css += slant == PANGO_STYLE_NORMAL ? ";font-style:normal" : ";font-style:italic";
    // In the order of PangoStretch.
    constexpr const char* widths[] = {"ultra-condensed", "extra-condensed", "condensed",
                                      "semi-condensed",  "normal",          "semi-expanded",
                                      "expanded",        "extra-expanded",  "ultra-expanded"};
    css += std::string(";font-stretch:") +
           widths[static_cast<int>(pango_font_description_get_stretch(description))] + ";";
    return css;
}

}  // namespace orvane::platform
