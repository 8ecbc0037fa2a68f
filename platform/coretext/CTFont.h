#pragma once

#include <memory>
#include <string>

#include "orvane/commons/Export.h"

struct _PangoFontDescription;

namespace orvane::platform {

// A font at a size. Immutable and shared; safe to pass between threads.
class ORVANE_EXPORT CTFont {
public:
    // The default size, which also replaces invalid sizes: zero, negative, not finite.
    static constexpr double kDefaultSize = 12;

    // `name` is a PostScript name, a full name or a family, searched in that order without regard
    // to case, first among the registered fonts, then among those of the system. An unknown name
    // gives the registered font that is nearest to a plain sans-serif font, or the system's if none
    // is registered. `size` is in user units.
    static std::shared_ptr<const CTFont> createWithName(const std::string& name, double size);

    ~CTFont();
    CTFont(const CTFont&) = delete;
    CTFont& operator=(const CTFont&) = delete;

    // Of the font that was found.
    const std::string& postScriptName() const { return postScriptName_; }

    const std::string& familyName() const { return familyName_; }
    // The file, if the font is one that the application has registered; empty for the system's.
    const std::string& registeredFile() const { return registeredFile_; }

    // From the font's tables, in user units, not rounded. All three are positive.
    double size() const { return size_; }
    double ascent() const { return ascent_; }
    double descent() const { return descent_; }
    double leading() const { return leading_; }

    // The description that selects this font in this module's font map. Its family is a name of
    // the map's own.
    const _PangoFontDescription* description() const { return description_; }

private:
    CTFont(const std::string& name, double size);

    std::string postScriptName_;
    std::string familyName_;
    std::string registeredFile_;
    double size_;
    double ascent_ = 0, descent_ = 0, leading_ = 0;
    _PangoFontDescription* description_;
};

}  // namespace orvane::platform
