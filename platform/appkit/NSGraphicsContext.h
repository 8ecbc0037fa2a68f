#pragma once

#include "orvane/commons/Export.h"

namespace orvane::platform {

class CGContext;

// Provides the canvas of the view that is being painted. Main thread only.
class ORVANE_EXPORT NSGraphicsContext {
public:
    // Null outside drawRect.
    static CGContext* currentGraphicsPort();

    // Makes a canvas current for a scope. Used by the code that calls drawRect. Scopes may nest.
    class ORVANE_EXPORT Scope {
    public:
        // Borrows the canvas; the destructor makes the previous one current again.
        explicit Scope(CGContext& canvas);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        CGContext* previous_;
    };
};

}  // namespace orvane::platform
