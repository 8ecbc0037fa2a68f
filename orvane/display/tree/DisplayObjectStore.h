#pragma once

#include <memory>
#include <vector>

namespace orvane::display {

class DisplayObject;

// Keeps objects alive, and nothing else: for those that are off the tree for a while.
class DisplayObjectStore {
public:
    virtual ~DisplayObjectStore() = default;

    std::vector<std::shared_ptr<DisplayObject>> objects;
};

}  // namespace orvane::display
