#include "platform/urlsession/NSURL.h"

#include <glib.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "platform/urlsession/CurlLibrary.h"

namespace orvane::platform {

namespace {

std::string part(CURLU* url, CURLUPart what, unsigned flags = 0) {
    char* text = nullptr;
    if (curl().urlGet(url, what, &text, flags) != CURLUE_OK) {
        return {};
    }
    const std::unique_ptr<char, decltype(&::curl_free)> owned(text, curl().free);
    return text;
}

std::string lowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), g_ascii_tolower);
    return text;
}

}  // namespace

NSURL::NSURL(std::string absoluteString, std::string origin)
    : absoluteString_(std::move(absoluteString)), origin_(std::move(origin)) {}

std::optional<NSURL> NSURL::URLWithString(const NSString& text) {
    if (CurlLibrary::instance() == nullptr) {
        return std::nullopt;
    }
    const std::unique_ptr<CURLU, decltype(&::curl_url_cleanup)> url(curl().url(),
                                                                    curl().urlCleanup);
    if (curl().urlSet(url.get(), CURLUPART_URL, text.UTF8String().c_str(),
                      CURLU_URLENCODE | CURLU_ALLOW_SPACE) != CURLUE_OK) {
        return std::nullopt;
    }
    const std::string scheme = lowerCase(part(url.get(), CURLUPART_SCHEME));
    const std::string host = lowerCase(part(url.get(), CURLUPART_HOST));
    if ((scheme != "http" && scheme != "https") || host.empty()) {
        return std::nullopt;
    }
    const std::string port = part(url.get(), CURLUPART_PORT, CURLU_DEFAULT_PORT);
    return NSURL(part(url.get(), CURLUPART_URL), scheme + "://" + host + ":" + port);
}

}  // namespace orvane::platform
