#pragma once

#include <memory>
#include <string>

#include "orvane/commons/Export.h"

struct _PangoFontDescription;

namespace orvane::platform {

// A font at a size. Immutable and shared; safe to hand between threads.
class ORVANE_EXPORT CTFont {
public:
    // The interface's default size, also for sizes that are no size: zero, negative, not a number.
    static constexpr double kDefaultSize = 12;

    // `name` is a PostScript name, a full name or a family, looked up in that order without regard
    // to case, among the registered fonts first and then among the system's. A name that is none of
    // them gives a real font all the same: among the registered ones the nearest to a plain
    // sans-serif, else the system's. `size` is in user units.
    static std::shared_ptr<const CTFont> createWithName(const std::string& name, double size);

    ~CTFont();
    CTFont(const CTFont&) = delete;
    CTFont& operator=(const CTFont&) = delete;

    // Of the font that was found.
    const std::string& postScriptName() const { return postScriptName_; }

    // As the font's tables give them, in user units and not rounded; all three count positive.
    double size() const { return size_; }
    double ascent() const { return ascent_; }
    double descent() const { return descent_; }
    double leading() const { return leading_; }

    // How the shaping library is asked for this font.
    const _PangoFontDescription* description() const { return description_; }

private:
    CTFont(const std::string& name, double size);

    std::string postScriptName_;
    double size_;
    double ascent_ = 0, descent_ = 0, leading_ = 0;
    _PangoFontDescription* description_;
};

}  // namespace orvane::platform
