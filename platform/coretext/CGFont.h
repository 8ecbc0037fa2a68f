#pragma once

#include <memory>
#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

class CGDataProvider;

// A font file that has been looked into and can be registered.
class ORVANE_EXPORT CGFont {
public:
    // `file` is where `provider`'s bytes were read from: the font libraries open it themselves once
    // text needs it. Null for bytes that are no outline font, or whose tables do not all lie inside
    // the file.
    static std::shared_ptr<const CGFont> createWithDataProvider(const CGDataProvider& provider,
                                                                const std::string& file);

    const std::string& file() const { return file_; }
    const std::string& postScriptName() const { return postScriptName_; }

private:
    CGFont(std::string file, std::string postScriptName)
        : file_(std::move(file)), postScriptName_(std::move(postScriptName)) {}

    std::string file_;
    std::string postScriptName_;
};

}  // namespace orvane::platform
