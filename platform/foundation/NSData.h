#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orvane/commons/ByteArray.h"
#include "orvane/commons/Export.h"

namespace orvane::platform {

// Immutable bytes. Copies share the bytes, which live as long as the last copy, and may be read on
// any thread.
class ORVANE_EXPORT NSData {
public:
    NSData() = default;

    // Copies the bytes.
    static NSData dataWithBytes(const void* bytes, unsigned long length);
    // Takes ownership of the bytes without copying them.
    static NSData dataWithVector(std::vector<unsigned char> bytes);
    // Decodes Base64 and ignores characters that are not part of its alphabet. Returns nothing if
    // the others are not complete groups of four.
    [[nodiscard]] static std::optional<NSData> initWithBase64EncodedData(std::string_view text);

    // Null if there are no bytes.
    [[nodiscard]] const unsigned char* bytes() const { return bytes_ ? bytes_->data() : nullptr; }
    [[nodiscard]] unsigned long length() const { return bytes_ ? bytes_->size() : 0; }

    [[nodiscard]] std::string base64EncodedString() const;

private:
    std::shared_ptr<const std::vector<unsigned char>> bytes_;
};

}  // namespace orvane::platform

namespace orvane::commons {

// Return a view of the object's bytes. It does not keep the object alive.
template <>
ORVANE_EXPORT ByteArray
ByteArray::createFromNativeObject<const platform::NSData*>(const platform::NSData* object);
template <>
ORVANE_EXPORT ByteArray
ByteArray::createFromNativeObject<platform::NSData*>(platform::NSData* object);

}  // namespace orvane::commons
