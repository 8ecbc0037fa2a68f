#pragma once

#include <memory>
#include <vector>

namespace orvane::display {

class DisplayObject;

// Owns objects that are in no tree at the moment. It does nothing else.
class DisplayObjectStore {
public:
    virtual ~DisplayObjectStore() = default;

    std::vector<std::shared_ptr<DisplayObject>> objects;
};

}  // namespace orvane::display
