#include "Http2Connection.h"

#include <nghttp2/nghttp2.h>
#include <sys/types.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <memory>
#include <string>

namespace {

// The bodies of the answers by stream.
using Bodies = std::map<std::int32_t, std::string>;

int headerArrived(nghttp2_session*, const nghttp2_frame* frame, const std::uint8_t* name,
                  std::size_t nameLength, const std::uint8_t* value, std::size_t valueLength,
                  std::uint8_t, void* bodies) {
    const std::string_view field(reinterpret_cast<const char*>(name), nameLength);
    if (field == ":method" || field == ":path") {
        auto& body = (*static_cast<Bodies*>(bodies))[frame->hd.stream_id];
        body.append(body.empty() ? "" : " ")
            .append(reinterpret_cast<const char*>(value), valueLength);
    }
    return 0;
}

ssize_t readBody(nghttp2_session*, std::int32_t, std::uint8_t* buffer, std::size_t length,
                 std::uint32_t* flags, nghttp2_data_source* source, void*) {
    auto& body = *static_cast<std::string*>(source->ptr);
    const std::size_t count = std::min(length, body.size());
    std::memcpy(buffer, body.data(), count);
    body.erase(0, count);
    if (body.empty()) {
        *flags |= NGHTTP2_DATA_FLAG_EOF;
    }
    return static_cast<ssize_t>(count);
}

nghttp2_nv field(const char* name, const char* value) {
    const auto bytes = [](const char* text) {
        return const_cast<std::uint8_t*>(reinterpret_cast<const std::uint8_t*>(text));
    };
    return {bytes(name), bytes(value), std::strlen(name), std::strlen(value), NGHTTP2_NV_FLAG_NONE};
}

int frameArrived(nghttp2_session* session, const nghttp2_frame* frame, void* bodies) {
    const bool isOfRequest = frame->hd.type == NGHTTP2_HEADERS || frame->hd.type == NGHTTP2_DATA;
    if (!isOfRequest || (frame->hd.flags & NGHTTP2_FLAG_END_STREAM) == 0) {
        return 0;
    }
    const std::array fields{field(":status", "200"), field("content-type", "text/plain")};
    nghttp2_data_provider body{};
    body.source.ptr = &(*static_cast<Bodies*>(bodies))[frame->hd.stream_id];
    body.read_callback = readBody;
    return nghttp2_submit_response(session, frame->hd.stream_id, fields.data(), fields.size(),
                                   &body);
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

bool isHttp2(SSL* tls) {
    const unsigned char* protocol = nullptr;
    unsigned length = 0;
    SSL_get0_alpn_selected(tls, &protocol, &length);
    return std::string_view(reinterpret_cast<const char*>(protocol), length) == "h2";
}

void serveHttp2(SSL* tls) {
    nghttp2_session_callbacks* callbacks = nullptr;
    nghttp2_session_callbacks_new(&callbacks);
    nghttp2_session_callbacks_set_on_header_callback(callbacks, headerArrived);
    nghttp2_session_callbacks_set_on_frame_recv_callback(callbacks, frameArrived);
    Bodies bodies;
    nghttp2_session* created = nullptr;
    nghttp2_session_server_new(&created, callbacks, &bodies);
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
