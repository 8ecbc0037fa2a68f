#pragma once

#include <functional>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"

// The application's folders on disk and a few calls to the desktop. Nothing here keeps state: every
// call reads the desktop anew, from any thread. Nothing throws; a failure is a line in the log and
// an empty answer.
namespace orvane::system {

// The folder Orvane/AppData in the user's data folder ($XDG_DATA_HOME). Made when it is missing;
// the path comes back even when that fails.
[[nodiscard]] ORVANE_EXPORT std::string getBasePath();
// The base folder itself.
[[nodiscard]] ORVANE_EXPORT std::string getDocumentsDirectory();
[[nodiscard]] ORVANE_EXPORT std::string getCachesDirectory();
[[nodiscard]] ORVANE_EXPORT std::string getTemporaryDirectory();

// Where the application's resources lie: the user default "Resource Folder", which the host sets.
// Empty, with a line in the log, when it does not.
[[nodiscard]] ORVANE_EXPORT std::string getResourceDirectory();
// Where the resources of an installed bundle lie; empty when no bundle has the identifier. A bundle
// is the folder orvane/bundles/<identifier> of a data folder, its resources are in Resources there.
[[nodiscard]] ORVANE_EXPORT std::string getResourceDirectoryOfFramework(
    const std::string& identifier);

// `first` laid over the beginning of `second`: ("ab", "xyz") gives "abz". Whether there is such a
// file changes nothing.
[[nodiscard]] ORVANE_EXPORT std::string pathToFile(const std::string& first,
                                                   const std::string& second);

// Always true: a folder that exists, or cannot be made, counts as success.
ORVANE_EXPORT bool createDirectory(const std::string& path);

// Makes the four folders. The runtime does this before any task can run.
ORVANE_EXPORT void initSystem();

// Shows an address in the desktop's program for it; false when it is no address or there is no
// such program.
ORVANE_EXPORT bool openUrl(const std::string& url);

// Ends the process, successfully, from any thread.
[[noreturn]] ORVANE_EXPORT void exit();

// Whether the screen is higher than wide: the host's view around the display's says. Main thread.
[[nodiscard]] ORVANE_EXPORT bool isPortraitScreenOrientation();

// Always empty, whatever the folder holds: here the operation exists in name only.
[[nodiscard]] ORVANE_EXPORT std::vector<std::string> listFiles(const std::string& path);

// A desktop has none: always false.
[[nodiscard]] ORVANE_EXPORT bool isStatusBarVisible();

// A desktop has no such transitions: the function is dropped.
ORVANE_EXPORT void setOnEnterBackground(const std::function<void()>& function);
ORVANE_EXPORT void setOnEnterForeground(const std::function<void()>& function);

}  // namespace orvane::system
