#pragma once

#include "orvane/display/tree/DisplayObject.h"

namespace orvane::display {

class DisplayObject::ParentVisibilityScope {
public:
    ParentVisibilityScope(const ContainerObject& parent, bool visible) : outer_(known()) {
        known() = {&parent, visible};
    }
    ~ParentVisibilityScope() { known() = outer_; }
    ParentVisibilityScope(const ParentVisibilityScope&) = delete;
    ParentVisibilityScope& operator=(const ParentVisibilityScope&) = delete;

    // Whether the innermost scope stands for this parent; then isParentVisible answers for it.
    static bool standsFor(const ContainerObject* parent) { return known().parent == parent; }
    static bool isParentVisible() { return known().visible; }

private:
    struct Known {
        const ContainerObject* parent = nullptr;
        bool visible = false;
    };
    static Known& known() {
        static thread_local constinit Known innermost;
        return innermost;
    }

    Known outer_;
};

}  // namespace orvane::display
