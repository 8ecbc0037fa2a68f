#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/NSData.h"

namespace orvane::platform {

// Reads folders and files. It has no state: every call reads the disk, on any thread. A failure
// gives an empty result, never an exception.
class NSFileManager {
public:
    static NSFileManager& defaultManager();

    // Returns the names in a folder, sorted by their bytes so that the order is the same on every
    // machine. The list is empty if the folder does not exist or cannot be read.
    [[nodiscard]] std::vector<std::string> contentsOfDirectoryAtPath(const std::string& path) const;

    // Returns the same for the whole tree below a folder, as paths relative to it; a folder comes
    // before its contents. Symbolic links are listed but not followed, so cycles of links are
    // harmless. Folders that cannot be read are listed without their contents.
    [[nodiscard]] std::vector<std::string> enumeratorAtPath(const std::string& path) const;

    [[nodiscard]] bool fileExistsAtPath(const std::string& path) const;

    // Creates the folder and its missing parents. Returns whether the folder exists afterwards.
    [[nodiscard]] bool createDirectoryWithIntermediates(const std::string& path) const;

    // Returns nothing if the path does not name a regular file or the file cannot be read.
    [[nodiscard]] std::optional<NSData> contentsAtPath(const std::string& path) const;
};

}  // namespace orvane::platform
