#include "platform/foundation/NSFileManager.h"

#include <glib.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <system_error>

namespace orvane::platform {

namespace fs = std::filesystem;

namespace {

constexpr auto kOptions = fs::directory_options::skip_permission_denied;

void appendContents(const fs::path& directory, const fs::path& prefix, bool deep,
                    std::vector<std::string>& found) {
    std::error_code error;
    std::vector<fs::directory_entry> entries;
    for (fs::directory_iterator each(directory, kOptions, error), end; !error && each != end;
         each.increment(error)) {
        entries.push_back(*each);
    }
    std::sort(entries.begin(), entries.end(),
              [](const auto& a, const auto& b) { return a.path().native() < b.path().native(); });
    for (const auto& entry : entries) {
        const fs::path name = prefix / entry.path().filename();
        found.push_back(name);
        if (deep && entry.symlink_status(error).type() == fs::file_type::directory) {
            appendContents(entry.path(), name, deep, found);
        }
    }
}

}  // namespace

NSFileManager& NSFileManager::defaultManager() {
    static NSFileManager manager;
    return manager;
}

std::vector<std::string> NSFileManager::contentsOfDirectoryAtPath(const std::string& path) const {
    std::vector<std::string> names;
    appendContents(path, {}, false, names);
    return names;
}

std::vector<std::string> NSFileManager::enumeratorAtPath(const std::string& path) const {
    std::vector<std::string> paths;
    appendContents(path, {}, true, paths);
    return paths;
}

bool NSFileManager::fileExistsAtPath(const std::string& path) const {
    std::error_code error;
    return fs::exists(path, error);
}

bool NSFileManager::createDirectoryWithIntermediates(const std::string& path) const {
    std::error_code error;
    fs::create_directories(path, error);
    return fs::is_directory(path, error);
}

std::optional<NSData> NSFileManager::contentsAtPath(const std::string& path) const {
    std::error_code error;
    // Opening a named pipe would block until its other end is opened.
    if (!fs::is_regular_file(path, error)) {
        return std::nullopt;
    }
    gchar* bytes = nullptr;
    gsize length = 0;
    if (!g_file_get_contents(path.c_str(), &bytes, &length, nullptr)) {
        return std::nullopt;
    }
    const std::unique_ptr<gchar, decltype(&g_free)> owner(bytes, &g_free);
    return NSData::dataWithBytes(bytes, length);
}

}  // namespace orvane::platform
