#include "platform/foundation/NSUserDefaults.h"

#include <glib.h>

#include <memory>

#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSPathUtilities.h"

namespace orvane::platform {

namespace {

constexpr const char* kGroup = "Defaults";

using KeyFile = std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)>;

std::string folder() {
    return pathWithComponents({configurationDirectory(), "Orvane"});
}

std::string file() {
    return pathWithComponents({folder(), "defaults.conf"});
}

KeyFile load() {
    KeyFile keys(g_key_file_new(), &g_key_file_unref);
    // Preserve what a person added to the file by hand.
    const auto flags =
        static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    if (!g_key_file_load_from_file(keys.get(), file().c_str(), flags, nullptr)) {
        // Discard what was read before the error.
        keys.reset(g_key_file_new());
    }
    return keys;
}

// GLib treats other texts as programming errors: it prints a warning and stores nothing.
bool isStorable(const std::string& value, const std::string& key) {
    return !key.empty() && key.front() != ' ' && key.back() != ' ' &&
           key.find_first_of("=[]\n\r") == std::string::npos &&
           g_utf8_validate(key.data(), static_cast<gssize>(key.size()), nullptr) &&
           g_utf8_validate(value.data(), static_cast<gssize>(value.size()), nullptr);
}

}  // namespace

NSUserDefaults& NSUserDefaults::standardUserDefaults() {
    // Never destroyed: exit handlers may still use it.
    static auto& defaults = *new NSUserDefaults;
    return defaults;
}

std::optional<std::string> NSUserDefaults::objectForKey(const std::string& key) const {
    const std::lock_guard lock(mutex_);
    if (const auto found = volatile_.find(key); found != volatile_.end()) {
        return found->second;
    }
    const std::unique_ptr<gchar, decltype(&g_free)> value(
        g_key_file_get_string(load().get(), kGroup, key.c_str(), nullptr), &g_free);
    return value ? std::optional<std::string>(value.get()) : std::nullopt;
}

bool NSUserDefaults::setObjectForKey(const std::string& value, const std::string& key) {
    if (!isStorable(value, key)) {
        NSLog("The user default '%s' cannot be stored", key.c_str());
        return false;
    }
    const std::lock_guard lock(mutex_);
    const KeyFile keys = load();
    g_key_file_set_string(keys.get(), kGroup, key.c_str(), value.c_str());
    GError* error = nullptr;
    if (!NSFileManager::defaultManager().createDirectoryWithIntermediates(folder()) ||
        !g_key_file_save_to_file(keys.get(), file().c_str(), &error)) {
        NSLog("The user default '%s' cannot be stored: %s", key.c_str(),
              error ? error->message : folder().c_str());
        g_clear_error(&error);
        return false;
    }
    return true;
}

void NSUserDefaults::setVolatileObjectForKey(const std::string& value, const std::string& key) {
    const std::lock_guard lock(mutex_);
    volatile_[key] = value;
}

}  // namespace orvane::platform
