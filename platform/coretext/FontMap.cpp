#include "platform/coretext/FontMap.h"

#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <optional>
#include <span>

#include "platform/coretext/CTFont.h"
#include "platform/coretext/RunFont.h"
#include "platform/coretext/cacheBytes.h"

namespace orvane::platform {

namespace {

// The prefix of a family name that no font has. The name refers to the face with the number that
// follows.
constexpr std::string_view kFaceToken = "orvane face ";
// The family that Pango requests for emoji presentation.
constexpr std::string_view kEmoji = "emoji";

constexpr const char* kGenericFamilies[] = {"sans",      "sans-serif", "serif",   "mono",
                                            "monospace", "cursive",    "fantasy", "system-ui"};

// Scales the glyphs of fonts without outlines from the size of their bitmaps to the requested size.
constexpr char kScaleBitmapFonts[] = R"(<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig>
  <match target="font">
    <test name="outline"><bool>false</bool></test>
    <edit name="pixelsizefixupfactor" mode="assign">
      <divide><name target="pattern">pixelsize</name><name target="font">pixelsize</name></divide>
    </edit>
    <edit name="matrix" mode="assign">
      <times>
        <name>matrix</name>
        <matrix>
          <name>pixelsizefixupfactor</name><double>0</double>
          <double>0</double><name>pixelsizefixupfactor</name>
        </matrix>
      </times>
    </edit>
    <edit name="size" mode="assign">
      <divide><name>size</name><name>pixelsizefixupfactor</name></divide>
    </edit>
  </match>
</fontconfig>
)";

struct DescriptionRelease {
    void operator()(PangoFontDescription* description) const {
        pango_font_description_free(description);
    }
};
using DescriptionPointer = std::unique_ptr<PangoFontDescription, DescriptionRelease>;

const FcChar8* fcString(const std::string& text) {
    return reinterpret_cast<const FcChar8*>(text.c_str());
}

std::string stringOf(FcPattern* pattern, const char* object) {
    FcChar8* value = nullptr;
    if (FcPatternGetString(pattern, object, 0, &value) != FcResultMatch) {
        return {};
    }
    return reinterpret_cast<const char*>(value);
}

bool boolOf(FcPattern* pattern, const char* object) {
    FcBool value = FcFalse;
    return FcPatternGetBool(pattern, object, 0, &value) == FcResultMatch && value == FcTrue;
}

bool hasName(FcPattern* pattern, const char* object, const std::string& name) {
    FcChar8* value = nullptr;
    for (int i = 0; FcPatternGetString(pattern, object, i, &value) == FcResultMatch; ++i) {
        if (FcStrCmpIgnoreCase(value, fcString(name)) == 0) {
            return true;
        }
    }
    return false;
}

// The distance of a face from the regular face of its family.
int distanceFromRegular(FcPattern* pattern) {
    const auto distance = [&](const char* object, int regular, int weight) {
        int value = 0;
        // Variable fonts have ranges here; their named instances have patterns of their own.
        return FcPatternGetInteger(pattern, object, 0, &value) == FcResultMatch
                   ? std::abs(value - regular) * weight
                   : 10000;
    };
    return distance(FC_SLANT, FC_SLANT_ROMAN, 10) + distance(FC_WIDTH, FC_WIDTH_NORMAL, 10) +
           distance(FC_WEIGHT, FC_WEIGHT_REGULAR, 1);
}

bool writeWhole(int file, std::span<const unsigned char> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written <= 0) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

std::optional<std::size_t> faceOfToken(std::string_view family) {
    if (!family.starts_with(kFaceToken)) {
        return std::nullopt;
    }
    family.remove_prefix(kFaceToken.size());
    std::size_t number = 0;
    std::from_chars(family.data(), family.data() + family.size(), number);
    return number;
}

// The families of a pattern with their binding, removed from it in order to add them in another
// order.
class Families {
public:
    explicit Families(FcPattern* pattern) : pattern_(FcPatternDuplicate(pattern)) {
        FcPatternDel(pattern, FC_FAMILY);
    }
    ~Families() { FcPatternDestroy(pattern_); }
    Families(const Families&) = delete;
    Families& operator=(const Families&) = delete;

