#include "orvane/display/DisplayFactory.h"

#include "orvane/display/graphics/quartz/QuartzAttributedText.h"
#include "orvane/display/graphics/quartz/QuartzCircle.h"
#include "orvane/display/graphics/quartz/QuartzClipContainer.h"
#include "orvane/display/graphics/quartz/QuartzContainer.h"
#include "orvane/display/graphics/quartz/QuartzEllipse.h"
#include "orvane/display/graphics/quartz/QuartzImage.h"
#include "orvane/display/graphics/quartz/QuartzLine.h"
#include "orvane/display/graphics/quartz/QuartzMultilineText.h"
#include "orvane/display/graphics/quartz/QuartzPath.h"
#include "orvane/display/graphics/quartz/QuartzPolyline.h"
#include "orvane/display/graphics/quartz/QuartzRect.h"
#include "orvane/display/graphics/quartz/UIInputText.h"
#include "orvane/display/graphics/quartz/UIListContainer.h"
#include "orvane/display/graphics/quartz/UIMapControl.h"
#include "orvane/display/graphics/quartz/UIScrollContainer.h"
#include "orvane/display/native/NVideoCaptureView.h"
#include "orvane/display/native/NWebView.h"

namespace orvane::display {

using namespace graphics::quartz;

std::shared_ptr<graphics::Container> DisplayFactory::createContainer() {
    return std::make_shared<QuartzContainer>();
}

std::shared_ptr<graphics::ScrollContainer> DisplayFactory::createScrollContainer(
    graphics::ScrollContainer::Type type, bool paging) {
    return createInitialized<UIScrollContainer>(type, paging);
}

std::shared_ptr<graphics::ListContainer> DisplayFactory::createListContainer() {
    return createInitialized<UIListContainer>();
}

std::shared_ptr<graphics::SizedContainer> DisplayFactory::createClipContainer(bool scrollable) {
    if (scrollable) {
        return createScrollContainer(graphics::ScrollContainer::Type::Both, false);
    }
    return std::make_shared<QuartzClipContainer>();
}

std::shared_ptr<graphics::ClipContainer> DisplayFactory::createRoundedClipContainer(
    double cornerRadius) {
    auto clip = std::make_shared<QuartzClipContainer>();
    clip->setCornerRadius(cornerRadius);
    return clip;
}

std::shared_ptr<graphics::Rect> DisplayFactory::createRect() {
    return std::make_shared<QuartzRect>();
}

std::shared_ptr<graphics::Circle> DisplayFactory::createCircle() {
    return std::make_shared<QuartzCircle>();
}

std::shared_ptr<graphics::Ellipse> DisplayFactory::createEllipse() {
    return std::make_shared<QuartzEllipse>();
}

std::shared_ptr<graphics::Line> DisplayFactory::createLine() {
    return std::make_shared<QuartzLine>();
}

std::shared_ptr<graphics::Polyline> DisplayFactory::createPolyline() {
    return std::make_shared<QuartzPolyline>();
}

std::shared_ptr<graphics::Path> DisplayFactory::createPath() {
    return std::make_shared<QuartzPath>();
}

std::shared_ptr<graphics::Text> DisplayFactory::createText(bool multiline) {
    if (multiline) {
        return std::make_shared<QuartzMultilineText>();
    }
    return std::make_shared<QuartzText>();
}

std::shared_ptr<graphics::AttributedText> DisplayFactory::createAttributedText() {
    return std::make_shared<QuartzAttributedText>();
}

std::shared_ptr<graphics::InputText> DisplayFactory::createInputText(bool multiline, bool secure,
                                                                     int maximumLength) {
    return createInitialized<UIInputText>(multiline, true, secure, maximumLength);
}

std::shared_ptr<graphics::Image> DisplayFactory::createImage() {
    return std::make_shared<QuartzImage>();
}

std::shared_ptr<native::NMapControl> DisplayFactory::createMapControl() {
    return createInitialized<UIMapControl>();
}

std::shared_ptr<native::NVideoCaptureView> DisplayFactory::createVideoCaptureView() {
    return createInitialized<native::NVideoCaptureView>();
}

std::shared_ptr<native::NWebView> DisplayFactory::createWebView() {
    return createInitialized<native::NWebView>();
}

}  // namespace orvane::display
