#include "platform/offscreen/OffscreenWindow.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "platform/appkit/NSView.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/offscreen/OffscreenCompositor.h"

namespace orvane::platform {

namespace {

// The largest side of an image that Pixman supports.
constexpr double kLongestSide = 32767;

// Clamps a number. The comparisons are written so that NaN becomes `least`.
double clamped(double value, double least, double most) {
    return value > least ? (value < most ? value : most) : least;
}

}  // namespace

OffscreenWindow::OffscreenWindow(CGSize size, double scale)
    : size_{1, 1}, scale_(1), compositor_(std::make_unique<OffscreenCompositor>()) {
    setHost(&host_);
    resize(size, scale);
}

OffscreenWindow::~OffscreenWindow() {
    setContentView(nullptr);
}

double OffscreenWindow::backingScaleFactor() const {
    return scale_;
}
CGSize OffscreenWindow::contentSize() const {
    return size_;
}
void OffscreenWindow::setContentSize(CGSize size) {
    resize(size, scale_);
}
void OffscreenWindow::setBackingScaleFactor(double scale) {
    resize(size_, scale);
}

void OffscreenWindow::resize(CGSize size, double scale) {
    scale_ = clamped(scale, 0.01, 100);
    size_ = {clamped(size.width, 1 / scale_, kLongestSide / scale_),
             clamped(size.height, 1 / scale_, kLongestSide / scale_)};
    compositor_->setImage(
        static_cast<int>(clamped(std::ceil(size_.width * scale_), 1, kLongestSide)),
        static_cast<int>(clamped(std::ceil(size_.height * scale_), 1, kLongestSide)), scale_);
    backingPropertiesDidChange();
}

std::span<const NSBackingRect> OffscreenWindow::display() {
    composed_ = {};
    displayIfNeeded();
    return composed_;
}

void OffscreenWindow::scheduleDisplay() {}
void OffscreenWindow::didAddView(NSView& view) {
    compositor_->add(view);
}

void OffscreenWindow::willRemoveView(NSView& view) {
    compositor_->remove(view);
}

void OffscreenWindow::didReorderSubviews(NSView& superview) {
    compositor_->reorder(superview);
}

void OffscreenWindow::didChangeView(NSView& view, unsigned changes) {
    if (changes & (kNSViewGeometryChanged | kNSViewHiddenChanged | kNSViewOpacityChanged)) {
        compositor_->change(view);
    }
    if (changes & kNSViewBackgroundChanged) {
        compositor_->recolor(view);
    }
}

void OffscreenWindow::didPaintView(NSView& view, std::span<const NSBackingRect> rects) {
    compositor_->painted(view, rects);
}

void OffscreenWindow::present() {
    composed_ = compositor_->compose(contentView(), displayTime());
}

int OffscreenWindow::pixelWidth() const {
    return static_cast<int>(compositor_->bounds().width());
}
int OffscreenWindow::pixelHeight() const {
    return static_cast<int>(compositor_->bounds().height());
}
const std::uint32_t* OffscreenWindow::pixels() const {
    return compositor_->picture(0).pixels.get();
}

std::size_t OffscreenWindow::bytesPerRow() const {
    return static_cast<std::size_t>(pixelWidth()) * sizeof(std::uint32_t);
}

std::shared_ptr<const CGImage> OffscreenWindow::image() const {
    const std::size_t count =
        static_cast<std::size_t>(pixelWidth()) * static_cast<std::size_t>(pixelHeight());
    return CGImage::createWithPixels(pixelWidth(), pixelHeight(), {pixels(), pixels() + count});
}

bool OffscreenWindow::writePNG(const std::string& path) const {
    const std::shared_ptr<const CGImage> picture = image();
    return picture && picture->writePNG(path);
}

}  // namespace orvane::platform
