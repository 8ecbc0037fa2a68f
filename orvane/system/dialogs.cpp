#include "orvane/system/dialogs.h"

#include <utility>

#include "orvane/system/guardedCallback.h"
#include "platform/appkit/NSDesktop.h"

namespace orvane::system {

using platform::NSDesktop;
using platform::NSFilePanel;

namespace {

std::vector<NSFilePanel::Filter> toFilters(const std::vector<FileFilter>& filters) {
    std::vector<NSFilePanel::Filter> result;
    result.reserve(filters.size());
    for (const FileFilter& filter : filters) {
        result.push_back({filter.name, filter.patterns});
    }
    return result;
}

}  // namespace

void showOpenDialog(const OpenDialog& dialog,
                    std::function<void(const std::vector<std::string>& paths)> callback) {
    NSFilePanel panel;
    panel.title = dialog.title;
    panel.folder = dialog.folder;
    panel.filters = toFilters(dialog.filters);
    panel.choosesFolders = dialog.isForFolders;
    panel.choosesSeveral = dialog.isForSeveral;
    NSDesktop::current().runOpenPanel(
        panel, guardedCallback<std::vector<std::string>>(std::move(callback)));
}

void showSaveDialog(const SaveDialog& dialog,
                    std::function<void(const std::string& path)> callback) {
    NSFilePanel panel;
    panel.title = dialog.title;
    panel.folder = dialog.folder;
    panel.name = dialog.name;
    panel.filters = toFilters(dialog.filters);
    NSDesktop::current().runSavePanel(panel, guardedCallback<std::string>(std::move(callback)));
}

}  // namespace orvane::system
