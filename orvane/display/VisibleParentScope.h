#pragma once

#include "orvane/display/DisplayObject.h"

namespace orvane::display {

class DisplayObject::VisibleParentScope {
public:
    explicit VisibleParentScope(const ContainerObject& visibleParent) : outer_(current()) {
        current() = &visibleParent;
    }
    ~VisibleParentScope() { current() = outer_; }
    VisibleParentScope(const VisibleParentScope&) = delete;
    VisibleParentScope& operator=(const VisibleParentScope&) = delete;

    static bool holds(const ContainerObject* parent) { return current() == parent; }

private:
    static const ContainerObject*& current() {
        static thread_local constinit const ContainerObject* parent = nullptr;
        return parent;
    }

    const ContainerObject* outer_;
};

}  // namespace orvane::display
