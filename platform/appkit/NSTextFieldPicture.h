#pragma once

#include <memory>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class CGContext;
class NSTextField;
class NSTextLayout;

// How a text field shows itself where the desktop has no widget for it: the layout of its text, the
// part of it that is scrolled into the field, and the painting. NSTextField owns it, and reads from
// it where a press or a key leads.
//
// The caret is always visible: a change that moves it scrolls the text at the next layout.
class NSTextFieldPicture {
public:
    // `field` owns this object.
    explicit NSTextFieldPicture(const NSTextField& field) : field_(field) {}
    ~NSTextFieldPicture();
    NSTextFieldPicture(const NSTextFieldPicture&) = delete;
    NSTextFieldPicture& operator=(const NSTextFieldPicture&) = delete;

    // Must be called after every change of what the field shows.
    void invalidate();
    // The layout of the field's text as it is now; valid until the next change.
    const NSTextLayout& layout();
    // Maps a point of the field to the layout that is on screen.
    CGPoint toLayout(CGPoint point) const { return {point.x + scrolled_.x, point.y + scrolled_.y}; }
    // Paints background, selection, text or placeholder, and caret; `dirty` is the clip, in the
    // field's coordinates.
    void draw(CGContext& canvas, const CGRect& dirty);

private:
    void scrollToCaret();
    void drawSelection(CGContext& canvas);
    void drawText(CGContext& canvas, double top, double bottom);
    void drawCaret(CGContext& canvas);

    const NSTextField& field_;
    std::unique_ptr<NSTextLayout> layout_;  // null until it is needed after a change
    double laidOutWidth_ = 0;
    CGPoint scrolled_;  // the point of the layout at the field's origin
};

}  // namespace orvane::platform
