#pragma once

#include <memory>
#include <vector>

#include "Cards.h"

namespace gallery {

// A number in seven-segment digits, one higher every second by a timed task of the runtime.
class Counter : public std::enable_shared_from_this<Counter> {
public:
    static constexpr int kDigits = 4;

    // The digits go into `inside`; counting starts with start() and ends with the object.
    explicit Counter(ContainerObject& inside);
    void start();

private:
    void show();
    void countOn();

    int value_ = 0;
    std::vector<std::shared_ptr<DisplayObject>> segments_;  // seven a digit
};

}  // namespace gallery