    // Appends at most `count` families, beginning with number `first`, to `pattern`.
    void appendTo(FcPattern* pattern, int first, int count) const {
        FcValue value;
        FcValueBinding binding = FcValueBindingWeak;
        for (int i = first;
             i - first < count &&
             FcPatternGetWithBinding(pattern_, FC_FAMILY, i, &value, &binding) == FcResultMatch;
             ++i) {
            if (binding == FcValueBindingWeak) {
                FcPatternAddWeak(pattern, FC_FAMILY, value, FcTrue);
            } else {
                FcPatternAdd(pattern, FC_FAMILY, value, FcTrue);
            }
        }
    }

private:
    FcPattern* pattern_;
};

cairo_hint_style_t hintStyleOf(CTFontSmoothing::HintStyle style) {
    switch (style) {
        case CTFontSmoothing::HintStyle::None:
            return CAIRO_HINT_STYLE_NONE;
        case CTFontSmoothing::HintStyle::Slight:
            return CAIRO_HINT_STYLE_SLIGHT;
        case CTFontSmoothing::HintStyle::Medium:
            return CAIRO_HINT_STYLE_MEDIUM;
        default:
            return CAIRO_HINT_STYLE_FULL;
    }
}

void appendFamilies(FcPattern* pattern, FcFontSet* fonts, bool color) {
    for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
        if (boolOf(fonts->fonts[i], FC_COLOR) == color) {
            FcPatternAddString(pattern, FC_FAMILY, fcString(stringOf(fonts->fonts[i], FC_FAMILY)));
        }
    }
}

}  // namespace

std::size_t glyphCacheBytes() {
    return FontMap::Locked()->glyphs().byteCount();
}

FontMap& FontMap::instance() {
    // Never destroyed, because static texts may be released later.
    static FontMap& map = *new FontMap;
    return map;
}

FontMap::FontMap()
    : config_(FcConfigReference(nullptr)), fontMap_(pango_cairo_font_map_new()), context_(nullptr) {
    auto* const fcMap = PANGO_FC_FONT_MAP(fontMap_);
    pango_fc_font_map_set_config(fcMap, config_);
    pango_fc_font_map_set_default_substitute(
        fcMap,
        [](FcPattern* pattern, void* self) { static_cast<FontMap*>(self)->substitute(pattern); },
        this, nullptr);

    scaleBitmapFonts();

    context_ = pango_font_map_create_context(fontMap_);
    // Text keeps its proportions at every scale and moves by fractions of a pixel, so metrics and
    // positions are not rounded.
    pango_context_set_round_glyph_positions(context_, FALSE);

    const std::scoped_lock lock(s_mutex);
    s_existing = this;
    applySmoothing(s_smoothing);
}

void FontMap::setSmoothing(const CTFontSmoothing& smoothing) {
    FontMap* map = nullptr;
    {
        const std::scoped_lock lock(s_mutex);
        s_smoothing = smoothing;
        map = s_existing;
    }
    if (map != nullptr) {
        const std::scoped_lock lock(map->mutex_);
        map->applySmoothing(smoothing);
    }
}

void FontMap::applySmoothing(const CTFontSmoothing& smoothing) {
    cairo_font_options_t* const options = cairo_font_options_create();
    // Subpixels are not used.
    cairo_font_options_set_antialias(options, smoothing.isAntialiased.value_or(true)
                                                  ? CAIRO_ANTIALIAS_GRAY
                                                  : CAIRO_ANTIALIAS_NONE);
    cairo_font_options_set_hint_style(options, smoothing.hintStyle
                                                   ? hintStyleOf(*smoothing.hintStyle)
                                                   : CAIRO_HINT_STYLE_DEFAULT);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context_, options);
    cairo_font_options_destroy(options);
    fonts_.clear();
}

// Called for every pattern that Pango is about to look up.
void FontMap::substitute(FcPattern* pattern) const {
    const std::string requested = stringOf(pattern, FC_FAMILY);
    if (const auto number = faceOfToken(requested)) {
        const FontFace& face = *faces_[*number];
        FcPatternDel(pattern, FC_FAMILY);
        FcPatternAddString(pattern, FC_FAMILY, fcString(face.family));
        FcConfigSubstitute(config_, pattern, FcMatchPattern);
        // The file has the highest priority in a match; the name selects a face in a collection.
        FcPatternAddString(pattern, FC_FILE, fcString(face.file));
        FcPatternAddString(pattern, FC_POSTSCRIPT_NAME, fcString(face.postScriptName));
    }
    FcFontSet* const registered = FcConfigGetFonts(config_, FcSetApplication);
    const Families families(pattern);
    const bool emoji = requested == kEmoji;
    if (emoji) {
        appendFamilies(pattern, registered, true);
    }
    families.appendTo(pattern, 0, 1);
    appendFamilies(pattern, registered, false);
    if (!emoji) {
        appendFamilies(pattern, registered, true);
    }
    families.appendTo(pattern, 1, std::numeric_limits<int>::max());
}

