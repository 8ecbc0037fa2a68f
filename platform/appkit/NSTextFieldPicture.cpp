#include "platform/appkit/NSTextFieldPicture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "platform/appkit/NSTextField.h"
#include "platform/appkit/NSTextLayout.h"
#include "platform/coregraphics/CGPath.h"
#include "platform/coregraphics/CGSavedState.h"

namespace orvane::platform {

namespace {

constexpr double kCaretWidth = 1;

void fillRect(CGContext& canvas, const CGRect& rect, const CGColor& color) {
    canvas.setRGBFillColor(color.red, color.green, color.blue, color.alpha);
    canvas.addRect(rect);
    canvas.drawPath(CGPathDrawingMode::Fill);
}

NSTextLayout::Kind layoutKind(NSTextField::Kind kind) {
    switch (kind) {
        case NSTextField::Kind::Multiline:
            return NSTextLayout::Kind::Wrapped;
        case NSTextField::Kind::Secret:
            return NSTextLayout::Kind::Dots;
        case NSTextField::Kind::Line:
            break;
    }
    return NSTextLayout::Kind::Line;
}

}  // namespace

NSTextFieldPicture::~NSTextFieldPicture() = default;

void NSTextFieldPicture::invalidate() {
    layout_.reset();
}

const NSTextLayout& NSTextFieldPicture::layout() {
    const double width = field_.bounds().size.width;
    if (!layout_ || laidOutWidth_ != width) {
        laidOutWidth_ = width;
        layout_ = std::make_unique<NSTextLayout>(layoutKind(field_.kind()), field_.stringValue(),
                                                 field_.style(), field_.isEnabled(), width);
        scrollToCaret();
    }
    return *layout_;
}

void NSTextFieldPicture::scrollToCaret() {
    const CGSize size = field_.bounds().size;
    const CGRect caret = layout_->caretAt(field_.caret());
    const CGSize text = layout_->size();
    // Along an axis: as far as necessary, and no farther than the text goes. By whole points, so
    // that the caret is not blurred.
    const auto scroll = [](double from, double to, double room, double extent, double& offset) {
        offset = std::max(offset, std::ceil(to - room));
        offset = std::min(offset, std::floor(from));
        offset = std::clamp(offset, 0.0, std::max(std::ceil(extent - room), 0.0));
    };
    if (field_.kind() == NSTextField::Kind::Multiline) {
        scrolled_.x = 0;
        scroll(caret.origin.y, caret.origin.y + caret.size.height, size.height, text.height,
               scrolled_.y);
    } else {
        scroll(caret.origin.x, caret.origin.x + kCaretWidth, size.width, text.width + kCaretWidth,
               scrolled_.x);
        scrolled_.y = std::round((caret.size.height - size.height) / 2);  // in the middle
    }
}

void NSTextFieldPicture::draw(CGContext& canvas, const CGRect& dirty) {
    const CGRect bounds = field_.bounds();
    if (field_.style().backgroundColor.alpha > 0) {
        fillRect(canvas, bounds, field_.style().backgroundColor);
    }
    layout();
    const CGSavedState state(canvas);
    canvas.clipToRect(bounds);
    canvas.translateCTM(-scrolled_.x, -scrolled_.y);
    const double top = dirty.origin.y + scrolled_.y;
    drawSelection(canvas);
    drawText(canvas, top, top + dirty.size.height);
    drawCaret(canvas);
}

void NSTextFieldPicture::drawSelection(CGContext& canvas) {
    const auto [begin, end] = std::minmax({field_.selectionAnchor(), field_.caret()});
    if (field_.isFocused() && begin != end) {
        for (const CGRect& rect : layout().rectsOf({begin, end - begin})) {
            fillRect(canvas, rect, field_.style().selectionColor);
        }
    }
}

void NSTextFieldPicture::drawText(CGContext& canvas, double top, double bottom) {
    const std::string& placeholder = field_.placeholder();
    if (!field_.stringValue().empty() || placeholder.empty()) {
        layout().draw(canvas, top, bottom);
        return;
    }
    NSTextFieldStyle style = field_.style();
    style.textColor = style.placeholderColor;
    const auto kind = field_.kind() == NSTextField::Kind::Multiline ? NSTextLayout::Kind::Wrapped
                                                                    : NSTextLayout::Kind::Line;
    NSTextLayout(kind, placeholder, style, field_.isEnabled(), field_.bounds().size.width)
        .draw(canvas, top, bottom);
}

void NSTextFieldPicture::drawCaret(CGContext& canvas) {
    if (!field_.isFocused() || !field_.isEditable() || field_.selectionAnchor() != field_.caret()) {
        return;
    }
    CGRect caret = layout().caretAt(field_.caret());
    caret.origin.x = std::min(std::round(caret.origin.x),
                              std::floor(scrolled_.x + field_.bounds().size.width) - kCaretWidth);
    caret.size.width = kCaretWidth;
    fillRect(canvas, caret, field_.style().textColor);
}

}  // namespace orvane::platform
