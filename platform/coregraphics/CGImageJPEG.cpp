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

namespace orvane::platform {

namespace {

// A progressive image can contain any number of scans over all its pixels; encoders write about a
// dozen.
constexpr int kMostScans = 100;

// libjpeg reports failures through a function that must not return. This one jumps back to the
// start of decoding. No object with a destructor may be created in between.
struct ErrorManager {
    jpeg_error_mgr base;  // first member: libjpeg's pointer to it is converted back
    std::jmp_buf back;
};

[[noreturn]] void fail(j_common_ptr info) {
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
            return;
        default:
            fail(info);
    }
}

void onProgress(j_common_ptr info) {
    if (reinterpret_cast<j_decompress_ptr>(info)->input_scan_number > kMostScans) {
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
        jpeg_read_header(&info_, TRUE);
        if (!isSensibleImageSize(info_.image_width, info_.image_height) ||
            !canHold(bytes.size(), std::int64_t{info_.image_width} * info_.image_height,
                     kPixelsPerByte)) {
            return false;
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
        jpeg_finish_decompress(&info_);
        return true;
    }

    int width() const { return static_cast<int>(info_.output_width); }
    int height() const { return static_cast<int>(info_.output_height); }
    std::vector<std::uint32_t> takePixels() { return std::move(pixels_); }

private:
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
    return createWithPixels(decompressor.width(), decompressor.height(), decompressor.takePixels());
}

}  // namespace orvane::platform
