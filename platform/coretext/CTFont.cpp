#include "platform/coretext/CTFont.h"

#include <pango/pango.h>

#include <algorithm>
#include <cmath>

#include "platform/coretext/FontMap.h"
#include "platform/coretext/RunFont.h"

namespace orvane::platform {

namespace {

// Pango counts sizes in 1/1024 units, and positions with int.
constexpr double kLargestSize = 10000;

double usableSize(double size) {
    if (!std::isfinite(size) || size <= 0) {
        return CTFont::kDefaultSize;
    }
    return std::clamp(size, 1.0 / PANGO_SCALE, kLargestSize);
}

}  // namespace

CTFont::CTFont(const std::string& name, double size) : size_(size) {
    FontMap::Locked map;
    const FontFace& face = map->resolve(name);
    postScriptName_ = face.postScriptName;
    familyName_ = face.family;
    if (map->isRegistered(postScriptName_)) {
        registeredFile_ = face.file;
    }
    description_ = pango_font_description_copy(face.description);
    pango_font_description_set_absolute_size(description_, size_ * PANGO_SCALE);
    if (const auto font = map->load(description_)) {
        ascent_ = font->ascent();
        descent_ = font->descent();
        leading_ = font->leading();
    }
}

CTFont::~CTFont() {
    pango_font_description_free(description_);
}

std::shared_ptr<const CTFont> CTFont::createWithName(const std::string& name, double size) {
    // Fonts are shared by size: a NaN would be found neither equal nor different.
    const double usable = usableSize(size);
    FontMap::Locked map;
    return map->sharedFont(name, usable,
                           [&] { return std::shared_ptr<const CTFont>(new CTFont(name, usable)); });
}

}  // namespace orvane::platform
