#include <dlfcn.h>

#include <algorithm>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "orvane/runtime/Runtime.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/objc/Class.h"

namespace orvane {

namespace {

// Returns the module name in an application library's file name, or nothing if the file is not an
// application library.
std::optional<std::string> moduleOf(const std::string& name) {
    const std::string stem = platform::stringByDeletingPathExtension(name);
    if (platform::pathExtension(name) != "dylib" || !stem.starts_with("lib") || stem.size() < 4) {
        return std::nullopt;
    }
    return stem.substr(3);
}

// Returns the symbol under which a module's class Main is exported. The number in it counts
// characters: in UTF-8, continuation bytes do not count.
std::string classNameOf(const std::string& module) {
    const auto length = std::count_if(module.begin(), module.end(),
                                      [](char byte) { return (byte & 0xC0) != 0x80; });
    return "_TtC" + std::to_string(length) + module + "4Main";
}

// The interface asks for RTLD_LOCAL alone, but dlopen requires a binding mode as well.
// RTLD_NODELETE keeps the library mapped after its last dlclose, because the listeners, callbacks
// and tasks that an application leaves behind are its code.
constexpr int kOpenMode = RTLD_LOCAL | RTLD_NOW | RTLD_NODELETE;

}  // namespace

void Runtime::loadSwiftLibrary(const std::string& directory) {
    // Never cleared: the failure of one application is reported even if a later one starts.
    std::string lastError;
    // One line for each library without the class. Logged only if no application was found, because
    // libraries that are not applications may be in the directory for the use of others.
    std::vector<std::string> missingClasses;
    bool found = false;
    for (const std::string& name :
         platform::NSFileManager::defaultManager().contentsOfDirectoryAtPath(directory)) {
        const auto module = moduleOf(name);
        if (!module) {
            continue;
        }
        void* const library =
            dlopen(platform::pathWithComponents({directory, name}).c_str(), kOpenMode);
        if (!library) {
            lastError = dlerror();
            continue;
        }
        const std::string className = classNameOf(*module);
        const auto main = platform::Class::getClass(library, className);
        if (!main) {
            // Not an error, and the library stays open.
            missingClasses.push_back("'" + name + "' exports no usable symbol '" + className + "'");
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
        for (const std::string& line : missingClasses) {
            platform::NSLog("%s", line.c_str());
        }
    } else if (!lastError.empty()) {
        platform::NSLog("Runtime error: %s", lastError.c_str());
    }
}

}  // namespace orvane
