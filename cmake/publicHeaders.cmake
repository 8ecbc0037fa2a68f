# The headers that are installed: what programs outside this repository include, and what those
# headers include. Each compiles alone with the C++ library; the test "install.headers" checks that.
set(orvane_public_headers
    # Applications: orvane/orvane.h, and what it includes.
    orvane/orvane.h
    orvane/commons/ByteArray.h
    orvane/commons/Export.h
    orvane/commons/MainClass.h
    orvane/commons/Trace.h
    orvane/commons/virtual_enable_shared_from_this.h
    orvane/display/Display.h
    orvane/display/DisplayFactory.h
    orvane/display/animation/Animatable.h
    orvane/display/animation/Animation.h
    orvane/display/animation/AttributeName.h
    orvane/display/animation/Easing.h
    orvane/display/animation/FrameAnimation.h
    orvane/display/animation/FrameLoop.h
    orvane/display/animation/GroupAnimation.h
    orvane/display/animation/Transition.h
    orvane/display/animation/ValueAnimation.h
    orvane/display/events/FrameChangedEvent.h
    orvane/display/events/TouchEvent.h
    orvane/display/geometry/Matrix.h
    orvane/display/geometry/Point.h
    orvane/display/geometry/Rect.h
    orvane/display/geometry/Size.h
    orvane/display/geometry/isZero.h
    orvane/display/geometry/rounding.h
    orvane/display/graphics/AttributedText.h
    orvane/display/graphics/BoundedObject.h
    orvane/display/graphics/Circle.h
    orvane/display/graphics/ClipContainer.h
    orvane/display/graphics/Container.h
    orvane/display/graphics/Drawable.h
    orvane/display/graphics/Ellipse.h
    orvane/display/graphics/FillStyleable.h
    orvane/display/graphics/GradientAxis.h
    orvane/display/graphics/GradientUnit.h
    orvane/display/graphics/Image.h
    orvane/display/graphics/InputText.h
    orvane/display/graphics/Line.h
    orvane/display/graphics/LinearGradient.h
    orvane/display/graphics/Path.h
    orvane/display/graphics/PathFillStyleable.h
    orvane/display/graphics/Pattern.h
    orvane/display/graphics/Polyline.h
    orvane/display/graphics/Rect.h
    orvane/display/graphics/ScrollContainer.h
    orvane/display/graphics/Shape.h
    orvane/display/graphics/SizedContainer.h
    orvane/display/graphics/SizedObject.h
    orvane/display/graphics/StrokeStyleable.h
    orvane/display/graphics/Text.h
    orvane/display/graphics/TextStyleable.h
    orvane/display/tree/AccessibilityElement.h
    orvane/display/tree/ContainerObject.h
    orvane/display/tree/DisplayContainer.h
    orvane/display/tree/DisplayLayer.h
    orvane/display/tree/DisplayNode.h
    orvane/display/tree/DisplayObject.h
    orvane/display/tree/DisplayObjectStore.h
    orvane/network/Request.h
    orvane/network/RequestService.h
    orvane/network/Response.h
    orvane/notification/Listener.h
    orvane/notification/Notifier.h
    orvane/runtime/Main.h
    orvane/runtime/Runtime.h
    orvane/system/system.h
    orvane/thread/dispatch.h

    # Authors of native controls: the object, the layer, the view, and the canvas that a view's
    # drawRect paints on.
    orvane/display/events/DisplayEventHandler.h
    orvane/display/native/NativeLayer.h
    orvane/display/native/NativeObject.h
    platform/appkit/NSControl.h
    platform/appkit/NSGraphicsContext.h
    platform/appkit/NSTextField.h
    platform/appkit/NSView.h
    platform/coregraphics/CGAffineTransform.h
    platform/coregraphics/CGColor.h
    platform/coregraphics/CGContext.h
    platform/coregraphics/CGGeometry.h
    platform/coregraphics/CGGradient.h
    platform/coregraphics/CGImage.h
    platform/coregraphics/CGPath.h
    platform/quartzcore/CALayer.h
    platform/quartzcore/CATransform3D.h

    # Hosts: the start of the runtime, the windows, and the events and the clock that drive them.
    orvane/display/native/DisplayView.h
    orvane/embedding/HostView.h
    orvane/embedding/Session.h
    orvane/embedding/accessibilityLabels.h
    orvane/embedding/childrenOf.h
    orvane/embedding/labelOf.h
    orvane/embedding/preOrder.h
    orvane/embedding/settle.h
    orvane/embedding/textOf.h
    orvane/runtime/init_orvane.h
    orvane/system/ScreenTypeView.h
    platform/appkit/NSAccessibilityLabel.h
    platform/appkit/NSBackingRect.h
    platform/appkit/NSEvent.h
    platform/appkit/NSWindow.h
    platform/offscreen/OffscreenWindow.h
    platform/quartzcore/CAMediaTime.h)
list(APPEND orvane_public_headers
    # Tests of applications.
    orvane/driver/Driver.h
    orvane/driver/Failure.h
    orvane/driver/Query.h
    orvane/driver/comparePictures.h)
if(ORVANE_GTK)
    list(APPEND orvane_public_headers platform/gtk/GTKControl.h platform/gtk/GTKWindow.h)
endif()
