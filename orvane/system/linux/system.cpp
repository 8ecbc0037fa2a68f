#include "orvane/system/system.h"

#include <easylogging++.h>

#include <cstdlib>
#include <utility>

#include "orvane/system/guardedCallback.h"
#include "platform/appkit/NSDesktop.h"
#include "platform/appkit/NSWorkspace.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/foundation/NSUserDefaults.h"

namespace orvane::system {

std::string getBasePath() {
    std::string path = platform::pathWithComponents(
        {platform::applicationSupportDirectory(), "Orvane", "AppData"});
    const auto& files = platform::NSFileManager::defaultManager();
    if (!files.fileExistsAtPath(path) && !files.createDirectoryWithIntermediates(path)) {
        CLOG(ERROR, "default") << "Can't create document folder '" << path << "'";
    }
    return path;
}

std::string getResourceDirectory() {
    const auto folder =
        platform::NSUserDefaults::standardUserDefaults().objectForKey("Resource Folder");
    if (!folder) {
        CLOG(ERROR, "default") << "Resource folder cannot be found";
    }
    return folder.value_or("");
}

std::string getResourceDirectoryOfFramework(const std::string& identifier) {
    const auto bundle = platform::NSBundle::bundleWithIdentifier(identifier);
    return bundle ? bundle->resourcePath() : "";
}

bool openUrl(const std::string& url) {
    return platform::NSWorkspace::openURL(url);
}

void openUrl(const std::string& url, std::function<void(bool isOpen)> callback) {
    platform::NSDesktop::current().openURL(url, guardedCallback<bool>(std::move(callback)));
}

void exit() {
    std::exit(0);
}

std::vector<std::string> listFiles(const std::string& /*path*/) {
    return {};
}

bool isStatusBarVisible() {
    return false;
}

void setOnEnterBackground(const std::function<void()>& /*function*/) {}

void setOnEnterForeground(const std::function<void()>& /*function*/) {}

}  // namespace orvane::system
