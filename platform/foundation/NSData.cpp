#include "platform/foundation/NSData.h"

#include <glib.h>

#include <utility>

#include "orvane/commons/ObjcObjectWrapper.h"

namespace orvane::platform {

NSData NSData::dataWithBytes(const void* bytes, unsigned long length) {
    const auto* first = static_cast<const unsigned char*>(bytes);
    return dataWithVector(std::vector<unsigned char>(first, first + length));
}

NSData NSData::dataWithVector(std::vector<unsigned char> bytes) {
    NSData data;
    data.bytes_ = std::make_shared<const std::vector<unsigned char>>(std::move(bytes));
    return data;
}

std::optional<NSData> NSData::initWithBase64EncodedData(std::string_view text) {
    // The size that g_base64_decode_step requires.
    std::vector<unsigned char> bytes(text.size() / 4 * 3 + 3);
    gint state = 0;
    guint save = 0;
    const gsize length =
        g_base64_decode_step(text.data(), text.size(), bytes.data(), &state, &save);
    if (state != 0) {
        return std::nullopt;
    }
    bytes.resize(length);
    return dataWithVector(std::move(bytes));
}

std::string NSData::base64EncodedString() const {
    const std::unique_ptr<gchar, decltype(&g_free)> text(g_base64_encode(bytes(), length()),
                                                         &g_free);
    return text.get();
}

}  // namespace orvane::platform

namespace orvane::commons {

template <>
ByteArray ByteArray::createFromNativeObject<const platform::NSData*>(
    const platform::NSData* object) {
    return {object->bytes(), object->length(), std::make_shared<ObjcObjectWrapper>(object)};
}

template <>
ByteArray ByteArray::createFromNativeObject<platform::NSData*>(platform::NSData* object) {
    return createFromNativeObject<const platform::NSData*>(object);
}

}  // namespace orvane::commons
