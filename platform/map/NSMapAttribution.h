#pragma once

#include <memory>
#include <string>

#include "platform/appkit/NSView.h"

namespace orvane::platform {

class NSTextLayout;

// The line in the corner of a map that says who has made it. It takes no pointer. Main thread.
class NSMapAttribution final : public NSView {
public:
    NSMapAttribution();
    ~NSMapAttribution() override;

    // Hidden without a text.
    void setText(const std::string& text);
    // Moves the view to the bottom right corner of a map of this size.
    void placeIn(CGSize map);

    bool paints() const override { return true; }
    bool isFlipped() const override { return true; }
    NSView* hitTest(CGPoint) override { return nullptr; }
    void drawRect(const CGRect& dirty) override;

private:
    std::string text_;
    std::unique_ptr<NSTextLayout> layout_;
};

}  // namespace orvane::platform
