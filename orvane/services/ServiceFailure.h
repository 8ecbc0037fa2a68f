#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace orvane::services {

// Why a service gives no result, as data.
struct ServiceFailure {
    // What the application can do something about.
    enum class Reason : std::uint8_t {
        // The user, the desktop or the host does not permit it.
        Denied,
        // The machine does not have the service, or the service has nothing that could answer.
        Unavailable,
        // There was no answer in time.
        TimedOut,
        // The service reported another error.
        Failed,
    };

    Reason reason = Reason::Failed;
    // For developers, in English.
    std::string message = {};
};

// Called once, on the main thread, with the reason why a call gives no result.
using FailureCallback = std::function<void(const ServiceFailure& failure)>;

}  // namespace orvane::services
