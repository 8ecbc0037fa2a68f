#include <dlfcn.h>

#include <algorithm>
#include <exception>
#include <optional>
#include <string>

#include "orvane/runtime/Runtime.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/objc/Class.h"

namespace orvane {

namespace {

// The module of an application library's file name, or nothing when it names none.
std::optional<std::string> moduleOf(const std::string& name) {
    const std::string stem = platform::stringByDeletingPathExtension(name);
    if (platform::pathExtension(name) != "dylib" || !stem.starts_with("lib") || stem.size() < 4) {
        return std::nullopt;
    }
    return stem.substr(3);
}

// The runtime name under which a module's class Main is exported. Its number counts characters, so
// the bytes that continue one in UTF-8 do not count.
std::string classNameOf(const std::string& module) {
    const auto length = std::count_if(module.begin(), module.end(),
                                      [](char byte) { return (byte & 0xC0) != 0x80; });
    return "_TtC" + std::to_string(length) + module + "4Main";
}

// Local mode alone, as the interface has it, is refused here: the binding must be said too. The
// library stays mapped after its last dlclose, since the listeners, callbacks and tasks that an
// application leaves behind are its code.
constexpr int openMode = RTLD_LOCAL | RTLD_NOW | RTLD_NODELETE;

}  // namespace

void Runtime::loadSwiftLibrary(const std::string& directory) {
    // Never cleared once the walk has begun: an application's failure is reported even when a later
    // one starts.
    std::string lastError;
    bool found = false;
    for (const std::string& name :
         platform::NSFileManager::defaultManager().contentsOfDirectoryAtPath(directory)) {
        const auto module = moduleOf(name);
        if (!module) {
            continue;
        }
        void* const library =
            dlopen(platform::pathWithComponents({directory, name}).c_str(), openMode);
        if (!library) {
            lastError = dlerror();
            continue;
        }
        const auto main = platform::Class::getClass(library, classNameOf(*module));
        if (!main) {
            // Left open, and not an error: a library that is no application may lie here for
            // others.
            continue;
        }
        try {
            mainObject_ = main->makeObject();
            main->sendMain(mainObject_);
        } catch (const std::exception& error) {
            lastError = error.what();
        } catch (const char* error) {
            lastError = error ? error : "";
        } catch (const std::string& error) {
            lastError = error;
        } catch (...) {
            lastError = "unknown exception";
        }
        found = true;
        dlclose(library);
    }
    hasApplication_ = hasApplication_ || found;
    if (!found) {
        platform::NSLog("Can't load swift library: '%s' %s", directory.c_str(), lastError.c_str());
    } else if (!lastError.empty()) {
        platform::NSLog("Runtime error: %s", lastError.c_str());
    }
}

}  // namespace orvane
