#include "platform/imageio/GIFSource.h"

#include <gif_lib.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/imageLimits.h"
#include "platform/coregraphics/premultiplied.h"
#include "platform/foundation/LibraryFunctions.h"

namespace orvane::platform {

namespace {

struct GIFLibrary {
    decltype(&::DGifOpen) open;
    decltype(&::DGifCloseFile) closeFile;
    decltype(&::DGifGetRecordType) getRecordType;
    decltype(&::DGifGetImageHeader) getImageHeader;
    decltype(&::DGifGetLine) getLine;
    decltype(&::DGifGetExtension) getExtension;
    decltype(&::DGifGetExtensionNext) getExtensionNext;
    decltype(&::DGifExtensionToGCB) extensionToGCB;

    static const GIFLibrary* instance() {
        static const GIFLibrary* const library = load();
        return library;
    }

private:
    static const GIFLibrary* load() {
        static GIFLibrary library;
        LibraryFunctions functions("libgif.so.7", "No GIF picture can be shown");
        functions.find(library.open, "DGifOpen");
        functions.find(library.closeFile, "DGifCloseFile");
        functions.find(library.getRecordType, "DGifGetRecordType");
        functions.find(library.getImageHeader, "DGifGetImageHeader");
        functions.find(library.getLine, "DGifGetLine");
        functions.find(library.getExtension, "DGifGetExtension");
        functions.find(library.getExtensionNext, "DGifGetExtensionNext");
        functions.find(library.extensionToGCB, "DGifExtensionToGCB");
        return functions.isComplete() ? &library : nullptr;
    }
};

// For code that runs only while a file is open.
const GIFLibrary& gif() {
    return *GIFLibrary::instance();
}

// A code of 12 bits represents at most 4096 pixels.
constexpr std::int64_t kPixelsPerByte = 4096;

}  // namespace

std::shared_ptr<GIFSource> GIFSource::create(std::span<const unsigned char> bytes) {
    std::shared_ptr<GIFSource> source(new GIFSource(bytes));
    return source->open() && source->decodeFrame() ? source : nullptr;
}

GIFSource::GIFSource(std::span<const unsigned char> bytes)
    : bytes_(bytes.begin(), bytes.end()), repetitions_(0) {}

GIFSource::~GIFSource() {
    close();
}

bool GIFSource::open() {
    if (GIFLibrary::instance() == nullptr) {
        return false;
    }
    at_ = 0;
    int error = 0;
    file_ = gif().open(
        this,
        [](GifFileType* file, GifByteType* to, int count) {
            auto& self = *static_cast<GIFSource*>(file->UserData);
            const std::size_t read = std::min(static_cast<std::size_t>(std::max(count, 0)),
                                              self.bytes_.size() - self.at_);
            std::copy_n(self.bytes_.begin() + static_cast<std::ptrdiff_t>(self.at_), read, to);
            self.at_ += read;
            return static_cast<int>(read);
        },
        &error);
    if (file_ == nullptr) {
        return false;
    }
    width_ = file_->SWidth;
    height_ = file_->SHeight;
    const std::int64_t pixels = std::int64_t{width_} * height_;
    if (!isSensibleImageSize(width_, height_) || !canHold(bytes_.size(), pixels, kPixelsPerByte)) {
        reportTooLarge(width_, height_);
        return false;
    }
    canvas_.assign(static_cast<std::size_t>(pixels), 0);
    frame_ = {};
    frames_ = 0;
    return true;
}

void GIFSource::close() {
    if (file_ != nullptr) {
        int error = 0;
        gif().closeFile(std::exchange(file_, nullptr), &error);
    }
}

bool GIFSource::decodeFrame() {
    Frame next;
    for (GifRecordType type{}; file_ != nullptr && gif().getRecordType(file_, &type) == GIF_OK;) {
        if (type == IMAGE_DESC_RECORD_TYPE) {
            return drawFrame(next);
        }
        if (type == TERMINATE_RECORD_TYPE ||
            (type == EXTENSION_RECORD_TYPE && !readExtension(next))) {
            return false;
        }
    }
    return false;
}

bool GIFSource::readExtension(Frame& frame) {
    int code = 0;
    GifByteType* block = nullptr;
    bool isLoop = false;
    if (gif().getExtension(file_, &code, &block) != GIF_OK) {
        return false;
    }
    while (block != nullptr) {
        const std::size_t length = block[0];
        const std::string_view text(reinterpret_cast<const char*>(block + 1), length);
        GraphicsControlBlock control{};
        if (code == GRAPHICS_EXT_FUNC_CODE &&
            gif().extensionToGCB(length, block + 1, &control) == GIF_OK) {
            frame.disposal = control.DisposalMode;
            frame.transparent = control.TransparentColor;
            frame.hundredths = control.DelayTime;
        } else if (code == APPLICATION_EXT_FUNC_CODE && text == "NETSCAPE2.0") {
            isLoop = true;
        } else if (isLoop && length == 3 && block[1] == 1) {
            const int count = block[2] | block[3] << 8;
            if (count == 0) {
                repetitions_.reset();
            } else if (repetitions_ == 0) {
                repetitions_ = count;
            }
        }
        if (gif().getExtensionNext(file_, &block) != GIF_OK) {
            return false;
        }
    }
    return true;
}

bool GIFSource::drawFrame(Frame frame) {
    if (gif().getImageHeader(file_) != GIF_OK) {
        return false;
    }
    const GifImageDesc& place = file_->Image;
    frame.left = place.Left;
    frame.top = place.Top;
    frame.width = place.Width;
    frame.height = place.Height;
    const bool isInside = place.Left >= 0 && place.Top >= 0 && place.Width > 0 &&
                          place.Height > 0 && place.Left + place.Width <= width_ &&
                          place.Top + place.Height <= height_;
    if (!isInside) {
        return false;
    }
    dispose();
    if (frame.disposal == DISPOSE_PREVIOUS) {
        before_ = canvas_;
    }
    frame_ = frame;
    row_.resize(static_cast<std::size_t>(frame.width));
    struct Pass {
        int first, step;
    };
    constexpr Pass interlaced[] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};
    constexpr Pass plain[] = {{0, 1}};
    const std::span<const Pass> passes =
        place.Interlace ? std::span<const Pass>(interlaced) : std::span<const Pass>(plain);
    for (const Pass& pass : passes) {
        for (int row = pass.first; row < frame.height; row += pass.step) {
            if (!drawRow(frame, row)) {
                return false;
            }
        }
    }
    ++frames_;
    image_.reset();
    return true;
}

