#pragma once

#include <optional>
#include <string>

#include "orvane/commons/MainClass.h"

namespace orvane::platform {

// A class that an opened library exports under a runtime name. Valid for as long as the library is
// mapped; what its code throws comes out of both operations.
class Class {
public:
    // `library` is a handle of dlopen. Nothing when the library has no such class, or has it in a
    // version that this runtime does not know.
    static std::optional<Class> getClass(void* library, const std::string& name);

    // A new object. It lives until the process ends.
    [[nodiscard]] void* makeObject() const;
    // Sends `main` to an object of this class, on the calling thread.
    void sendMain(void* object) const;

private:
    explicit Class(const OrvaneMainClass& record);

    const OrvaneMainClass* record_;
};

}  // namespace orvane::platform
