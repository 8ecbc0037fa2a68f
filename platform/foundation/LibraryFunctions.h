#pragma once

#include <dlfcn.h>

#include "platform/foundation/NSLog.h"

namespace orvane::platform {

// The functions of a shared library that is opened when it is needed first, and not when the
// program is loaded. The library is never closed: it is in use until the process ends.
class LibraryFunctions {
public:
    // `file` is the name of the library's binary interface, such as "libcurl.so.4". `consequence`
    // begins the line in the log if the library cannot be used.
    LibraryFunctions(const char* file, const char* consequence)
        : file_(file),
          consequence_(consequence),
          library_(dlopen(file, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE)) {
        if (library_ == nullptr) {
            NSLog("%s: %s", consequence_, dlerror());
        }
    }

    // Sets a pointer to the function with this name; null if there is none.
    template <typename Function>
    void find(Function& function, const char* name) {
        function =
            library_ != nullptr ? reinterpret_cast<Function>(dlsym(library_, name)) : nullptr;
        isComplete_ = isComplete_ && function != nullptr;
    }
    // Whether all functions have been found. If not, there is a line in the log.
    [[nodiscard]] bool isComplete() const {
        if (library_ != nullptr && !isComplete_) {
            NSLog("%s: %s cannot be used.", consequence_, file_);
        }
        return library_ != nullptr && isComplete_;
    }

private:
    const char* file_;
    const char* consequence_;
    void* library_;
    bool isComplete_ = true;
};

}  // namespace orvane::platform
