#include <algorithm>
#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <vector>

#include <jpeglib.h>  // must follow <cstddef> and <cstdio>

#include <jerror.h>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/imageLimits.h"
#include "platform/coregraphics/premultiplied.h"
#include "platform/foundation/NSLog.h"

namespace orvane::platform {

namespace {

// A progressive image can contain any number of scans over all its pixels; encoders write about a
// dozen.
// Their number is limited for small images, and their work for large ones.
constexpr int kMostScans = 100;
constexpr std::int64_t kMostScannedPixels = std::int64_t{1} << 31;

// Larger images are decoded at reduced resolution, up to this number of pixels.
constexpr std::int64_t kMostFilePixels = std::int64_t{1} << 28;
// libjpeg keeps all coefficients of a progressive image.
constexpr long kMostMemory = 512L << 20;

// libjpeg reports failures through a function that must not return. This one jumps back to the
// start of decoding. No object with a destructor may be created in between.
struct ErrorManager {
    jpeg_error_mgr base;  // first member: libjpeg's pointer to it is converted back
    std::jmp_buf back;
    bool isEndMissing;  // the data ended without the end marker
};

[[noreturn]] void fail(j_common_ptr info) {
    if (info->err->msg_code == JERR_NO_BACKING_STORE) {
        NSLog("A progressive JPEG needs more than %ld MB of memory", kMostMemory >> 20);
    }
    std::longjmp(reinterpret_cast<ErrorManager*>(info->err)->back, 1);
}

// libjpeg reports damage as a warning and continues with gray pixels; treat it as a failure. Ignore
// oddities that lose no pixels.
void onMessage(j_common_ptr info, int level) {
    if (level >= 0) {
        return;
    }
    switch (info->err->msg_code) {
        case JWRN_EXTRANEOUS_DATA:
        case JWRN_ADOBE_XFORM:
        case JWRN_BOGUS_PROGRESSION:
        case JWRN_JFIF_MAJOR:
        case JWRN_NOT_SEQUENTIAL:
            return;
        case JWRN_JPEG_EOF:
            // If pixels are missing as well, another warning follows.
            reinterpret_cast<ErrorManager*>(info->err)->isEndMissing = true;
            return;
        default:
            fail(info);
    }
}

void onProgress(j_common_ptr info) {
    const auto* const image = reinterpret_cast<j_decompress_ptr>(info);
    const std::int64_t scans = image->input_scan_number;
    if (scans > kMostScans ||
        scans * image->image_width * image->image_height > kMostScannedPixels) {
        fail(info);
    }
}

// A block of 8 by 8 samples takes at least one bit, and a color sample covers up to 4 by 4 pixels.
constexpr std::int64_t kPixelsPerByte = 64 * 16 * 8;

std::uint32_t opaque(std::uint32_t r, std::uint32_t g, std::uint32_t b) {
    return 0xff000000u | r << 16 | g << 8 | b;
}

// One decompression. It owns everything that decode() allocates, because decode() is left by a
// jump.
class Decompressor {
public:
    Decompressor() {
        info_.err = jpeg_std_error(&error_.base);
        error_.base.error_exit = fail;
        error_.base.emit_message = onMessage;
    }
    ~Decompressor() { jpeg_destroy_decompress(&info_); }
    Decompressor(const Decompressor&) = delete;
    Decompressor& operator=(const Decompressor&) = delete;

