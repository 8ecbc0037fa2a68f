#pragma once

#include <memory>
#include <span>
#include <string>

#include "orvane/commons/ByteArray.h"
#include "orvane/commons/Export.h"

namespace orvane::platform {

// Bytes that an image is made from. Immutable, shared, safe to hand between threads.
class ORVANE_EXPORT CGDataProvider {
public:
    // Shares the bytes with `data`; whoever made a view without an owner keeps the storage alive.
    static std::shared_ptr<const CGDataProvider> createWithData(orvane::commons::ByteArray data);
    // Reads the whole file now. Null for what cannot be read, is no regular file, or is larger than
    // any picture this runtime takes.
    static std::shared_ptr<const CGDataProvider> createWithFilename(const std::string& filename);

    std::span<const unsigned char> bytes() const { return {data_.data(), data_.size()}; }

private:
    orvane::commons::ByteArray data_;
};

}  // namespace orvane::platform
