#pragma once

#include <algorithm>

namespace orvane::commons {

// Removes every element of a vector of shared pointers that points to the same object as `value`.
// The order of the others does not change. Returns whether anything was removed.
template <typename C>
bool eraseFromCollection(C& collection, const typename C::value_type& value) {
    // `value` may be an element of the collection, which the removal overwrites: keep its address.
    const auto* const pointer = value.get();
    const auto end = std::remove_if(collection.begin(), collection.end(),
                                    [&](const auto& each) { return each.get() == pointer; });
    const bool found = end != collection.end();
    collection.erase(end, collection.end());
    return found;
}

}  // namespace orvane::commons
