#pragma once

#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::notification {

// The polymorphic base class of all listeners.
class ORVANE_EXPORT AbstractListener {
public:
    virtual ~AbstractListener() = default;
};

// Receives events of the type Event that a Sender raises. Applications derive from this class and
// own the listener; a notifier holds it weakly.
template <typename Sender, typename Event, typename Result>
class Listener : public AbstractListener {
public:
    // Called for each event. `sender` is the object that raised it.
    virtual Result operator()(const std::shared_ptr<Sender>& sender, const Event& event) = 0;
};

}  // namespace orvane::notification
