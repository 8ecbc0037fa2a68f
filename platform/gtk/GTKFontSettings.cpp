#include "platform/gtk/GTKFontSettings.h"

#include <gtk/gtk.h>

#include <string_view>
#include <utility>

#include "platform/coretext/CTFontManager.h"

namespace orvane::platform {

void applyFontSettings() {
    using HintStyle = CTFontSmoothing::HintStyle;
    constexpr std::pair<std::string_view, HintStyle> styles[] = {{"hintnone", HintStyle::None},
                                                                 {"hintslight", HintStyle::Slight},
                                                                 {"hintmedium", HintStyle::Medium},
                                                                 {"hintfull", HintStyle::Full}};
    // Each number is -1 if there is no such setting.
    int antialias = -1;
    int hinting = -1;
    char* style = nullptr;
    g_object_get(gtk_settings_get_default(), "gtk-xft-antialias", &antialias, "gtk-xft-hinting",
                 &hinting, "gtk-xft-hintstyle", &style, nullptr);
    const std::string_view styleName = style != nullptr ? style : "";
    CTFontSmoothing smoothing;
    if (antialias >= 0) {
        smoothing.isAntialiased = antialias != 0;
    }
    if (hinting == 0) {
        smoothing.hintStyle = HintStyle::None;
    } else if (hinting > 0) {
        for (const auto& [name, value] : styles) {
            if (styleName == name) {
                smoothing.hintStyle = value;
            }
        }
    }
    g_free(style);
    CTFontManager::setSmoothing(smoothing);
}

}  // namespace orvane::platform
