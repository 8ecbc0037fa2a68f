#pragma once

#include <zlib.h>

#include <array>
#include <memory>
#include <optional>
#include <string_view>

namespace orvane::platform {

// Decodes the body of one response. libcurl's own decoding accepts a body that was cut short, and
// fails for encodings that it does not know.
class BodyDecoder {
public:
    // For the value of a Content-Encoding field. Null for encodings other than gzip and deflate:
    // bodies with these are delivered as they are.
    static std::unique_ptr<BodyDecoder> forEncoding(std::string_view encoding);

    BodyDecoder();
    ~BodyDecoder();
    BodyDecoder(const BodyDecoder&) = delete;
    BodyDecoder& operator=(const BodyDecoder&) = delete;

    // Decodes a piece and removes what it read from the input. The result is valid until the next
    // call, and nothing when the data are damaged. More input is needed when both the result and
    // the input are empty. A gzip body may have several parts (members, RFC 1952); other bytes
    // after the end of the compressed data are ignored.
    std::optional<std::string_view> decode(std::string_view& input);

    // Whether the end of the compressed data was reached.
    [[nodiscard]] bool isFinished() const { return isFinished_; }

private:
    z_stream stream_{};
    std::array<char, 32768> output_;
    bool isFinished_ = false;
};

}  // namespace orvane::platform
