#pragma once

#include <memory>

#include "orvane/display/graphics/ScrollContainer.h"
#include "orvane/display/graphics/quartz/QuartzClipContainer.h"
#include "orvane/display/native/NScrollContainerLayer.h"
#include "orvane/display/native/NativeObject.h"

namespace orvane::display::graphics::quartz {

// A scroll container with a layer of its own, NScrollContainerLayer, whose views clip and move what
// the layer paints.
class UIScrollContainer : public virtual ScrollContainer,
                          public virtual QuartzClipContainer,
                          public virtual native::NativeObject,
                          private native::NScrollContainerLayer::Observer {
public:
    UIScrollContainer(Type type, bool paging);
    ~UIScrollContainer() override;

    std::string getDescription() const override { return "UIScrollContainer"; }
    Type getType() const override { return type_; }
    bool isPaging() const override { return paging_; }
    void setPaging(bool paging) override;

    void setContentSize(const geometry::Size<double>& size) override;
    void resetContentSize() override;
    geometry::Size<double> getContentSize() override;
    geometry::Point<double> getContentOffset() const override { return *getScrollOffset(); }
    geometry::Point<double> getMaximumOffset() override;
    void setContentOffset(const geometry::Point<double>& offset, Motion motion) override;
    void scrollToVisible(const std::shared_ptr<DisplayObject>& object, Motion motion) override;
    bool isScrolling() const override;

    // Paints the children, wherever they are in the content.
    void validate(const Rect& rect) override;

protected:
    std::shared_ptr<native::NativeLayer> createLayer() override;
    // Null after the layer was taken from the object.
    std::shared_ptr<native::NScrollContainerLayer> getScrollLayer() const { return scroll_.lock(); }

    void didBeginScrolling() override;
    void didScroll() override;
    void didEndScrolling() override;

private:
    // Calls a function with the layer and its view, on the main thread. Their limits are those of
    // the present tree.
    template <typename Use>
    void withView(const Use& use) const;
    void send(ScrollEventPhase phase);
    // Makes a rectangle, in screen coordinates without this container's offset, visible. Returns
    // where it will be.
    Rect reveal(const Rect& rect, Motion motion);

    Type type_;
    bool paging_;
    std::weak_ptr<native::NScrollContainerLayer> scroll_;
};

}  // namespace orvane::display::graphics::quartz
