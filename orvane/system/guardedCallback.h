#pragma once

#include <functional>
#include <utility>

#include "orvane/commons/guardedCall.h"

namespace orvane::system {

// Returns a function for the platform that calls an application's callback: one that is empty is
// not called, and what it throws ends in the log.
template <typename Result, typename Callback>
std::function<void(Result)> guardedCallback(Callback callback) {
    return [callback = std::move(callback)](Result result) {
        commons::guardedCall("exception of a callback", [&] {
            if (callback) {
                callback(result);
            }
        });
    };
}

}  // namespace orvane::system
