#pragma once

#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::commons {

// A view of bytes that may keep their storage alive. The bodies of requests and responses cross the
// interface as byte arrays, so that nothing copies them.
//
// A copy of a ByteArray shares the bytes and the owner. A ByteArray may be handed between threads;
// its storage must live as long as it is read.
class ORVANE_EXPORT ByteArray {
public:
    // An empty array without an owner.
    ByteArray() = default;

    // A view of `size` bytes at `data`. `owner` keeps the bytes alive; it is empty when the caller
    // does that.
    ByteArray(const unsigned char* data, unsigned long size, const std::shared_ptr<void>& owner);
    virtual ~ByteArray();

    ByteArray(const ByteArray&) = default;
    ByteArray& operator=(const ByteArray&) = default;

    // Returns a view without an owner: the caller keeps the storage alive for as long as the view
    // is read.
    static ByteArray createFromArray(const unsigned char* data, unsigned long size);

    // Returns a view of the bytes of a platform object. The platform's modules specialize this
    // function for their buffer types.
    template <typename T>
    static ByteArray createFromNativeObject(T object);

    // The first byte; null for an empty array that was made without data.
    const unsigned char* data() const { return data_; }
    // The number of bytes.
    unsigned long size() const { return size_; }

private:
    const unsigned char* data_ = nullptr;
    unsigned long size_ = 0;
    std::shared_ptr<void> owner_;
};

}  // namespace orvane::commons
