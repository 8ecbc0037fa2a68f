#include "platform/urlsession/BodyDecoder.h"

#include <algorithm>
#include <string>

#include "platform/urlsession/headerNames.h"

namespace orvane::platform {

std::unique_ptr<BodyDecoder> BodyDecoder::forEncoding(std::string_view encoding) {
    const std::string name(encoding);
    const bool isKnown = std::ranges::any_of(
        std::array{"gzip", "x-gzip", "deflate"},
        [&](const char* known) { return isSameHeaderName(name.c_str(), known); });
    return isKnown ? std::make_unique<BodyDecoder>() : nullptr;
}

BodyDecoder::BodyDecoder() {
    // Recognizes the headers of gzip and of deflate (the zlib format).
    constexpr int automatic = 32;
    inflateInit2(&stream_, automatic + MAX_WBITS);
}

BodyDecoder::~BodyDecoder() {
    inflateEnd(&stream_);
}

std::optional<std::string_view> BodyDecoder::decode(std::string_view& input) {
    if (isFinished_) {
        constexpr char kStartOfGzip = '\x1f';
        if (input.empty() || input.front() != kStartOfGzip) {
            input = {};
            return input;
        }
        inflateReset(&stream_);
    }
    // zlib does not write to its input, but declares it as if it did.
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(input.data()));
    stream_.avail_in = static_cast<uInt>(input.size());
    stream_.next_out = reinterpret_cast<Bytef*>(output_.data());
    stream_.avail_out = static_cast<uInt>(output_.size());
    const int status = inflate(&stream_, Z_NO_FLUSH);
    // Z_BUF_ERROR: there was nothing left to do, which is harmless.
    if (status != Z_OK && status != Z_STREAM_END && status != Z_BUF_ERROR) {
        return std::nullopt;
    }
    isFinished_ = status == Z_STREAM_END;
    input.remove_prefix(input.size() - stream_.avail_in);
    return std::string_view(output_.data(), output_.size() - stream_.avail_out);
}

}  // namespace orvane::platform
