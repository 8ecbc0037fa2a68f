#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGContext.h"

namespace orvane::platform {

class CanvasState;

// A canvas that paints pixels: 32-bit words of premultiplied alpha, red, green and blue, with alpha
// in bits 24 to 31 and the top row first. The y axis of user space is down, as in views.
//
// A pixel depends only on the drawing calls, not on the whole-pixel clip during the calls: a
// picture painted rectangle by rectangle equals the picture painted at once, bit for bit. A base
// transformation that moves by whole pixels does not change the picture either.
class ORVANE_EXPORT CGBitmapContext final : public CGContext {
public:
    // Creates transparent pixels that the canvas owns. Sizes that are not positive, or larger than
    // 32767, make an empty canvas, which accepts every call. `base` maps user space to pixels.
    CGBitmapContext(int width, int height, const CGAffineTransform& base = {});
    // Paints on pixels that the caller owns and keeps alive as long as the canvas, with rows
    // `bytesPerRow` (a multiple of 4) apart. The caller may read and write them between calls.
    CGBitmapContext(std::uint32_t* pixels, int width, int height, std::size_t bytesPerRow,
                    const CGAffineTransform& base = {});
    ~CGBitmapContext() override;
    CGBitmapContext(const CGBitmapContext&) = delete;
    CGBitmapContext& operator=(const CGBitmapContext&) = delete;

    int width() const;
    int height() const;
    std::size_t bytesPerRow() const;
    std::uint32_t* pixels();
    const std::uint32_t* pixels() const;

    // Makes every pixel that the rectangle touches transparent, within the whole-pixel clip.
    void clearRect(const CGRect& rect);
    // Copies the current pixels; null for an empty canvas.
    std::shared_ptr<const CGImage> createImage() const;
    // Returns false when the canvas is empty or the file cannot be written.
    bool writePNG(const std::string& filename) const;

    void saveGState() override;
    void restoreGState() override;
    void translateCTM(double tx, double ty) override;
    void scaleCTM(double sx, double sy) override;
    void concatCTM(const CGAffineTransform& transform) override;
    CGSize unitsInDevicePixels() const override;
    void clipToRect(const CGRect& rect) override;
    void clip() override;
    void setRGBFillColor(double r, double g, double b, double a) override;
    void setRGBStrokeColor(double r, double g, double b, double a) override;
    void setLineWidth(double width) override;
    void setLineDash(double phase, std::span<const double> lengths) override;
    void moveToPoint(double x, double y) override;
    void addLineToPoint(double x, double y) override;
    void addRect(const CGRect& rect) override;
    void addPath(const CGPath& path) override;
    void drawPath(CGPathDrawingMode mode) override;
    void strokePath() override;
    void replacePathWithStrokedPath() override;
    void drawLinearGradient(const CGGradient& gradient, CGPoint start, CGPoint end,
                            unsigned options) override;
    void drawRadialGradient(const CGGradient& gradient, CGPoint startCenter, double startRadius,
                            CGPoint endCenter, double endRadius, unsigned options) override;
    void drawConicGradient(const CGGradient& gradient, CGPoint center, double angle) override;
    void drawImage(const CGRect& rect, const CGImage& image) override;
    void setTextMatrix(const CGAffineTransform& matrix) override;
    void drawLine(const CGDrawable& line) override;
    void drawFrame(const CGDrawable& frame) override;
    void beginGroup(const CGRect& area, const CGGroupStyle& style) override;
    std::shared_ptr<const CGGroup> endGroup() override;
    bool drawGroup(const CGGroup& group, const CGAffineTransform& transform,
                   double opacity) override;

private:
    std::unique_ptr<CanvasState> canvas_;
};

}  // namespace orvane::platform
