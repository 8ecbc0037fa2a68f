#pragma once

#include <functional>
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
    geometry::Point<double> getContentOffset() const override { return offset_; }
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

    // Calls a function with the scroll view, on the main thread. Its limits are those of the
    // present tree.
    void withView(const std::function<void(platform::NSScrollView&)>& use) const;
    // Has the document view cover only the part of the content that begins at `origin` and has this
    // extent, both along the vertical axis and in points. Children are placed relative to it.
    void setDocument(platform::NSScrollView& view, double origin, double extent);
    double getDocumentOrigin() const { return documentOrigin_; }

    void didBeginScrolling() override;
    void didScroll() override;
    void didEndScrolling() override;

private:
    void send(ScrollOffsetPhase phase);
    // Makes a rectangle, in screen coordinates without this container's offset, visible. Returns
    // where it will be.
    Rect reveal(const Rect& rect, Motion motion);

    Type type_;
    bool paging_;
    geometry::Point<double> offset_;
    double documentOrigin_ = 0;
    std::weak_ptr<native::NScrollContainerLayer> scroll_;
};

}  // namespace orvane::display::graphics::quartz
