#include "Look.h"

namespace gallery {

using orvane::display::AppearanceChangedEvent;
using orvane::display::Display;

unsigned Color::now() const {
    const auto& appearance = Look::instance().appearance();
    return isAccent_ ? appearance.accentColor : appearance.isDark ? dark_ : light_;
}

Look& Look::instance() {
    static Look look;
    return look;
}

Look::Look() : appearance_(Display::instance()->getAppearance()) {
    listeners_.add<AppearanceChangedEvent>(
        *Display::instance(), [this](const AppearanceChangedEvent& event) {
            appearance_ = event.appearance;
            std::erase_if(followers_, [](const auto& apply) { return !apply(); });
        });
}

}  // namespace gallery
