#include <algorithm>

#include "platform/raster/Blend.h"
#include "platform/raster/PixmanImage.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace orvane::platform {

namespace {

#if defined(__x86_64__)

// Multiplies the 16-bit channels of four pixels by 255 minus the alphas of their sources (repeated
// in `alpha`), divides by 255 and rounds to nearest.
[[gnu::target("avx2")]] inline __m256i scaledBelow(__m256i below, __m256i alpha) {
    const __m256i through = _mm256_sub_epi16(_mm256_set1_epi16(255), alpha);
    const __m256i x = _mm256_add_epi16(_mm256_mullo_epi16(below, through), _mm256_set1_epi16(0x80));
    return _mm256_srli_epi16(_mm256_add_epi16(x, _mm256_srli_epi16(x, 8)), 8);
}

// The same as over() in premultiplied.h, for eight pixels at once and equal to the last bit. Runs
// of transparent or opaque pixels, which are common, are skipped or copied.
[[gnu::target("avx2")]] void blendRow(std::uint32_t* row, const std::uint32_t* colors, int count) {
    const __m256i alphaBits = _mm256_set1_epi32(static_cast<int>(0xff000000u));
    const __m256i zero = _mm256_setzero_si256();
    // The positions of the alphas of the two lower and the two upper pixels in each half; -1 makes
    // a zero.
    const __m256i lower = _mm256_broadcastsi128_si256(
        _mm_setr_epi8(3, -1, 3, -1, 3, -1, 3, -1, 7, -1, 7, -1, 7, -1, 7, -1));
    const __m256i upper = _mm256_broadcastsi128_si256(
        _mm_setr_epi8(11, -1, 11, -1, 11, -1, 11, -1, 15, -1, 15, -1, 15, -1, 15, -1));
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        auto* const place = reinterpret_cast<__m256i*>(row + i);
        const __m256i source = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(colors + i));
        if (_mm256_testz_si256(source, source) != 0) {
            continue;
        }
        if (_mm256_testc_si256(source, alphaBits) != 0) {
            _mm256_storeu_si256(place, source);
            continue;
        }
        const __m256i below = _mm256_loadu_si256(place);
        const __m256i kept = _mm256_packus_epi16(
            scaledBelow(_mm256_unpacklo_epi8(below, zero), _mm256_shuffle_epi8(source, lower)),
            scaledBelow(_mm256_unpackhi_epi8(below, zero), _mm256_shuffle_epi8(source, upper)));
        _mm256_storeu_si256(place, _mm256_add_epi8(source, kept));
    }
    for (; i < count; ++i) {
        row[i] = over(colors[i], row[i]);
    }
}

// The rows of a small image are far apart in a wide bitmap, where the processor does not prefetch
// them.
constexpr int kRowsAhead = 4;

void prefetch(const std::uint32_t* row, int count) {
    constexpr int kCacheLine = 16;
    for (int i = 0; i < std::min(count, 512); i += kCacheLine) {
        __builtin_prefetch(row + i, 1);
    }
}

bool hasWideRegisters() {
    static const bool has = __builtin_cpu_supports("avx2") != 0;
    return has;
}

#endif

}  // namespace

void blendPicture(const Bitmap& bitmap, const PixelRect& area, const std::uint32_t* colors,
                  std::ptrdiff_t stride) {
#if defined(__x86_64__)
    // Pixman uses registers of half this width.
    if (hasWideRegisters()) {
        for (int y = area.top; y < area.bottom; ++y, colors += stride) {
            if (y + kRowsAhead < area.bottom) {
                prefetch(bitmap.at(area.left, y + kRowsAhead), area.width());
            }
            blendRow(bitmap.at(area.left, y), colors, area.width());
        }
        return;
    }
#endif
    const PixmanImage source = wrapPixels(colors, area.width(), area.height(), stride);
    const PixmanImage target =
        wrapPixels(bitmap.at(area.left, area.top), area.width(), area.height(), bitmap.stride);
    if (source && target) {
        pixman_image_composite32(PIXMAN_OP_OVER, source.get(), nullptr, target.get(), 0, 0, 0, 0, 0,
                                 0, area.width(), area.height());
    }
}

}  // namespace orvane::platform
