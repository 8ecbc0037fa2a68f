#pragma once

#include <memory>

#include "orvane/display/tree/Shadow.h"

namespace orvane::display {

// How an object is drawn as a whole. Only objects that have an effect have one of these.
struct Effects {
    double opacity = 1;
    float blur = 0;
    Shadow shadow;

    // The object's picture, which painting keeps as long as nothing in the object changes. Only the
    // code that paints knows its type.
    std::shared_ptr<const void> picture;
    // The object was painted and has not changed since then. A picture is made when the object is
    // painted the second time: one that changes in each frame would cost its whole area each time.
    bool isPainted = false;
    // The object moved as a whole since the picture was made.
    bool isMoved = false;

    bool hasShadow() const { return shadow.color >> 24 != 0; }
    // Whether painting reaches beyond what the object paints.
    bool reaches() const { return blur > 0 || hasShadow(); }

    // The object, or something in it, has changed.
    void changed() {
        picture.reset();
        isPainted = false;
    }
};

}  // namespace orvane::display
