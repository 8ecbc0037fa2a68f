#include "platform/raster/MaskCache.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "platform/coregraphics/Outline.h"
#include "platform/raster/cacheBytes.h"

namespace orvane::platform {

namespace {

MaskCache::Lookup lookupOf(const MaskKey& key) {
    return {key.outline.get(), key.dash, key.numbers};
}

// Mixes 64-bit words into a hash. finish() folds the high bits into the low bits, which tables use.
class Mixer {
public:
    void add(std::uint64_t word) { state_ = (std::rotl(state_, 23) ^ word) * 0x9e3779b97f4a7c15u; }
    // Adding 0.0 maps -0.0 to 0.0, because they compare equal.
    void add(double number) { add(std::bit_cast<std::uint64_t>(number + 0.0)); }
    void add(const CGAffineTransform& t) {
        for (const double number : {t.a, t.b, t.c, t.d, t.tx, t.ty}) {
            add(number);
        }
    }
    std::size_t finish() const { return state_ ^ (state_ >> 32); }

private:
    std::uint64_t state_ = 0x243f6a8885a308d3u;
};

std::size_t byteCountOf(const CGPath::Outline& outline) {
    const auto* segments = std::get_if<Segments>(&outline.form);
    return sizeof outline +
           (segments == nullptr
                ? 0
                : segments->verbs.capacity() + segments->points.capacity() * sizeof(CGPoint));
}

}  // namespace

std::size_t coverageCacheBytes() {
    return MaskCache::forThisThread().byteCount();
}

MaskCache& MaskCache::forThisThread() {
    thread_local MaskCache cache(kBudget);
    return cache;
}

std::size_t MaskCache::Hash::operator()(const Lookup& lookup) const {
    const MaskKey::Numbers& n = lookup.numbers;
    Mixer mixer;
    mixer.add(std::bit_cast<std::uintptr_t>(lookup.outline));
    mixer.add(std::uint64_t{n.kind} << 32 | static_cast<std::uint64_t>(n.coverage));
    for (const double number :
         {n.width, n.height, n.cornerWidth, n.cornerHeight, n.lineWidth, n.dashPhase, n.opacity}) {
        mixer.add(number);
    }
    mixer.add(n.transform);
    mixer.add(static_cast<std::uint64_t>(n.left));
    mixer.add(static_cast<std::uint64_t>(n.top));
    for (const double length : lookup.dash) {
        mixer.add(length);
    }
    return mixer.finish();
}

std::size_t MaskCache::Hash::operator()(const MaskKey* key) const {
    return (*this)(lookupOf(*key));
}

bool MaskCache::Equal::operator()(const Lookup& a, const MaskKey* b) const {
    return a.outline == b->outline.get() && a.numbers == b->numbers &&
           std::ranges::equal(a.dash, b->dash);
}

bool MaskCache::Equal::operator()(const MaskKey* a, const MaskKey* b) const {
    return (*this)(lookupOf(*a), b);
}

const Mask* MaskCache::find(const Lookup& lookup) {
    const auto found = index_.find(lookup);
    if (found == index_.end()) {
        return nullptr;
    }
    entries_.splice(entries_.begin(), entries_, found->second);
    return &found->second->mask;
}

const Mask& MaskCache::insert(MaskKey key, Mask mask) {
    constexpr std::size_t kBookkeeping = 64;  // the nodes of list and table
    std::size_t size =
        sizeof(Entry) + kBookkeeping + mask.byteCount() + key.dash.capacity() * sizeof(double);
    if (key.outline && ++entriesOfOutline_[key.outline.get()] == 1) {
        byteCount_ += byteCountOf(*key.outline);
    }
    entries_.push_front({std::move(key), std::move(mask), size});
    index_.emplace(&entries_.front().key, entries_.begin());
    byteCount_ += size;
    while (byteCount_ > budget_ && entries_.size() > 1) {
        dropOldest();
    }
    return entries_.front().mask;
}

void MaskCache::dropOldest() {
    const Entry& oldest = entries_.back();
    byteCount_ -= oldest.byteCount;
    const CGPath::Outline* const outline = oldest.key.outline.get();
    if (outline != nullptr && --entriesOfOutline_[outline] == 0) {
        byteCount_ -= byteCountOf(*outline);
        entriesOfOutline_.erase(outline);
    }
    index_.erase(&oldest.key);
    entries_.pop_back();
}

}  // namespace orvane::platform
