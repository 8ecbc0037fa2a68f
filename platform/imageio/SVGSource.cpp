#include "platform/imageio/SVGSource.h"

#include <librsvg/rsvg.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/imageLimits.h"
#include "platform/foundation/LibraryFunctions.h"

namespace orvane::platform {

namespace {

struct RSVGLibrary {
    decltype(&::rsvg_handle_new_from_data) newFromData;
    decltype(&::rsvg_handle_set_dpi) setDPI;
    decltype(&::rsvg_handle_get_intrinsic_size_in_pixels) getSize;
    decltype(&::rsvg_handle_get_intrinsic_dimensions) getDimensions;
    decltype(&::rsvg_handle_render_document) render;

    static const RSVGLibrary* instance() {
        static const RSVGLibrary* const library = open();
        return library;
    }

private:
    static const RSVGLibrary* open() {
        static RSVGLibrary library;
        LibraryFunctions functions("librsvg-2.so.2", "No SVG picture can be shown");
        functions.find(library.newFromData, "rsvg_handle_new_from_data");
        functions.find(library.setDPI, "rsvg_handle_set_dpi");
        functions.find(library.getSize, "rsvg_handle_get_intrinsic_size_in_pixels");
        functions.find(library.getDimensions, "rsvg_handle_get_intrinsic_dimensions");
        functions.find(library.render, "rsvg_handle_render_document");
        return functions.isComplete() ? &library : nullptr;
    }
};

constexpr std::size_t kLongestFile = std::size_t{16} << 20;
// A larger picture is enlarged instead.
constexpr double kMostRenderedPixels = 1 << 24;

// The size that the drawing states, or that of its view box.
CGSize sizeOf(const RSVGLibrary& rsvg, RsvgHandle* handle) {
    CGSize size;
    if (rsvg.getSize(handle, &size.width, &size.height) != FALSE) {
        return size;
    }
    gboolean hasBox = FALSE;
    RsvgRectangle box{};
    rsvg.getDimensions(handle, nullptr, nullptr, nullptr, nullptr, &hasBox, &box);
    return hasBox != FALSE ? CGSize{box.width, box.height} : CGSize{300, 150};  // the size of CSS
}

}  // namespace

std::shared_ptr<SVGSource> SVGSource::create(std::span<const unsigned char> bytes) {
    const RSVGLibrary* const rsvg =
        bytes.size() <= kLongestFile ? RSVGLibrary::instance() : nullptr;
    RsvgHandle* const handle =
        rsvg != nullptr ? rsvg->newFromData(bytes.data(), bytes.size(), nullptr) : nullptr;
    if (handle == nullptr) {
        return nullptr;
    }
    constexpr double kDPI = 96;
    rsvg->setDPI(handle, kDPI);
    const CGSize size = sizeOf(*rsvg, handle);
    std::shared_ptr<SVGSource> source(new SVGSource(handle, size));
    const bool isSensible =
        size.width >= 1 && size.height >= 1 && size.width < 1e6 && size.height < 1e6;
    return isSensible && source->image(1) ? source : nullptr;
}

SVGSource::~SVGSource() {
    g_object_unref(handle_);
}

std::shared_ptr<const CGImage> SVGSource::image(double scale) {
    const double most = std::min({std::sqrt(kMostRenderedPixels / size_.width / size_.height),
                                  kLargestSide / size_.width, kLargestSide / size_.height});
    const double used = std::min(scale > 0 ? scale : 1, most);
    const int width = std::max(static_cast<int>(std::ceil(size_.width * used - 1e-6)), 1);
    const int height = std::max(static_cast<int>(std::ceil(size_.height * used - 1e-6)), 1);
    if (image_ && width_ == width) {
        return image_;
    }
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) *
                                      static_cast<std::size_t>(height));
    cairo_surface_t* const surface =
        cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()),
                                            CAIRO_FORMAT_ARGB32, width, height, width * 4);
    cairo_t* const cairo = cairo_create(surface);
    const RsvgRectangle viewport{0, 0, static_cast<double>(width), static_cast<double>(height)};
    const bool isRendered =
        RSVGLibrary::instance()->render(handle_, cairo, &viewport, nullptr) != FALSE;
    cairo_destroy(cairo);
    cairo_surface_flush(surface);
    cairo_surface_destroy(surface);
    if (isRendered || !image_) {
        // What was drawn before an error is shown.
        image_ = CGImage::createWithPixels(width, height, std::move(pixels));
        width_ = width;
    }
    return image_;
}

}  // namespace orvane::platform
