#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::platform {

// What follows the last dot of the last component, without the dot. Empty when there is none, and
// when the only dot leads the name.
[[nodiscard]] std::string pathExtension(std::string_view path);
[[nodiscard]] std::string stringByDeletingPathExtension(std::string_view path);
[[nodiscard]] std::string lastPathComponent(std::string_view path);
// The components joined by one slash each.
[[nodiscard]] std::string pathWithComponents(std::initializer_list<std::string_view> components);

// The folders of the current user, as the XDG base directory rules give them: an environment
// variable that is unset, empty or not absolute counts for nothing. The environment is read anew by
// each call, and nothing is created.

// The Application Support folder: $XDG_DATA_HOME, or ~/.local/share.
[[nodiscard]] std::string applicationSupportDirectory();
// The folder of settings: $XDG_CONFIG_HOME, or ~/.config.
[[nodiscard]] std::string configurationDirectory();
// Where installed data may lie, the user's own folder first, then $XDG_DATA_DIRS.
[[nodiscard]] std::vector<std::string> dataDirectories();

}  // namespace orvane::platform
