#pragma once

#include <functional>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"

// The desktop's dialogs for files. They return at once; the dialog is in front of the window, and
// the callback gets the result when the user is done: once, on the main thread. Main thread only.
namespace orvane::system {

// A name for files that match one of the patterns: {"Pictures", {"*.png", "*.jpg"}}.
struct FileFilter {
    std::string name;
    std::vector<std::string> patterns;
};

// A dialog for files or folders that exist.
struct OpenDialog {
    std::string title = {};   // empty: the desktop's own
    std::string folder = {};  // where it begins; empty: the desktop decides
    std::vector<FileFilter> filters = {};
    bool isForFolders = false;
    bool isForSeveral = false;
};

// A dialog for the name of a file to write. The desktop asks before a file is replaced.
struct SaveDialog {
    std::string title = {};
    std::string folder = {};
    std::string name = {};  // the suggestion
    std::vector<FileFilter> filters = {};
};

// The callback gets absolute paths; none if the user cancels.
ORVANE_EXPORT void showOpenDialog(
    const OpenDialog& dialog, std::function<void(const std::vector<std::string>& paths)> callback);
// The callback gets an absolute path; an empty one if the user cancels.
ORVANE_EXPORT void showSaveDialog(const SaveDialog& dialog,
                                  std::function<void(const std::string& path)> callback);

}  // namespace orvane::system
