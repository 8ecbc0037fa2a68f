#pragma once

#include "orvane/display/tree/DisplayObject.h"

namespace orvane::display {

// Caches, for a scope, whether the children of one container can be visible. Without it each child
// would query all its ancestors, and a walk over a tree of depth n would cost n squared. Use it
// around loops over children in which no visibility changes. Scopes nest; only the innermost one of
// a thread is used.
class DisplayObject::ParentVisibilityScope {
public:
    ParentVisibilityScope(const ContainerObject& parent, bool visible) : outer_(known()) {
        known() = {&parent, visible};
    }
    ~ParentVisibilityScope() { known() = outer_; }
    ParentVisibilityScope(const ParentVisibilityScope&) = delete;
    ParentVisibilityScope& operator=(const ParentVisibilityScope&) = delete;

    // Whether the innermost scope caches the visibility of `parent`, which isParentVisible returns.
    static bool caches(const ContainerObject* parent) { return known().parent == parent; }
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
