#include "orvane/display/graphics/quartz/loadPicture.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <utility>

#include "orvane/commons/ByteArray.h"
#include "orvane/display/graphics/quartz/QuartzUtils.h"
#include "orvane/network/ResponseCache.h"
#include "orvane/network/fetchCached.h"
#include "platform/coregraphics/CGDataProvider.h"
#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSData.h"
#include "platform/foundation/NSLog.h"
#include "platform/imageio/CGImageSource.h"

namespace orvane::display::graphics::quartz {

namespace {

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

const std::shared_ptr<ResponseCache>& cache() {
    constexpr std::uintmax_t kLimit = std::uintmax_t{100} << 20;
    static const auto shared = std::make_shared<ResponseCache>(cacheFolder(), kLimit);
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

void loadFromServer(const std::string& address, const Done& done) {
    network::fetchCached(cache(), address, [address, done](const network::Fetched& fetched) {
        if (!fetched.error.empty()) {
            platform::NSLog("The picture '%s' was not loaded: %s", address.c_str(),
                            fetched.error.c_str());
        }
        // Without a server, an old picture is better than none.
        fetched.body ? decode(address, fetched.body->data(), fetched.body->size(), done)
                     : finish(done, nullptr);
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
    loadFromFile(address.starts_with(kFile) ? network::percentDecoded(address.substr(kFile.size()))
                                            : address,
                 done);
}

}  // namespace

void loadPicture(const std::string& address, Done done) {
    platform::dispatchBackgroundAsync([address, done = std::move(done)] { load(address, done); });
}

}  // namespace orvane::display::graphics::quartz
