#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "platform/imageio/CGImageSource.h"

struct GifFileType;

namespace orvane::platform {

// The frames of a GIF picture. They are decoded one after the other, each on what the ones before
// have left, and after the last one from the beginning.
class GIFSource final : public CGImageSource {
public:
    // Returns null unless there is a first frame. The bytes are copied.
    static std::shared_ptr<GIFSource> create(std::span<const unsigned char> bytes);
    ~GIFSource() override;

    CGSize size() const override;
    std::shared_ptr<const CGImage> image(double scale) override;
    std::optional<double> delay() const override;
    void advance() override;

private:
    // A rectangle of the picture, and what becomes of it before the next frame.
    struct Frame {
        int left = 0, top = 0, width = 0, height = 0;
        int disposal = 0;      // a DISPOSE_ constant of the library
        int transparent = -1;  // the index of the transparent color
        int hundredths = 0;    // of a second
    };

    explicit GIFSource(std::span<const unsigned char> bytes);
    bool open();
    void close();
    // Decodes the next frame. Returns false at the end, and for what cannot be decoded.
    bool decodeFrame();
    bool readExtension(Frame& frame);
    bool drawFrame(Frame frame);
    bool drawRow(const Frame& frame, int row);
    void dispose();

    std::vector<unsigned char> bytes_;
    std::size_t at_ = 0;  // where the library reads
    GifFileType* file_ = nullptr;
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint32_t> canvas_;
    std::vector<std::uint32_t> before_;  // the canvas before a frame that is taken back
    std::vector<unsigned char> row_;
    Frame frame_;
    int frames_ = 0;                        // decoded since the beginning
    std::optional<int> repetitions_;        // after the first time; none: forever
    std::shared_ptr<const CGImage> image_;  // of the present frame
};

}  // namespace orvane::platform
