#include "platform/foundation/NSPathUtilities.h"

#include <glib.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace orvane::platform {

namespace {

bool isAbsolute(std::string_view path) {
    return !path.empty() && path.front() == '/';
}

// GLib's functions (g_get_user_data_dir and others) cache their first result, which would hide a
// change of the environment.
std::string directoryOfUser(const char* variable, const char* belowHome) {
    const char* const value = std::getenv(variable);
    if (value && isAbsolute(value)) {
        return value;
    }
    const char* const home = std::getenv("HOME");
    return pathWithComponents({home && isAbsolute(home) ? home : g_get_home_dir(), belowHome});
}

}  // namespace

std::string pathExtension(std::string_view path) {
    const std::string extension = std::filesystem::path(path).extension();
    return extension.empty() ? extension : extension.substr(1);
}

std::string stringByDeletingPathExtension(std::string_view path) {
    return std::filesystem::path(path).replace_extension();
}

std::string lastPathComponent(std::string_view path) {
    return std::filesystem::path(path).filename();
}

std::string pathWithComponents(std::initializer_list<std::string_view> components) {
    std::filesystem::path path;
    for (const std::string_view component : components) {
        path /= component;
    }
    return path;
}

std::string applicationSupportDirectory() {
    return directoryOfUser("XDG_DATA_HOME", ".local/share");
}

std::string configurationDirectory() {
    return directoryOfUser("XDG_CONFIG_HOME", ".config");
}

std::vector<std::string> dataDirectories() {
    std::vector<std::string> directories{applicationSupportDirectory()};
    const char* const value = std::getenv("XDG_DATA_DIRS");
    std::istringstream list(value && *value ? value : "/usr/local/share:/usr/share");
    for (std::string directory; std::getline(list, directory, ':');) {
        if (isAbsolute(directory)) {
            directories.push_back(directory);
        }
    }
    return directories;
}

}  // namespace orvane::platform
