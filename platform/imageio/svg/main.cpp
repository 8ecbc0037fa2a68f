// orvane-svg [FONT...]: draws SVG pictures for the runtime, which is at the other end of the socket
// that is the standard input. See SVGHelper.
#include <fontconfig/fontconfig.h>
#include <librsvg/rsvg.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/imageio/svg/SVGExchange.h"
#include "platform/imageio/svg/pixelsOfDrawing.h"

namespace orvane::platform {

namespace {

// How long a drawing may take, in seconds.
constexpr unsigned kLongest = 5;
// The address space of this program, in bytes: its libraries, and the layers of a drawing.
constexpr rlim_t kMostMemory = rlim_t{1} << 30;

struct Release {
    void operator()(RsvgHandle* handle) const { g_object_unref(handle); }
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
template <typename T>
using Owned = std::unique_ptr<T, Release>;

// Both return false at the end of the connection.
bool readWhole(void* to, std::size_t length) {
    auto* bytes = static_cast<unsigned char*>(to);
    while (length > 0) {
        const ssize_t count = read(STDIN_FILENO, bytes, length);
        if (count <= 0) {
            return false;
        }
        bytes += count;
        length -= static_cast<std::size_t>(count);
    }
    return true;
}

bool writeWhole(const void* from, std::size_t length) {
    const auto* bytes = static_cast<const unsigned char*>(from);
    while (length > 0) {
        const ssize_t count = write(STDIN_FILENO, bytes, length);
        if (count <= 0) {
            return false;
        }
        bytes += count;
        length -= static_cast<std::size_t>(count);
    }
    return true;
}

void measure(RsvgHandle* handle, SVGReply& reply) {
    if (rsvg_handle_get_intrinsic_size_in_pixels(handle, &reply.width, &reply.height) != FALSE) {
        return;
    }
    gboolean hasBox = FALSE;
    RsvgRectangle box{0, 0, 300, 150};  // the size of CSS
    rsvg_handle_get_intrinsic_dimensions(handle, nullptr, nullptr, nullptr, nullptr, &hasBox, &box);
    reply.width = box.width;
    reply.height = box.height;
}

// Draws what `bytes` describe. The pixels are empty, and the reply is 0, if that is no drawing.
SVGReply draw(const std::vector<unsigned char>& bytes, double scale,
              std::vector<std::uint32_t>& pixels) {
    SVGReply reply{};
    const Owned<RsvgHandle> handle(rsvg_handle_new_from_data(bytes.data(), bytes.size(), nullptr));
    if (!handle) {
        return {};
    }
    constexpr double kDPI = 96;
    rsvg_handle_set_dpi(handle.get(), kDPI);
    measure(handle.get(), reply);
    if (!(reply.width >= 1 && reply.height >= 1 && reply.width < 1e6 && reply.height < 1e6)) {
        return {};
    }
    const SVGPixels size = pixelsOfDrawing(reply.width, reply.height, scale);
    reply.pixelWidth = size.width;
    reply.pixelHeight = size.height;
    pixels.assign(
        static_cast<std::size_t>(reply.pixelWidth) * static_cast<std::size_t>(reply.pixelHeight),
        0);
    const Owned<cairo_surface_t> surface(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixels.data()), CAIRO_FORMAT_ARGB32, reply.pixelWidth,
        reply.pixelHeight, reply.pixelWidth * 4));
    const Owned<cairo_t> cairo(cairo_create(surface.get()));
    const RsvgRectangle viewport{0, 0, static_cast<double>(reply.pixelWidth),
                                 static_cast<double>(reply.pixelHeight)};
    // What was drawn before an error is shown.
    rsvg_handle_render_document(handle.get(), cairo.get(), &viewport, nullptr);
    cairo_surface_flush(surface.get());
    return reply;
}

// Answers requests until the connection ends.
void serve() {
    SVGRequest request{};
    std::vector<unsigned char> bytes;
    std::vector<std::uint32_t> pixels;
    while (readWhole(&request, sizeof request)) {
        // The signal ends this program.
        alarm(kLongest);
        bytes.resize(request.length);
        pixels.clear();
        if (!readWhole(bytes.data(), bytes.size())) {
            return;
        }
        const SVGReply reply = draw(bytes, request.scale, pixels);
        if (!writeWhole(&reply, sizeof reply) || !writeWhole(pixels.data(), pixels.size() * 4)) {
            return;
        }
        alarm(0);
    }
}

}  // namespace

}  // namespace orvane::platform

int main(int argc, char** argv) {
    const rlimit memory{orvane::platform::kMostMemory, orvane::platform::kMostMemory};
    setrlimit(RLIMIT_AS, &memory);
    const rlimit core{0, 0};
    setrlimit(RLIMIT_CORE, &core);
    for (int i = 1; i < argc; ++i) {
        FcConfigAppFontAddFile(nullptr, reinterpret_cast<const FcChar8*>(argv[i]));
    }
    orvane::platform::serve();
}
