#pragma once

#include <fontconfig/fontconfig.h>
#include <pango/pango.h>

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/coretext/CTFontManager.h"
#include "platform/coretext/GlyphCache.h"

namespace orvane::platform {

class CTFont;
class RunFont;

// The font file that a name refers to.
struct FontFace {
    std::string file;
    std::string family;
    std::string postScriptName;
    // Selects this face in Pango; without a size.
    PangoFontDescription* description = nullptr;
};

// The fonts of the process, the lookup of fonts by name, and the state of Pango. Pango and
// fontconfig serve one caller at a time, so all code of this module that shapes, measures or paints
// holds the lock.
//
// Registered fonts have priority over those of the system in every lookup and as fallback for
// missing characters, so that text in them looks the same on every machine.
class FontMap {
public:
    // Locked access to the map. A thread may lock it repeatedly.
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

    // Finds a face by the rules of CTFont::createWithName. Always returns a face.
    const FontFace& resolve(const std::string& name);
    // False if neither the system nor the process has any font.
    bool hasFonts() { return !resolve({}).file.empty(); }
    std::shared_ptr<const RunFont> load(const PangoFontDescription* description);

    // Returns the living CTFont of that name and size, or else the result of `make`.
    std::shared_ptr<const CTFont> sharedFont(
        const std::string& name, double size,
        const std::function<std::shared_ptr<const CTFont>()>& make);

    // Adds a font, given as the bytes of its file, to the process. Returns false when fontconfig
    // refuses it.
    bool addApplicationFont(std::span<const unsigned char> bytes);
    // Whether a registered font has this PostScript name.
    bool isRegistered(const std::string& postScriptName) const;
    // See CTFontManager. Both create no map, because loading fontconfig takes time.
    static void setSmoothing(const CTFontSmoothing& smoothing);
    static std::vector<std::string> registeredFiles();

private:
    FontMap();
    static FontMap& instance();

    FcPattern* find(const char* object, const std::string& name) const;
    FcPattern* findStyle(const std::string& name) const;
    FcPattern* findFallback() const;
    void scaleBitmapFonts();
    std::size_t addFace(FcPattern* pattern);
    void substitute(FcPattern* pattern) const;
    void applySmoothing(const CTFontSmoothing& smoothing);

    static inline std::mutex s_mutex;  // guards these:
    static inline CTFontSmoothing s_smoothing;
    static inline FontMap* s_existing = nullptr;
    static inline std::vector<std::string> s_registeredFiles;

    std::recursive_mutex mutex_;
    FcConfig* config_;
    PangoFontMap* fontMap_;
    PangoContext* context_;
    // Pointers, because texts refer to faces.
    std::vector<std::unique_ptr<FontFace>> faces_;
    std::unordered_map<std::string, std::size_t> faceByName_;
    std::map<std::pair<std::string, double>, std::weak_ptr<const CTFont>> fonts_;
    std::size_t fontsSweptAt_ = 64;
    GlyphCache glyphs_;
};

}  // namespace orvane::platform