    // Returns false unless the whole image was decoded.
    bool decode(std::span<const unsigned char> bytes) {
        if (setjmp(error_.back) != 0) {
            return false;
        }
        jpeg_create_decompress(&info_);
        jpeg_mem_src(&info_, bytes.data(), static_cast<unsigned long>(bytes.size()));
        progress_.progress_monitor = onProgress;
        info_.progress = &progress_;
        info_.mem->max_memory_to_use = kMostMemory;
        jpeg_read_header(&info_, TRUE);
        const std::int64_t announced = std::int64_t{info_.image_width} * info_.image_height;
        if (!canHold(bytes.size(), announced, kPixelsPerByte)) {
            return false;
        }
        if (announced > kMostFilePixels) {
            reportTooLarge(info_.image_width, info_.image_height);
            return false;
        }
        info_.scale_num = 1;
        jpeg_calc_output_dimensions(&info_);
        while (!isSensibleImageSize(info_.output_width, info_.output_height)) {
            info_.scale_denom *= 2;
            jpeg_calc_output_dimensions(&info_);
        }
        const bool isCmyk =
            info_.jpeg_color_space == JCS_CMYK || info_.jpeg_color_space == JCS_YCCK;
        info_.out_color_space = isCmyk ? JCS_CMYK : JCS_RGB;
        jpeg_start_decompress(&info_);
        allocate();
        while (info_.output_scanline < info_.output_height) {
            JSAMPROW row = row_.data();
            std::uint32_t* const pixels =
                pixels_.data() + std::size_t{info_.output_scanline} * info_.output_width;
            jpeg_read_scanlines(&info_, &row, 1);
            convertRow(pixels, isCmyk);
        }
        const bool isComplete = !isScanMissing();
        jpeg_finish_decompress(&info_);
        return !error_.isEndMissing || isComplete;
    }

    CGSize size() const {
        return {static_cast<double>(info_.image_width), static_cast<double>(info_.image_height)};
    }
    int width() const { return static_cast<int>(info_.output_width); }
    int height() const { return static_cast<int>(info_.output_height); }
    std::vector<std::uint32_t> takePixels() { return std::move(pixels_); }

private:
    // Whether the scans so far leave out part of the image.
    bool isScanMissing() {
        if (jpeg_has_multiple_scans(&info_) == FALSE) {
            return false;
        }
        if (info_.coef_bits == nullptr) {
            return true;
        }
        for (int component = 0; component < info_.num_components; ++component) {
            // The number of missing bits of each coefficient; negative if all are.
            const int* const bits = info_.coef_bits[component];
            if (!std::all_of(bits, bits + DCTSIZE2, [](int missing) { return missing == 0; })) {
                return true;
            }
        }
        return false;
    }

    void allocate() {
        pixels_.resize(std::size_t{info_.output_width} * info_.output_height);
        row_.resize(std::size_t{info_.output_width} *
                    static_cast<std::size_t>(info_.output_components));
    }

    void convertRow(std::uint32_t* pixels, bool isCmyk) const {
        const unsigned char* sample = row_.data();
        // The program that introduced CMYK JPEGs wrote them inverted, with a marker of its own.
        const std::uint32_t inverted = info_.saw_Adobe_marker ? 0 : 255;
        for (JDIMENSION x = 0; x < info_.output_width; ++x) {
            if (isCmyk) {
                const std::uint32_t light = sample[3] ^ inverted;
                const auto mixed = [&](std::uint32_t ink) { return scaled(ink ^ inverted, light); };
                pixels[x] = opaque(mixed(sample[0]), mixed(sample[1]), mixed(sample[2]));
                sample += 4;
            } else {
                pixels[x] = opaque(sample[0], sample[1], sample[2]);
                sample += 3;
            }
        }
    }

    jpeg_decompress_struct info_{};
    ErrorManager error_{};
    jpeg_progress_mgr progress_{};
    std::vector<unsigned char> row_;
    std::vector<std::uint32_t> pixels_;
};

}  // namespace

std::shared_ptr<const CGImage> CGImage::createWithJPEGDataProvider(const CGDataProvider& provider) {
    Decompressor decompressor;
    if (provider.bytes().empty() || !decompressor.decode(provider.bytes())) {
        return nullptr;
    }
    return createReduced(decompressor.width(), decompressor.height(), decompressor.takePixels(),
                         decompressor.size());
}

}  // namespace orvane::platform
