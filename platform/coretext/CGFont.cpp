#include "platform/coretext/CGFont.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

#include <span>
#include <utility>

namespace orvane::platform {

namespace {

class FontLibrary {
public:
    FontLibrary() {
        if (FT_Init_FreeType(&library_) != 0) {
            library_ = nullptr;
        }
    }
    ~FontLibrary() { FT_Done_FreeType(library_); }
    FontLibrary(const FontLibrary&) = delete;
    FontLibrary& operator=(const FontLibrary&) = delete;

    // Returns null unless the bytes are a font. The face is released with the library.
    FT_Face open(std::span<const unsigned char> bytes) const {
        FT_Face face = nullptr;
        const bool opened = library_ != nullptr &&
                            FT_New_Memory_Face(library_, bytes.data(),
                                               static_cast<FT_Long>(bytes.size()), 0, &face) == 0;
        return opened ? face : nullptr;
    }

private:
    FT_Library library_ = nullptr;
};

// FreeType skips tables that extend beyond the end of the file and opens the rest; such a font
// would show boxes or nothing.
bool isComplete(FT_Face face, std::span<const unsigned char> bytes) {
    FT_ULong usable = 0;
    if (!FT_IS_SFNT(face) || FT_Sfnt_Table_Info(face, 0, nullptr, &usable) != 0) {
        return false;
    }
    constexpr std::size_t kTableCountAt = 4;
    const FT_ULong announced = FT_ULong{bytes[kTableCountAt]} << 8 | bytes[kTableCountAt + 1];
    return usable == announced;
}

}  // namespace

std::shared_ptr<const CGFont> CGFont::createWithDataProvider(const CGDataProvider& provider,
                                                             const std::string& file) {
    const FontLibrary library;
    const FT_Face face = library.open(provider.bytes());
    if (face == nullptr || face->num_glyphs == 0) {
        return nullptr;
    }
    // A collection does not begin with the table directory of a font.
    if (face->num_faces == 1 && !isComplete(face, provider.bytes())) {
        return nullptr;
    }
    const char* const name = FT_Get_Postscript_Name(face);
    return std::shared_ptr<const CGFont>(new CGFont(provider, file, name != nullptr ? name : ""));
}

}  // namespace orvane::platform
