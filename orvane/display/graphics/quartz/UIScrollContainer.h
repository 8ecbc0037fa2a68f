#pragma once

#include "orvane/display/graphics/ScrollContainer.h"
#include "orvane/display/graphics/quartz/QuartzClipContainer.h"
#include "orvane/display/native/NativeObject.h"

namespace orvane::display::graphics::quartz {

// A scroll container with a layer of its own, which paints the children inside the bounds. The
// views of layers inside it are clipped to the bounds, too: see NativeLayer.
class UIScrollContainer : public virtual ScrollContainer,
                          public virtual QuartzClipContainer,
                          public virtual native::NativeObject {
public:
    UIScrollContainer(Type type, bool paging) : type_(type), paging_(paging) {}

    std::string getDescription() const override { return "UIScrollContainer"; }
    Type getType() const override { return type_; }
    bool isPaging() const override { return paging_; }

protected:
    std::shared_ptr<native::NativeLayer> createLayer() override;

private:
    Type type_;
    bool paging_;
};

}  // namespace orvane::display::graphics::quartz
