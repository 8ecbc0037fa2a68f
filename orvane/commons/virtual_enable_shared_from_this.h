#pragma once

#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::commons {

// The one weak self-reference of a class that inherits from several branches of
// virtual_enable_shared_from_this.
class ORVANE_EXPORT virtual_enable_shared_from_this_base
    : public std::enable_shared_from_this<virtual_enable_shared_from_this_base> {
public:
    virtual ~virtual_enable_shared_from_this_base() = default;
};

// shared_from_this that works across virtual inheritance: however many branches of a diamond take
// it, the object has one control block.
template <typename T>
class virtual_enable_shared_from_this : public virtual virtual_enable_shared_from_this_base {
public:
    // Throws std::bad_weak_ptr when no shared_ptr holds the object (in a constructor, for
    // instance); an empty pointer when the object is not a T.
    std::shared_ptr<T> shared_from_this() { return as<T>(); }
    std::shared_ptr<const T> shared_from_this() const { return as<const T>(); }

    // The safe down-cast: an empty pointer when the object is not a U. Throws like
    // shared_from_this.
    template <typename U>
    std::shared_ptr<U> as() {
        return std::dynamic_pointer_cast<U>(
            virtual_enable_shared_from_this_base::shared_from_this());
    }
    template <typename U>
    std::shared_ptr<U> as() const {
        return std::dynamic_pointer_cast<U>(
            virtual_enable_shared_from_this_base::shared_from_this());
    }
};

}  // namespace orvane::commons
