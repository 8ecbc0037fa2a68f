#pragma once

#include <optional>
#include <string>

#include "orvane/commons/MainClass.h"

namespace orvane::platform {

// A class that a loaded library exports under a runtime name. It is valid while the library is
// mapped. Exceptions of the library's code pass through makeObject() and sendMain().
class Class {
public:
    // `library` is a handle returned by dlopen. Returns nothing if the library does not contain the
    // class, or contains it in a version that this runtime does not support.
    static std::optional<Class> getClass(void* library, const std::string& name);

    // Creates an object, which is never destroyed.
    [[nodiscard]] void* makeObject() const;
    // Calls `main` of an object of this class on the calling thread.
    void sendMain(void* object) const;

private:
    explicit Class(const OrvaneMainClass& record);

    const OrvaneMainClass* record_;
};

}  // namespace orvane::platform
