#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// The user's settings, as texts by name. They are stored in one key file, Orvane/defaults.conf in
// the user's folder of settings ($XDG_CONFIG_HOME), which all programs that use this library share.
// Volatile values, which a program sets for its own run, hide the stored ones.
//
// Thread-safe. Every query reads the file, so changes by other programs are visible at once.
class ORVANE_EXPORT NSUserDefaults {
public:
    static NSUserDefaults& standardUserDefaults();

    // Returns the volatile value, or else the stored one, or else nothing. A missing, damaged or
    // unreadable file contains no values.
    [[nodiscard]] std::optional<std::string> objectForKey(const std::string& key) const;

    // Stores the value in the file, which is replaced atomically. Returns false, writes a line to
    // the log and changes nothing if the file cannot be written, if the key contains a character
    // that is not allowed in key files, or if the value is not UTF-8.
    bool setObjectForKey(const std::string& value, const std::string& key);

    // Sets a volatile value, which lasts until the process ends. The value may be any bytes.
    void setVolatileObjectForKey(const std::string& value, const std::string& key);

private:
    NSUserDefaults() = default;

    mutable std::mutex mutex_;
    std::map<std::string, std::string> volatile_;
};

}  // namespace orvane::platform