// Desktops have a rule that scales bitmap glyphs to the requested size. Without it, color emoji
// have the size of their bitmaps.
void FontMap::scaleBitmapFonts() {
    FcPattern* const request =
        FcPatternBuild(nullptr, FC_PIXEL_SIZE, FcTypeDouble, 10.0, static_cast<char*>(nullptr));
    FcPattern* const bitmap =
        FcPatternBuild(nullptr, FC_PIXEL_SIZE, FcTypeDouble, 100.0, FC_OUTLINE, FcTypeBool, FcFalse,
                       FC_SCALABLE, FcTypeBool, FcTrue, static_cast<char*>(nullptr));
    FcConfigSubstituteWithPat(config_, bitmap, request, FcMatchFont);
    FcMatrix* matrix = nullptr;
    if (FcPatternGetMatrix(bitmap, FC_MATRIX, 0, &matrix) != FcResultMatch) {
        FcConfigParseAndLoadFromMemory(config_, reinterpret_cast<const FcChar8*>(kScaleBitmapFonts),
                                       FcFalse);
    }
    FcPatternDestroy(bitmap);
    FcPatternDestroy(request);
}

FcPattern* FontMap::find(const char* object, const std::string& name) const {
    for (const FcSetName set : {FcSetApplication, FcSetSystem}) {
        FcFontSet* const fonts = FcConfigGetFonts(config_, set);
        FcPattern* best = nullptr;
        for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
            FcPattern* const font = fonts->fonts[i];
            const bool drawable = boolOf(font, FC_SCALABLE) || boolOf(font, FC_COLOR);
            if (drawable && hasName(font, object, name) &&
                (best == nullptr || distanceFromRegular(font) < distanceFromRegular(best))) {
                best = font;
            }
        }
        if (best != nullptr) {
            return best;
        }
    }
    return nullptr;
}

FcPattern* FontMap::findFallback() const {
    FcPattern* const request = FcPatternCreate();
    FcPatternAddString(request, FC_FAMILY, fcString("sans-serif"));
    FcPatternAddBool(request, FC_SCALABLE, FcTrue);
    FcConfigSubstitute(config_, request, FcMatchPattern);
    FcDefaultSubstitute(request);
    FcResult result = FcResultNoMatch;
    FcPattern* match = nullptr;
    FcFontSet* registered = FcConfigGetFonts(config_, FcSetApplication);
    if (registered != nullptr && registered->nfont > 0) {
        match = FcFontSetMatch(config_, &registered, 1, request, &result);
    }
    if (match == nullptr) {
        match = FcFontMatch(config_, request, &result);
    }
    FcPatternDestroy(request);
    return match;
}

// Resolves a family with words for a style ("DejaVu Serif Bold") and the generic families of
// fontconfig ("serif", "Monospace Bold").
FcPattern* FontMap::findStyle(const std::string& name) const {
    if (g_utf8_validate(name.c_str(), -1, nullptr) == FALSE) {
        return nullptr;
    }
    const DescriptionPointer description(pango_font_description_from_string(name.c_str()));
    const char* const family = pango_font_description_get_family(description.get());
    if (family == nullptr) {
        return nullptr;
    }
    const bool isGeneric = std::ranges::any_of(kGenericFamilies, [&](const char* generic) {
        return g_ascii_strcasecmp(family, generic) == 0;
    });
    if (!isGeneric && find(FC_FAMILY, family) == nullptr) {
        return nullptr;
    }
    const int weight = pango_font_description_get_weight(description.get());
    const bool isUpright =
        pango_font_description_get_style(description.get()) == PANGO_STYLE_NORMAL;
    FcPattern* const request = FcPatternCreate();
    FcPatternAddString(request, FC_FAMILY, fcString(family));
    FcPatternAddDouble(request, FC_WEIGHT, FcWeightFromOpenTypeDouble(weight));
    FcPatternAddInteger(request, FC_SLANT, isUpright ? FC_SLANT_ROMAN : FC_SLANT_ITALIC);
    FcPatternAddBool(request, FC_SCALABLE, FcTrue);
    FcConfigSubstitute(config_, request, FcMatchPattern);
    FcDefaultSubstitute(request);
    FcResult result = FcResultNoMatch;
    FcPattern* const match = FcFontMatch(config_, request, &result);
    FcPatternDestroy(request);
    return match;
}

