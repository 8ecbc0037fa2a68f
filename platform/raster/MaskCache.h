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

// Everything that determines a mask.
struct MaskKey {
    // The outline; null for plain shapes, which are identified by kind, size and corner.
    std::shared_ptr<const CGPath::Outline> outline;
    std::vector<double> dash;

    // The parts that are compared and hashed together.
    struct Numbers {
        std::uint32_t kind = 0;  // of plain shape; 0 for others
        Coverage coverage = Coverage::Fill;
        double width = 0;
        double height = 0;
        double cornerWidth = 0;
        double cornerHeight = 0;
        // Maps the outline, and the pen's user space, to pixels. Only the fraction of a pixel
        // remains of the translation.
        CGAffineTransform transform;
        double lineWidth = 0;
        double dashPhase = 0;
        double opacity = 1;
        // The corner of the mask.
        std::int64_t left = 0;
        std::int64_t top = 0;
        friend bool operator==(const Numbers&, const Numbers&) = default;
    };
    Numbers numbers;
};

// The coverage masks of recently painted shapes, so that a shape that is painted again, or an equal
// one elsewhere, is not rasterized again. There is one cache per thread, limited by memory: the
// least recently used masks are dropped first. An outline stays alive and unchanged as long as its
// masks exist.
class MaskCache {
public:
    static constexpr std::size_t kBudget = std::size_t{64} << 20;

    static MaskCache& forThisThread();

    explicit MaskCache(std::size_t budget) : budget_(budget) {}

    // A key for lookups that owns nothing.
    struct Lookup {
        const CGPath::Outline* outline;
        std::span<const double> dash;
        const MaskKey::Numbers& numbers;
    };

    // Returns null when there is no such mask. The result is valid until the next insertion.
    const Mask* find(const Lookup& lookup);
    const Mask& insert(MaskKey key, Mask mask);

    MaskRasterizer& rasterizer() { return rasterizer_; }
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

    void dropOldest();

    std::size_t budget_;
    std::size_t byteCount_ = 0;
    std::list<Entry> entries_;  // the most recently used first
    // The number of entries of each outline, whose memory counts once.
    std::unordered_map<const CGPath::Outline*, std::size_t> entriesOfOutline_;
    std::unordered_map<const MaskKey*, std::list<Entry>::iterator, Hash, Equal> index_;
    MaskRasterizer rasterizer_;
};

}  // namespace orvane::platform
