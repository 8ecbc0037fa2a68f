#include "orvane/display/graphics/quartz/loadPicture.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

#include "orvane/commons/ByteArray.h"
#include "orvane/display/graphics/quartz/QuartzUtils.h"
#include "orvane/network/Request.h"
#include "orvane/network/RequestService.h"
#include "orvane/network/Response.h"
#include "orvane/network/ResponseCache.h"
#include "platform/coregraphics/CGDataProvider.h"
#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSData.h"
#include "platform/foundation/NSLog.h"
#include "platform/imageio/CGImageSource.h"

namespace orvane::display::graphics::quartz {

namespace {

using network::Request;
using network::Response;
using network::ResponseCache;
using platform::CGDataProvider;
using platform::CGImageSource;
using Done = std::function<void(std::shared_ptr<CGImageSource>)>;

std::filesystem::path cacheFolder() {
    const char* const stated = std::getenv("XDG_CACHE_HOME");
    if (stated != nullptr && *stated == '/') {
        return std::filesystem::path(stated) / "orvane" / "pictures";
    }
    const char* const home = std::getenv("HOME");
    return std::filesystem::path(home != nullptr ? home : "/nonexistent") / ".cache" / "orvane" /
           "pictures";
}

ResponseCache& cache() {
    constexpr std::uintmax_t kLimit = std::uintmax_t{100} << 20;
    static ResponseCache shared(cacheFolder(), kLimit);
    return shared;
}

void finish(const Done& done, std::shared_ptr<CGImageSource> source) {
    platform::dispatchMainAsync([done, source = std::move(source)] { done(source); });
}

// `bytes` are alive until this function returns.
void decode(const std::string& address, const void* bytes, std::size_t size, const Done& done) {
    const auto provider = CGDataProvider::createWithData(
        commons::ByteArray::createFromArray(static_cast<const unsigned char*>(bytes), size));
    std::shared_ptr<CGImageSource> source = CGImageSource::create(*provider);
    if (!source) {
        platform::NSLog("What is at '%s' is not a picture that can be shown.", address.c_str());
    }
    finish(done, std::move(source));
}

int hexDigit(char c) {
    const std::size_t at = std::string_view("0123456789abcdef").find(static_cast<char>(c | 0x20));
    return c >= '0' && c <= '9'                     ? c - '0'
           : at != std::string_view::npos && at > 9 ? static_cast<int>(at)
                                                    : -1;
}

std::string percentDecoded(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(text[i + 2]) : -1;
        if (low >= 0) {
            result.push_back(static_cast<char>(high * 16 + low));
            i += 2;
        } else {
            result.push_back(text[i] == '+' ? ' ' : text[i]);
        }
    }
    return result;
}

// A request encodes its parameters, and an address has them encoded.
Request requestOf(const std::string& address) {
    Request request;
    const std::size_t query = address.find('?');
    request.setUrl(address.substr(0, std::min(query, address.find('#'))));
    if (query == address.npos) {
        return request;
    }
    const std::string parameters = address.substr(query + 1, address.find('#') - query - 1);
    for (const std::string& each : QuartzUtils::split(parameters, '&')) {
        const std::size_t equals = each.find('=');
        if (equals != each.npos) {
            request.addParam(percentDecoded(each.substr(0, equals)),
                             percentDecoded(each.substr(equals + 1)));
        } else if (!each.empty()) {
            request.addSingleParam(percentDecoded(each));
        }
    }
    return request;
}

void receive(const std::string& address, const Response& response,
             const std::optional<ResponseCache::Entry>& kept, const Done& done) {
    constexpr int kNotModified = 304;
    const std::time_t now = std::time(nullptr);
    if (kept && response.getStatusCode() == kNotModified) {
        cache().renew(address, *kept, response, now);
        decode(address, kept->body.data(), kept->body.size(), done);
        return;
    }
    cache().store(address, response, now);
    decode(address, response.getBody().data(), response.getBody().size(), done);
}

void loadFromServer(const std::string& address, const Done& done) {
    const std::optional<ResponseCache::Entry> kept = cache().find(address);
    if (kept && std::time(nullptr) < kept->expires) {
        decode(address, kept->body.data(), kept->body.size(), done);
        return;
    }
    Request request = requestOf(address);
    if (kept) {
        ResponseCache::addConditions(request, *kept);
    }
    request.setErrorCallback([address, kept, done](std::int32_t, const std::string& message) {
        platform::NSLog("The picture '%s' was not loaded: %s", address.c_str(), message.c_str());
        if (!kept) {
            return finish(done, nullptr);
        }
        // Without a server, an old picture is better than none.
        platform::dispatchBackgroundAsync(
            [address, kept, done] { decode(address, kept->body.data(), kept->body.size(), done); });
    });
    network::RequestService::asyncRequest(request, [address, kept, done](const Response& response) {
        platform::dispatchBackgroundAsync(
            [address, response, kept, done] { receive(address, response, kept, done); });
    });
}

void loadFromFile(const std::string& path, const Done& done) {
    const auto provider = CGDataProvider::createWithFilename(path);
    if (!provider) {
        platform::NSLog("The picture '%s' cannot be read.", path.c_str());
        return finish(done, nullptr);
    }
    decode(path, provider->bytes().data(), provider->bytes().size(), done);
}

void load(const std::string& address, const Done& done) {
    constexpr std::string_view kFile = "file://";
    if (address.starts_with("http://") || address.starts_with("https://")) {
        return loadFromServer(address, done);
    }
    if (address.starts_with("data:")) {
        constexpr std::string_view kMarker = ";base64,";
        const std::size_t at = address.find(kMarker);
        const auto data = at != address.npos
                              ? QuartzUtils::decodeBase64(address, at + kMarker.size())
                              : std::nullopt;
        return data ? decode("a data address", data->bytes(), data->length(), done)
                    : finish(done, nullptr);
    }
    loadFromFile(
        address.starts_with(kFile) ? percentDecoded(address.substr(kFile.size())) : address, done);
}

}  // namespace

void loadPicture(const std::string& address, Done done) {
    platform::dispatchBackgroundAsync([address, done = std::move(done)] { load(address, done); });
}

}  // namespace orvane::display::graphics::quartz
