#pragma once

#include <functional>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"

// The application's folders on disk and a few requests to the desktop. These functions keep no
// state: each call reads the desktop again. Except where noted, any thread may call them, none of
// them throws, and a failure is reported as one line in the log and an empty result.
namespace orvane::system {

// Returns the folder Orvane/AppData in the user's data folder ($XDG_DATA_HOME, usually
// ~/.local/share). Creates the folder if it is missing; returns the path even if that fails.
[[nodiscard]] ORVANE_EXPORT std::string getBasePath();
// Returns the base folder itself: documents have no folder of their own.
[[nodiscard]] ORVANE_EXPORT std::string getDocumentsDirectory();
// Returns the folder "caches" in the base folder.
[[nodiscard]] ORVANE_EXPORT std::string getCachesDirectory();
// Returns the folder "tmp" in the base folder.
[[nodiscard]] ORVANE_EXPORT std::string getTemporaryDirectory();

// Returns the folder of the application's resources, which is the user default "Resource Folder".
// The host sets it; if it did not, the result is empty and the log says so.
[[nodiscard]] ORVANE_EXPORT std::string getResourceDirectory();
// Returns the folder Resources in the folder orvane/bundles/<identifier> of one of the data folders
// ($XDG_DATA_HOME, $XDG_DATA_DIRS). Empty if there is no such bundle.
[[nodiscard]] ORVANE_EXPORT std::string getResourceDirectoryOfFramework(
    const std::string& identifier);

// Returns `first`, followed by the part of `second` that is longer than `first`: ("ab", "xyz")
// gives "abz". The result does not depend on whether such a file exists.
[[nodiscard]] ORVANE_EXPORT std::string pathToFile(const std::string& first,
                                                   const std::string& second);

// Creates a folder with mode 0777, minus the process's umask. Always returns true, even if the
// folder exists or cannot be created.
ORVANE_EXPORT bool createDirectory(const std::string& path);

// Creates the base, documents, caches and temporary folders. The runtime calls this function before
// it runs any task.
ORVANE_EXPORT void initSystem();

// Opens an address in the program that the desktop associates with it. Returns false if the text is
// not an address or if there is no such program.
ORVANE_EXPORT bool openUrl(const std::string& url);
// The same without waiting for the desktop: returns at once, and passes the result to the callback
// on the main thread. Main thread only.
ORVANE_EXPORT void openUrl(const std::string& url, std::function<void(bool isOpen)> callback);

// Ends the process with exit code 0.
[[noreturn]] ORVANE_EXPORT void exit();

// Returns whether the host says that the screen is higher than it is wide; see ScreenTypeView.
// Creates the display if necessary. Main thread only.
[[nodiscard]] ORVANE_EXPORT bool isPortraitScreenOrientation();

// Not implemented on the desktop: always returns an empty list.
[[nodiscard]] ORVANE_EXPORT std::vector<std::string> listFiles(const std::string& path);

// The desktop has no status bar: always returns false.
[[nodiscard]] ORVANE_EXPORT bool isStatusBarVisible();

// A desktop application is never sent to the background: the function is dropped without a call.
ORVANE_EXPORT void setOnEnterBackground(const std::function<void()>& function);
// As setOnEnterBackground.
ORVANE_EXPORT void setOnEnterForeground(const std::function<void()>& function);

}  // namespace orvane::system
