#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/NSData.h"

namespace orvane::platform {

// Folders and files on disk. Holds no state: every call reads the disk anew, from any thread. A
// failure is an empty answer, never an exception.
class NSFileManager {
public:
    static NSFileManager& defaultManager();

    // The names in a folder, sorted by their bytes so that every machine walks them alike. Empty
    // when there is no such folder or it cannot be read.
    [[nodiscard]] std::vector<std::string> contentsOfDirectoryAtPath(const std::string& path) const;

    // The same for the whole tree below: paths relative to the folder, each folder before what is
    // in it. A link to a folder is listed and not entered, so a cycle of links ends; what cannot be
    // read is left out.
    [[nodiscard]] std::vector<std::string> enumeratorAtPath(const std::string& path) const;

    [[nodiscard]] bool fileExistsAtPath(const std::string& path) const;

    // Makes the folder and those above it that are missing. True when the folder is there at the
    // end.
    [[nodiscard]] bool createDirectoryWithIntermediates(const std::string& path) const;

    // Nothing when the path names no regular file or the file cannot be read.
    [[nodiscard]] std::optional<NSData> contentsAtPath(const std::string& path) const;
};

}  // namespace orvane::platform
