#pragma once

#include <memory>
#include <typeindex>
#include <unordered_map>
#include <vector>

#include "orvane/notification/Listener.h"

namespace orvane::notification {

// An object that raises events. T derives from Notifier<T> and from
// virtual_enable_shared_from_this<T>; each event type names its listener type as
// Event::listener_type.
//
// Listeners are held weakly, in order of registration; a listener lives as long as its owner keeps
// it. Events are raised on the main thread; nothing here locks.
template <typename T>
class Notifier {
public:
    virtual ~Notifier() = default;

    // Appends a listener; one added twice is called twice. It takes effect at the next event, also
    // when it is added from within one.
    template <typename Event>
    void addListener(const std::shared_ptr<typename Event::listener_type>& listener) {
        listeners_[typeid(Event)].push_back(listener);
    }

    // The live listeners for Event, in order. Entries whose listener is gone are skipped and stay.
    template <typename Event>
    std::vector<std::shared_ptr<typename Event::listener_type>> getListeners() {
        std::vector<std::shared_ptr<typename Event::listener_type>> result;
        // A type never asked for before leaves an empty entry behind, which is harmless.
        for (const std::weak_ptr<AbstractListener>& entry : listeners_[typeid(Event)]) {
            if (const std::shared_ptr<AbstractListener> listener = entry.lock()) {
                result.push_back(
                    std::dynamic_pointer_cast<typename Event::listener_type>(listener));
            }
        }
        return result;
    }

    // Calls every live listener once. The list is a snapshot: listeners may add and drop others
    // while it runs, and one dropped in the same pass is still called. An exception from a listener
    // passes through, and the later ones are not called.
    template <typename Event>
    void notify(const Event& event) {
        for (const auto& listener : getListeners<Event>()) {
            (*listener)(dynamic_cast<T&>(*this).shared_from_this(), event);
        }
    }

private:
    std::unordered_map<std::type_index, std::vector<std::weak_ptr<AbstractListener>>> listeners_;
};

}  // namespace orvane::notification
