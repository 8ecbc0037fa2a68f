#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <typeindex>
#include <utility>
#include <vector>

#include "orvane/notification/Listener.h"

namespace orvane::notification {

// The base class of objects that raise events. T derives from Notifier<T> and from
// virtual_enable_shared_from_this<T>; each event type names its listener type as
// Event::listener_type.
//
// The notifier holds its listeners weakly, in the order in which they were added: the application
// keeps each listener alive for as long as it is to be called. Main thread only; nothing here
// locks.
template <typename T>
class Notifier {
public:
    virtual ~Notifier() = default;

    // Appends a listener for events of one type. A listener that was added twice is called twice. A
    // listener that is added during an event is first called at the next event.
    template <typename Event>
    void addListener(const std::shared_ptr<typename Event::listener_type>& listener) {
        const auto index = entryOf(typeid(Event)) - listeners_.begin();
        if (index == std::ssize(listeners_)) {
            listeners_.push_back({typeid(Event), {}});
        }
        listeners_[static_cast<std::size_t>(index)].second.push_back(listener);
    }

    // Whether a listener for Event is alive.
    template <typename Event>
    bool hasListeners() const {
        const auto found = entryOf(typeid(Event));
        return found != listeners_.end() &&
               std::any_of(found->second.begin(), found->second.end(),
                           [](const auto& entry) { return !entry.expired(); });
    }

    // Returns the listeners for Event that are still alive, in the order in which they were added.
    template <typename Event>
    std::vector<std::shared_ptr<typename Event::listener_type>> getListeners() const {
        std::vector<std::shared_ptr<typename Event::listener_type>> result;
        const auto found = entryOf(typeid(Event));
        if (found == listeners_.end()) {
            return result;
        }
        for (const std::weak_ptr<AbstractListener>& entry : found->second) {
            if (const std::shared_ptr<AbstractListener> listener = entry.lock()) {
                result.push_back(
                    std::dynamic_pointer_cast<typename Event::listener_type>(listener));
            }
        }
        return result;
    }

    // Returns the types of events that have listeners, and how many of them are alive, for tools
    // that show what an object does.
    std::vector<std::pair<std::type_index, std::size_t>> countListeners() const {
        std::vector<std::pair<std::type_index, std::size_t>> counts;
        for (const auto& [type, entries] : listeners_) {
            const auto alive = std::count_if(entries.begin(), entries.end(),
                                             [](const auto& entry) { return !entry.expired(); });
            if (alive != 0) {
                counts.emplace_back(type, static_cast<std::size_t>(alive));
            }
        }
        return counts;
    }

    // Calls every listener for Event that is alive now. A listener may add and release other
    // listeners meanwhile: the list is a snapshot, and a listener that is released during the call
    // is still called. When a listener throws, the exception reaches the caller and the listeners
    // after it are not called.
    template <typename Event>
    void notify(const Event& event) {
        for (const auto& listener : getListeners<Event>()) {
            (*listener)(dynamic_cast<T&>(*this).shared_from_this(), event);
        }
    }

private:
    // A vector and not a map: most objects have no listeners, and an empty map takes twice as much.
    // There are few types of events.
    using Listeners =
        std::vector<std::pair<std::type_index, std::vector<std::weak_ptr<AbstractListener>>>>;

    typename Listeners::const_iterator entryOf(std::type_index type) const {
        return std::find_if(listeners_.begin(), listeners_.end(),
                            [type](const auto& entry) { return entry.first == type; });
    }

    Listeners listeners_;
};

}  // namespace orvane::notification
