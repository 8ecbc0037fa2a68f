#include "platform/foundation/runtimeLibrary.h"

#include <dlfcn.h>

#include <filesystem>

namespace orvane::platform {

std::string runtimeLibrary(const std::string& file) {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&runtimeLibrary), &info) == 0) {
        return file;
    }
    return std::filesystem::path(info.dli_fname).replace_filename(file).string();
}

}  // namespace orvane::platform
