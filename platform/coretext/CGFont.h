#pragma once

#include <memory>
#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

class CGDataProvider;

// A font file that was checked and can be registered.
class ORVANE_EXPORT CGFont {
public:
    // Checks the bytes of `provider`, which were read from `file`. Returns null unless they are an
    // outline font whose tables all lie inside the file.
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
