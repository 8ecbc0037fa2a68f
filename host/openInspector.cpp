#include "host/openInspector.h"

#include <dlfcn.h>

#include <filesystem>

#include "host/Options.h"
#include "host/output.h"
#include "platform/foundation/runtimeLibrary.h"

namespace orvane::host {

std::unique_ptr<inspector::Inspector> openInspector(const Options& options,
                                                    platform::NSWindow& application,
                                                    platform::NSWindow& window) {
    // Its listeners and timers are its code, so it is never unmapped.
    void* const library = dlopen(platform::runtimeLibrary(ORVANE_INSPECTOR_LIBRARY).c_str(),
                                 RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void* const open = library != nullptr ? dlsym(library, "orvane_open_inspector") : nullptr;
    if (open == nullptr) {
        complain(std::string("cannot open the inspector: ") + dlerror());
        return nullptr;
    }
    std::unique_ptr<inspector::Inspector> inspector(
        reinterpret_cast<decltype(&orvane_open_inspector)>(open)(&application, &window));
    if (!options.inspected.empty()) {
        inspector->chooseFirst(options.inspected);
    }
    return inspector;
}

std::string inspectorPath(const std::string& path) {
    std::filesystem::path result = path;
    result.replace_filename(result.stem().string() + "-inspector" + result.extension().string());
    return result.string();
}

}  // namespace orvane::host
