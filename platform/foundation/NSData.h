#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orvane/commons/ByteArray.h"
#include "orvane/commons/Export.h"

namespace orvane::platform {

// Bytes that never change. Copies share them and may be read from any thread; the bytes live for as
// long as the last copy.
class ORVANE_EXPORT NSData {
public:
    NSData() = default;

    static NSData dataWithBytes(const void* bytes, unsigned long length);
    // Takes the bytes over without copying them.
    static NSData dataWithVector(std::vector<unsigned char> bytes);
    // Ignores characters that are not of the alphabet. Nothing when the rest is not whole groups of
    // four.
    [[nodiscard]] static std::optional<NSData> initWithBase64EncodedData(std::string_view text);

    [[nodiscard]] const unsigned char* bytes() const { return bytes_ ? bytes_->data() : nullptr; }
    [[nodiscard]] unsigned long length() const { return bytes_ ? bytes_->size() : 0; }

    [[nodiscard]] std::string base64EncodedString() const;

private:
    std::shared_ptr<const std::vector<unsigned char>> bytes_;
};

}  // namespace orvane::platform

namespace orvane::commons {

// A view of the object's bytes that does not keep it alive.
template <>
ORVANE_EXPORT ByteArray
ByteArray::createFromNativeObject<const platform::NSData*>(const platform::NSData* object);

}  // namespace orvane::commons
