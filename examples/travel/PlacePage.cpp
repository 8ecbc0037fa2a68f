#include "PlacePage.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace travel {

using orvane::display::native::NWebView;
using orvane::services::Position;

namespace {

template <typename... Numbers>
std::string format(const char* pattern, Numbers... numbers) {
    std::array<char, 400> text{};
    std::snprintf(text.data(), text.size(), pattern, numbers...);
    return text.data();
}

constexpr const char* kHead =
    R"(<!doctype html><meta charset="utf-8"><title>About this place</title>
<style>
  body { font: 14px "DejaVu Sans", sans-serif; color: #22303c; background: #fff; margin: 14px; }
  h1 { font-size: 17px; margin: 0 0 8px }
  p { margin: 6px 0; color: #6b7680 }
  a { color: #2f6f8f; margin-right: 14px }
  button { font: inherit; color: #fff; background: #2f6f8f; border: 0; border-radius: 8px;
           padding: 6px 12px; float: right }
</style>)";

// When the sun is highest, without the equation of time.
std::string describeNoon(double longitude) {
    const int minutes = static_cast<int>(std::lround(720 - longitude * 4));
    return format("The sun is highest at about %d:%02d UTC.", minutes / 60, minutes % 60);
}

std::string pageAbout(const Position& position) {
    const std::string place = format("%.5f, %.5f", position.latitude, position.longitude);
    std::string page = kHead;
    page += "<button onclick=\"webkit.messageHandlers.copy.postMessage('" + place +
            "')\">Copy</button><h1>" + place + "</h1>";
    page += "<p>" + describeNoon(position.longitude) + "</p>";
    page += format("<p>A degree of longitude is %.1f km long here.</p>",
                   111.32 * std::cos(position.latitude * 3.14159265358979 / 180));
    page += format(
        "<p><a href='https://www.openstreetmap.org/?mlat=%.5f&mlon=%.5f#map=15'>Map</a>"
        "<a href='https://www.geonames.org/findNearbyWikipedia?lat=%.5f&lng=%.5f'>"
        "Articles</a></p>",
        position.latitude, position.longitude, position.latitude, position.longitude);
    return page;
}

}  // namespace

PlacePage::PlacePage() {
    frame_->add(page_);
    page_->setMessageHandler("copy", [](const NWebView::Message& message) {
        // The page about a place has no address: no other page may write to the clipboard. The
        // value is a text in JSON.
        if (message.address == "about:blank" && message.json.size() > 2) {
            orvane::system::copyText(message.json.substr(1, message.json.size() - 2));
        }
    });
    page_->setNavigationPolicy([](const NWebView::Navigation& navigation) {
        return !navigation.opensWindow && (navigation.address.starts_with("https:") ||
                                           navigation.address.starts_with("about:"));
    });
}

void PlacePage::place(const orvane::display::geometry::Rect<double>& rect) {
    frame_->setBounds(rect);
    page_->setBounds(rect);
}

void PlacePage::showPosition(const Position& position) {
    page_->loadHtml(pageAbout(position));
}

}  // namespace travel
