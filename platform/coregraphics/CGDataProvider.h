#pragma once

#include <memory>
#include <span>
#include <string>

#include "orvane/commons/ByteArray.h"
#include "orvane/commons/Export.h"

namespace orvane::platform {

// The bytes from which an image is made. Immutable and shared; safe to pass between threads.
class ORVANE_EXPORT CGDataProvider {
public:
    // Shares the bytes of `data`. If `data` does not own its bytes, the caller keeps them alive for
    // as long as the provider exists.
    static std::shared_ptr<const CGDataProvider> createWithData(orvane::commons::ByteArray data);
    // Reads the whole file. Returns null when the file cannot be read, is not a regular file, or is
    // larger than 256 MiB.
    static std::shared_ptr<const CGDataProvider> createWithFilename(const std::string& filename);

    std::span<const unsigned char> bytes() const { return {data_.data(), data_.size()}; }

private:
    orvane::commons::ByteArray data_;
};

}  // namespace orvane::platform
