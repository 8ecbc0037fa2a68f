#pragma once

#include "orvane/notification/Listener.h"

namespace orvane::display {

class DisplayObject;

namespace graphics {

// Where an image is with its picture.
enum class ImageState {
    Empty,    // no loader was called yet
    Pending,  // load() is at work
    Loaded,   // the picture of the last loader is shown
    Failed,   // the last loader found no picture
};

// Sent by an Image on the main thread when load() has ended. Register a listener with
// image->addListener<ImageStateEvent>(listener).
struct ImageStateEvent {
    using listener_type = notification::Listener<DisplayObject, ImageStateEvent, void>;

    ImageState state = ImageState::Empty;
};

}  // namespace graphics
}  // namespace orvane::display