std::size_t FontMap::addFace(FcPattern* pattern) {
    auto face = std::make_unique<FontFace>();
    face->file = stringOf(pattern, FC_FILE);
    face->family = stringOf(pattern, FC_FAMILY);
    face->postScriptName = stringOf(pattern, FC_POSTSCRIPT_NAME);
    // Weight, slant and width also select the fallback for missing characters.
    face->description = pango_fc_font_description_from_pattern(pattern, FALSE);
    const std::string token = std::string(kFaceToken) + std::to_string(faces_.size());
    pango_font_description_set_family(face->description, token.c_str());
    faces_.push_back(std::move(face));
    return faces_.size() - 1;
}

const FontFace& FontMap::resolve(const std::string& name) {
    const auto known = faceByName_.find(name);
    if (known != faceByName_.end()) {
        return *faces_[known->second];
    }
    FcPattern* font = nullptr;
    for (const char* const object : {FC_POSTSCRIPT_NAME, FC_FULLNAME, FC_FAMILY}) {
        if (font == nullptr && !name.empty()) {
            font = find(object, name);
        }
    }
    std::size_t number = 0;
    if (font != nullptr) {
        number = addFace(font);
    } else if (FcPattern* const match = name.empty() ? nullptr : findStyle(name)) {
        number = addFace(match);
        FcPatternDestroy(match);
    } else if (FcPattern* const fallback = findFallback()) {
        number = addFace(fallback);
        FcPatternDestroy(fallback);
    } else {
        // This machine has no fonts: text has no ink.
        auto face = std::make_unique<FontFace>();
        face->description = pango_font_description_new();
        faces_.push_back(std::move(face));
        number = faces_.size() - 1;
    }
    faceByName_.emplace(name, number);
    return *faces_[number];
}

std::shared_ptr<const RunFont> FontMap::load(const PangoFontDescription* description) {
    PangoFont* const font = pango_font_map_load_font(fontMap_, context_, description);
    if (font == nullptr) {
        return nullptr;
    }
    auto runFont = RunFont::of(font);
    g_object_unref(font);
    return runFont;
}

std::shared_ptr<const CTFont> FontMap::sharedFont(
    const std::string& name, double size,
    const std::function<std::shared_ptr<const CTFont>()>& make) {
    auto& known = fonts_[{name, size}];
    if (auto font = known.lock()) {
        return font;
    }
    auto font = make();
    known = font;
    if (fonts_.size() >= fontsSweptAt_) {
        std::erase_if(fonts_, [](const auto& entry) { return entry.second.expired(); });
        fontsSweptAt_ = 2 * fonts_.size() + 64;
    }
    return font;
}

bool FontMap::addApplicationFont(std::span<const unsigned char> bytes) {
    // fontconfig and FreeType open fonts by path, repeatedly. The path of a file in memory keeps
    // its content for as long as the descriptor is open, which is as long as the process.
    const int file = memfd_create("font", MFD_CLOEXEC);
    if (file < 0) {
        return false;
    }
    const std::string path = "/proc/self/fd/" + std::to_string(file);
    if (!writeWhole(file, bytes) || FcConfigAppFontAddFile(config_, fcString(path)) == FcFalse) {
        close(file);
        return false;
    }
    // Names and fallbacks may now refer to other fonts. Existing texts keep their fonts.
    faceByName_.clear();
    fonts_.clear();
    {
        const std::scoped_lock lock(s_mutex);
        s_registeredFiles.push_back("/proc/" + std::to_string(getpid()) + "/fd/" +
                                    std::to_string(file));
    }
    pango_fc_font_map_config_changed(PANGO_FC_FONT_MAP(fontMap_));
    return true;
}

std::vector<std::string> FontMap::registeredFiles() {
    const std::scoped_lock lock(s_mutex);
    return s_registeredFiles;
}

bool FontMap::isRegistered(const std::string& postScriptName) const {
    FcFontSet* const registered = FcConfigGetFonts(config_, FcSetApplication);
    for (int i = 0; registered != nullptr && i < registered->nfont; ++i) {
        if (hasName(registered->fonts[i], FC_POSTSCRIPT_NAME, postScriptName)) {
            return true;
        }
    }
    return false;
}

}  // namespace orvane::platform
