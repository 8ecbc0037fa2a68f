#pragma once

#include <memory>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class NSView;
struct NSEvent;

// What shows a tree of views. Off-screen it composes them into an image; on a desktop it realises
// them with the desktop's widgets. Views tell it what changed; it asks them to paint at its display
// pass and presents only what was painted or moved. Main thread only.
class ORVANE_EXPORT NSWindow {
public:
    NSWindow();
    virtual ~NSWindow();

    NSView* contentView() const { return contentView_.get(); }
    void setContentView(const std::shared_ptr<NSView>& view);
    // Pixels a point.
    virtual double backingScaleFactor() const = 0;
    // Delivers a pointer event to the recognizers it belongs to. The recognizers of the view under a
    // button press keep the gesture until the button is up, wherever the pointer goes.
    void sendEvent(const NSEvent& event);
    // Paints all damage now.
    void displayIfNeeded();

private:
    std::shared_ptr<NSView> contentView_;
};

}  // namespace orvane::platform
