#pragma once

#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::commons {

// A view of bytes that may keep their storage alive. It is how bodies of requests and responses
// cross the interface without being copied.
//
// A copy shares the bytes and the owner; nothing here copies bytes. It may be handed between
// threads for as long as its storage lives.
class ORVANE_EXPORT ByteArray {
public:
    ByteArray() = default;

    // `owner` keeps `data` alive, or is empty when the caller does.
    ByteArray(const unsigned char* data, unsigned long size, const std::shared_ptr<void>& owner);
    virtual ~ByteArray();

    ByteArray(const ByteArray&) = default;
    ByteArray& operator=(const ByteArray&) = default;

    // A view with no owner: the caller keeps the storage alive for as long as the view is read.
    static ByteArray createFromArray(const unsigned char* data, unsigned long size);

    // A view of a platform buffer's bytes. The platform room specialises it for its buffer type.
    template <typename T>
    static ByteArray createFromNativeObject(T object);

    const unsigned char* data() const { return data_; }
    unsigned long size() const { return size_; }

private:
    const unsigned char* data_ = nullptr;
    unsigned long size_ = 0;
    std::shared_ptr<void> owner_;
};

}  // namespace orvane::commons
