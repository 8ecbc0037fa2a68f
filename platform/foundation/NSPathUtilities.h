#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::platform {

// Returns the text after the last dot of the last component. It is empty if there is no dot, or if
// the only dot is the first character of the component.
[[nodiscard]] std::string pathExtension(std::string_view path);
[[nodiscard]] std::string stringByDeletingPathExtension(std::string_view path);
[[nodiscard]] std::string lastPathComponent(std::string_view path);
// Joins the components by single slashes. An absolute component replaces those before it.
[[nodiscard]] std::string pathWithComponents(std::initializer_list<std::string_view> components);

// The functions below return folders by the XDG rules for base directories. A
// variable that is unset, empty or not an absolute path is ignored. Each call reads the
// environment, and no folder is created.

// The user's folder of application data: $XDG_DATA_HOME, or ~/.local/share.
[[nodiscard]] std::string applicationSupportDirectory();
// The user's folder of settings: $XDG_CONFIG_HOME, or ~/.config.
[[nodiscard]] std::string configurationDirectory();
// The folders of installed data: the user's own first, then those of $XDG_DATA_DIRS.
[[nodiscard]] std::vector<std::string> dataDirectories();

}  // namespace orvane::platform
