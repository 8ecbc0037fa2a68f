#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// The user's settings: texts by name. They lie in one key file, Orvane/defaults.conf in the user's
// folder of settings ($XDG_CONFIG_HOME), shared by every program that runs on this library. On top
// of it stand the values that a program sets for its own run only.
//
// Callable from any thread. The file is read anew for each question, so that a change by another
// program is seen at once.
class ORVANE_EXPORT NSUserDefaults {
public:
    static NSUserDefaults& standardUserDefaults();

    // The value of this run, or else the stored one, or else nothing. A file that is missing,
    // damaged or unreadable holds no values.
    [[nodiscard]] std::optional<std::string> objectForKey(const std::string& key) const;

    // Stores the value for good. The file is replaced as a whole: whoever reads it meanwhile sees
    // the old one or the new one. False, with a line in the log and everything as it was, when the
    // file cannot be written, the key has a character that key files keep for themselves, or the
    // value is not UTF-8.
    bool setObjectForKey(const std::string& value, const std::string& key);

    // Sets the value until the process ends and stores nothing. Any bytes will do.
    void setVolatileObjectForKey(const std::string& value, const std::string& key);

private:
    NSUserDefaults() = default;

    mutable std::mutex mutex_;
    std::map<std::string, std::string> volatile_;
};

}  // namespace orvane::platform
