#pragma once

#include <memory>
#include <span>
#include <string>
#include <utility>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGDataProvider.h"

namespace orvane::platform {

// A font file that was checked and can be registered.
class ORVANE_EXPORT CGFont {
public:
    // Checks the bytes of `provider`, which were read from `file`. Returns null unless they are an
    // outline font whose tables all lie inside the file.
    static std::shared_ptr<const CGFont> createWithDataProvider(const CGDataProvider& provider,
                                                                const std::string& file);

    const std::string& file() const { return file_; }
    // The bytes that were checked.
    std::span<const unsigned char> bytes() const { return data_.bytes(); }
    const std::string& postScriptName() const { return postScriptName_; }

private:
    CGFont(const CGDataProvider& data, std::string file, std::string postScriptName)
        : data_(data), file_(std::move(file)), postScriptName_(std::move(postScriptName)) {}

    CGDataProvider data_;
    std::string file_;
    std::string postScriptName_;
};

}  // namespace orvane::platform
