#pragma once

#include <functional>
#include <memory>

#include "orvane/display/native/BitmapLayer.h"

namespace orvane::platform {
class NSMapView;
}

namespace orvane::display::native {

// The layer of a map control. Its view is a map view; the children are painted by the map view's
// content view, which also contains the views of the sublayers.
//
// Layer coordinates are those of the map view. They and screen coordinates differ by the origin of
// the layer frame alone.
class ORVANE_EXPORT NMapLayer final : public BitmapLayer {
public:
    // `placed` is called on the main thread when the layer is validated, before its objects are:
    // the map view has its size then.
    explicit NMapLayer(std::function<void()> placed) : placed_(std::move(placed)) {}
    ~NMapLayer() override;

    std::shared_ptr<platform::NSView> getLayerContentHandler() const override { return content_; }
    // Null before init(). Main thread.
    const std::shared_ptr<platform::NSMapView>& getMapView() const { return map_; }
    // Gives the map view the size of the control, also before the layer was validated. Main thread.
    void updateSize();

protected:
    std::shared_ptr<platform::NSView> createLayerHandler() override;
    // What is in front of the map does not make it larger: the map view clips it.
    Rect computeLayerFrame() override;
    void validateLayer() override;

private:
    std::function<void()> placed_;
    std::shared_ptr<platform::NSMapView> map_;
    std::shared_ptr<platform::NSView> content_;
};

}  // namespace orvane::display::native
