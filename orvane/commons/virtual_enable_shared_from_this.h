#pragma once

#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::commons {

// Holds the one weak self-reference of an object that inherits several branches of
// virtual_enable_shared_from_this.
class ORVANE_EXPORT virtual_enable_shared_from_this_base
    : public std::enable_shared_from_this<virtual_enable_shared_from_this_base> {
public:
    virtual ~virtual_enable_shared_from_this_base() = default;
};

// Provides shared_from_this for classes with virtual inheritance: the object has one control block,
// however many branches of its class diamond derive from this class.
template <typename T>
class virtual_enable_shared_from_this : public virtual virtual_enable_shared_from_this_base {
public:
    // Returns the object itself; an empty pointer when the object is not a T. Throws
    // std::bad_weak_ptr when no shared_ptr holds the object, for instance in its constructor.
    std::shared_ptr<T> shared_from_this() { return as<T>(); }
    // The same for a constant object.
    std::shared_ptr<const T> shared_from_this() const { return as<const T>(); }

    // Returns the object as a U; an empty pointer when the object is not a U. Throws
    // std::bad_weak_ptr when no shared_ptr holds the object.
    template <typename U>
    std::shared_ptr<U> as() {
        return std::dynamic_pointer_cast<U>(
            virtual_enable_shared_from_this_base::shared_from_this());
    }
    // The same for a constant object.
    template <typename U>
    std::shared_ptr<U> as() const {
        return std::dynamic_pointer_cast<U>(
            virtual_enable_shared_from_this_base::shared_from_this());
    }
};

// Returns a shared_ptr to an object that a shared_ptr holds. Unlike shared_from_this, it does not
// search the object's class, which takes thousands of instructions in a large class diamond. Throws
// std::bad_weak_ptr when no shared_ptr holds the object.
template <typename T>
std::shared_ptr<T> sharedFrom(T& object) {
    return {static_cast<virtual_enable_shared_from_this_base&>(object).shared_from_this(), &object};
}

}  // namespace orvane::commons
