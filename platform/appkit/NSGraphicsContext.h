#pragma once

#include "orvane/commons/Export.h"

namespace orvane::platform {

class CGContext;

// The canvas of the view that is being drawn, for the time of its drawRect. Main thread only.
class ORVANE_EXPORT NSGraphicsContext {
public:
    // Null outside a drawRect.
    static CGContext* currentGraphicsPort();

    // Makes `canvas` current for a scope; for whoever calls drawRect.
    class ORVANE_EXPORT Scope {
    public:
        explicit Scope(CGContext& canvas);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        CGContext* previous_;
    };
};

}  // namespace orvane::platform
