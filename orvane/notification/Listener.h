#pragma once

#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::notification {

// The polymorphic root of all listeners.
class ORVANE_EXPORT AbstractListener {
public:
    virtual ~AbstractListener() = default;
};

// What is called when a Sender raises an Event. Applications derive from it and keep the listener
// alive: a notifier holds it weakly.
template <typename Sender, typename Event, typename Result>
class Listener : public AbstractListener {
public:
    virtual Result operator()(const std::shared_ptr<Sender>& sender, const Event& event) = 0;
};

}  // namespace orvane::notification
