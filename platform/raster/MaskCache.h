#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

#include "platform/coregraphics/CGPath.h"
#include "platform/raster/Mask.h"
#include "platform/raster/MaskRasterizer.h"

namespace orvane::platform {

// Everything that a mask is a function of.
struct MaskKey {
    // The outline itself; none for the plain shapes, which are the same wherever they are and are
    // told by kind, size and corner.
    std::shared_ptr<const CGPath::Outline> outline;
    std::vector<double> dash;

    // Compared and hashed as a whole.
    struct Numbers {
        std::uint32_t kind = 0;  // of plain shape
        Coverage coverage = Coverage::Fill;
        double width = 0;
        double height = 0;
        double cornerWidth = 0;
        double cornerHeight = 0;
        // Outline to pixels, and the pen's user space likewise; the translation is what is left of
        // it behind whole pixels.
        CGAffineTransform transform;
        double lineWidth = 0;
        double dashPhase = 0;
        // The mask's pixels.
        std::int64_t left = 0;
        std::int64_t top = 0;
        friend bool operator==(const Numbers&, const Numbers&) = default;
    };
    Numbers numbers;
};

// The coverage masks of the shapes painted lately, so that a shape that is painted again, or one
// like it elsewhere, is not rasterised again. One a thread; bounded by memory: what was used the
// longest time ago goes first. An outline stays alive, and so unchanged, as long as its masks do.
class MaskCache {
public:
    static constexpr std::size_t kBudget = std::size_t{64} << 20;

    static MaskCache& forThisThread();

    explicit MaskCache(std::size_t budget) : budget_(budget) {}

    // A key that owns nothing, for looking up.
    struct Lookup {
        const CGPath::Outline* outline;
        std::span<const double> dash;
        const MaskKey::Numbers& numbers;
    };

    // Null when there is none. Good until the next insertion.
    const Mask* find(const Lookup& lookup);
    const Mask& insert(MaskKey key, Mask mask);

    MaskRasterizer& rasteriser() { return rasteriser_; }
    std::size_t byteCount() const { return byteCount_; }

private:
    struct Entry {
        MaskKey key;
        Mask mask;
        std::size_t byteCount;
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(const Lookup& lookup) const;
        std::size_t operator()(const MaskKey* key) const;
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(const Lookup& a, const MaskKey* b) const;
        bool operator()(const MaskKey* a, const Lookup& b) const { return (*this)(b, a); }
        bool operator()(const MaskKey* a, const MaskKey* b) const;
    };

    std::size_t budget_;
    std::size_t byteCount_ = 0;
    std::list<Entry> entries_;  // used lately first
    std::unordered_map<const MaskKey*, std::list<Entry>::iterator, Hash, Equal> index_;
    MaskRasterizer rasteriser_;
};

}  // namespace orvane::platform