bool GIFSource::drawRow(const Frame& frame, int row) {
    if (gif().getLine(file_, row_.data(), frame.width) != GIF_OK) {
        return false;
    }
    const ColorMapObject* const colors =
        file_->Image.ColorMap != nullptr ? file_->Image.ColorMap : file_->SColorMap;
    std::uint32_t* const out =
        canvas_.data() + static_cast<std::ptrdiff_t>(frame.top + row) * width_ + frame.left;
    for (int x = 0; x < frame.width; ++x) {
        const int index = row_[static_cast<std::size_t>(x)];
        if (index != frame.transparent && colors != nullptr && index < colors->ColorCount) {
            const GifColorType& color = colors->Colors[index];
            out[x] = premultiplied(color.Red, color.Green, color.Blue, 255);
        }
    }
    return true;
}

void GIFSource::dispose() {
    if (frame_.disposal == DISPOSE_PREVIOUS && before_.size() == canvas_.size()) {
        canvas_ = before_;
    } else if (frame_.disposal == DISPOSE_BACKGROUND) {
        for (int y = frame_.top; y < frame_.top + frame_.height; ++y) {
            std::fill_n(canvas_.begin() + static_cast<std::ptrdiff_t>(y) * width_ + frame_.left,
                        frame_.width, 0);
        }
    }
}

CGSize GIFSource::size() const {
    return {static_cast<double>(width_), static_cast<double>(height_)};
}

std::shared_ptr<const CGImage> GIFSource::image(double) {
    if (!image_) {
        image_ = CGImage::createWithPixels(width_, height_, canvas_);
    }
    return image_;
}

std::optional<double> GIFSource::delay() const {
    if (file_ == nullptr) {
        return std::nullopt;
    }
    // As everywhere else: files with shorter delays were made for programs that could not keep
    // them.
    constexpr int kShortest = 2;
    return frame_.hundredths < kShortest ? 0.1 : frame_.hundredths / 100.0;
}

void GIFSource::advance() {
    if (file_ == nullptr || decodeFrame()) {
        return;
    }
    const bool isAnimation = frames_ > 1;
    const bool goesOn = isAnimation && repetitions_ != 0;
    close();
    if (!goesOn) {
        return;
    }
    if (repetitions_) {
        --*repetitions_;
    }
    const std::optional<int> left = repetitions_;
    if (!open() || !decodeFrame()) {
        close();
    }
    repetitions_ = left;
}

}  // namespace orvane::platform
