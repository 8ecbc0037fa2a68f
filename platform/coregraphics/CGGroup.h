#pragma once

namespace orvane::platform {

// The picture of a group that a canvas has drawn; see CGContext::endGroup. Only canvases of the
// kind that made it can read it. Immutable and shared.
class CGGroup {
public:
    CGGroup() = default;
    virtual ~CGGroup() = default;
    CGGroup(const CGGroup&) = delete;
    CGGroup& operator=(const CGGroup&) = delete;
};

}  // namespace orvane::platform
