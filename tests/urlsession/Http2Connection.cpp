#include "tests/urlsession/Http2Connection.h"

#include <nghttp2/nghttp2.h>

#include <array>
#include <memory>
#include <string_view>

namespace {

nghttp2_nv field(std::string_view name, std::string_view value) {
    const auto bytes = [](std::string_view text) {
        return const_cast<std::uint8_t*>(reinterpret_cast<const std::uint8_t*>(text.data()));
    };
    return {bytes(name), bytes(value), name.size(), value.size(), NGHTTP2_NV_FLAG_NONE};
}

int headerArrived(nghttp2_session* session, const nghttp2_frame* frame, const std::uint8_t* name,
                  std::size_t nameLength, const std::uint8_t* value, std::size_t valueLength,
                  std::uint8_t, void*) {
    if (std::string_view(reinterpret_cast<const char*>(name), nameLength) != ":path") {
        return 0;
    }
    const std::string_view path(reinterpret_cast<const char*>(value), valueLength);
    const std::array fields{field(":status", "200"), field("content-type", path)};
    return nghttp2_submit_response(session, frame->hd.stream_id, fields.data(), fields.size(),
                                   nullptr);
}

bool flush(nghttp2_session* session, SSL* tls) {
    const std::uint8_t* bytes = nullptr;
    for (ssize_t count = 0; (count = nghttp2_session_mem_send(session, &bytes)) != 0;) {
        if (count < 0 || SSL_write(tls, bytes, static_cast<int>(count)) <= 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool isHttp2(const SSL* tls) {
    const unsigned char* protocol = nullptr;
    unsigned length = 0;
    SSL_get0_alpn_selected(tls, &protocol, &length);
    return std::string_view(reinterpret_cast<const char*>(protocol), length) == "h2";
}

void serveHttp2(SSL* tls) {
    nghttp2_session_callbacks* callbacks = nullptr;
    nghttp2_session_callbacks_new(&callbacks);
    nghttp2_session_callbacks_set_on_header_callback(callbacks, headerArrived);
    nghttp2_session* created = nullptr;
    nghttp2_session_server_new(&created, callbacks, nullptr);
    nghttp2_session_callbacks_del(callbacks);
    const std::unique_ptr<nghttp2_session, decltype(&nghttp2_session_del)> session(
        created, &nghttp2_session_del);
    nghttp2_submit_settings(created, NGHTTP2_FLAG_NONE, nullptr, 0);
    std::array<std::uint8_t, 16384> buffer;
    while (flush(created, tls)) {
        const int count = SSL_read(tls, buffer.data(), static_cast<int>(buffer.size()));
        if (count <= 0 ||
            nghttp2_session_mem_recv(created, buffer.data(), static_cast<std::size_t>(count)) < 0) {
            return;
        }
    }
}
