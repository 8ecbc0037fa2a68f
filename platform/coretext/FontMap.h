#pragma once

#include <fontconfig/fontconfig.h>
#include <pango/pango.h>

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/coretext/GlyphCache.h"

namespace orvane::platform {

class CTFont;
class RunFont;

// A font file that a name was resolved to.
struct FontFace {
    std::string file;
    std::string family;
    std::string postScriptName;
    // Names this very face to the shaping library; without a size.
    PangoFontDescription* description = nullptr;
};

// The fonts of the process: the system's and the registered ones, how names find them, and the
// shaping library's state. The libraries below take one caller at a time, so everything in this
// room that shapes, measures or paints holds the lock.
//
// Registered fonts come before the system's, in every look-up and in the fallback for characters
// that a font lacks: text in them looks the same on every machine.
class FontMap {
public:
    // The map under its lock, which the same thread may take again.
    class Locked {
    public:
        Locked() : map_(instance()), lock_(map_.mutex_) {}
        FontMap* operator->() const { return &map_; }

    private:
        FontMap& map_;
        std::scoped_lock<std::recursive_mutex> lock_;
    };

    PangoContext* context() const { return context_; }
    GlyphCache& glyphs() { return glyphs_; }

    // By the rules of CTFont::createWithName. Never without a result.
    const FontFace& resolve(const std::string& name);
    std::shared_ptr<const RunFont> load(const PangoFontDescription* description);

    // The CTFont of that name and size, `make`'s when none is alive.
    std::shared_ptr<const CTFont> sharedFont(
        const std::string& name, double size,
        const std::function<std::shared_ptr<const CTFont>()>& make);

    // Adds a font file to the process. False when the font library refuses it.
    bool addApplicationFont(const std::string& file);
    // Whether a registered font has that PostScript name.
    bool isRegistered(const std::string& postScriptName) const;

private:
    FontMap();
    static FontMap& instance();

    FcPattern* find(const char* object, const std::string& name) const;
    FcPattern* findFallback() const;
    std::size_t addFace(FcPattern* pattern);
    void substitute(FcPattern* pattern) const;

    std::recursive_mutex mutex_;
    FcConfig* config_;
    PangoFontMap* fontMap_;
    PangoContext* context_;
    // The address of a face stays: texts are under way with it.
    std::vector<std::unique_ptr<FontFace>> faces_;
    std::unordered_map<std::string, std::size_t> faceByName_;
    std::map<std::pair<std::string, double>, std::weak_ptr<const CTFont>> fonts_;
    std::size_t fontsSweptAt_ = 64;
    GlyphCache glyphs_;
};

}  // namespace orvane::platform
