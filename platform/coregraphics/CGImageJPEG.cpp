#include <algorithm>
#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <vector>

#include <jpeglib.h>  // needs <cstddef> and <cstdio> before it

#include <jerror.h>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/imageLimits.h"
#include "platform/coregraphics/premultiplied.h"

namespace orvane::platform {

namespace {

// A progressive picture may announce scan after scan over all its pixels; honest ones have a dozen.
constexpr int kMostScans = 100;

// The library reports failures by a function that must not return. This one jumps back to where
// decoding began; nothing between there and here owns anything but the library's own structure.
struct ErrorManager {
    jpeg_error_mgr base;  // first: the library's pointer to it is this one's, too
    std::jmp_buf back;
};

[[noreturn]] void fail(j_common_ptr info) {
    std::longjmp(reinterpret_cast<ErrorManager*>(info->err)->back, 1);
}

// Damage is reported as a warning and then glossed over with grey. Oddities that lose no pixel are
// let pass.
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

// One decompression. All that owns anything lives here, outside the function that is jumped back
// to.
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

    // False for what cannot be decoded whole.
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
        const bool isFourColours =
            info_.jpeg_color_space == JCS_CMYK || info_.jpeg_color_space == JCS_YCCK;
        info_.out_color_space = isFourColours ? JCS_CMYK : JCS_RGB;
        jpeg_start_decompress(&info_);
        allocate();
        while (info_.output_scanline < info_.output_height) {
            JSAMPROW row = row_.data();
            std::uint32_t* const pixels =
                pixels_.data() + std::size_t{info_.output_scanline} * info_.output_width;
            jpeg_read_scanlines(&info_, &row, 1);
            convertRow(pixels, isFourColours);
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

    void convertRow(std::uint32_t* pixels, bool isFourColours) const {
        const unsigned char* sample = row_.data();
        // The program that made four colours common wrote them inverted, and leaves a mark.
        const std::uint32_t inverted = info_.saw_Adobe_marker ? 0 : 255;
        for (JDIMENSION x = 0; x < info_.output_width; ++x) {
            if (isFourColours) {
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
