#include "orvane/commons/ByteArray.h"

namespace orvane::commons {

ByteArray::ByteArray(const unsigned char* data, unsigned long size,
                     const std::shared_ptr<void>& owner)
    : data_(data), size_(size), owner_(owner) {}

ByteArray::~ByteArray() = default;

ByteArray ByteArray::createFromArray(const unsigned char* data, unsigned long size) {
    return {data, size, nullptr};
}

}  // namespace orvane::commons
