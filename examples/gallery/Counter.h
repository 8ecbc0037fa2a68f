#pragma once

#include <memory>
#include <vector>

#include "Cards.h"

namespace gallery {

// A number in seven-segment digits. A timer increases it every second.
class Counter {
public:
    static constexpr int kDigits = 4;

    // Adds the digits to `inside`. Counting begins with start() and ends with this object.
    explicit Counter(ContainerObject& inside);
    void start();

private:
    void show();

    int value_ = 0;
    orvane::Timer timer_;
    std::vector<std::shared_ptr<DisplayObject>> segments_;  // seven per digit
};

}  // namespace gallery
