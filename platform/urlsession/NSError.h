#pragma once

#include <utility>

#include "platform/foundation/NSString.h"

namespace orvane::platform {

// The reason of a failure, in words for people.
class NSError {
public:
    explicit NSError(NSString localizedDescription)
        : localizedDescription_(std::move(localizedDescription)) {}

    [[nodiscard]] const NSString& localizedDescription() const { return localizedDescription_; }

private:
    NSString localizedDescription_;
};

}  // namespace orvane::platform
