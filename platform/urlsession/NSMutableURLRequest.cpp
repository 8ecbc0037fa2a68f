#include "platform/urlsession/NSMutableURLRequest.h"

#include <glib.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <string_view>

#include "platform/foundation/NSLog.h"
#include "platform/urlsession/headerNames.h"

namespace orvane::platform {

namespace {

bool isTokenCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("!#$%&'*+-.^_`|~").find(c) != std::string_view::npos;
}

bool isFieldName(std::string_view name) {
    return !name.empty() && std::ranges::all_of(name, isTokenCharacter);
}

bool isFieldValue(std::string_view value) {
    return std::ranges::none_of(value, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte < 0x20 && c != '\t') || byte == 0x7F;
    });
}

void logDroppedField(const std::string& name) {
    constexpr std::size_t shown = 100;
    const std::unique_ptr<gchar, decltype(&g_free)> escaped(
        g_strescape(name.substr(0, shown).c_str(), nullptr), &g_free);
    NSLog("The header \"%s\" is not sent: its name or value would break its line.", escaped.get());
}

}  // namespace

NSMutableURLRequest NSMutableURLRequest::requestWithURL(std::optional<NSURL> url) {
    NSMutableURLRequest request;
    request.url_ = std::move(url);
    return request;
}

void NSMutableURLRequest::setHTTPMethod(std::string method) {
    method_ = std::move(method);
}

void NSMutableURLRequest::setValueForHTTPHeaderField(const NSString& value, const NSString& field) {
    const std::string& name = field.UTF8String();
    if (!isFieldName(name) || !isFieldValue(value.UTF8String())) {
        logDroppedField(name);
        return;
    }
    removeField(name.c_str());
    fields_.emplace_back(name, value.UTF8String());
}

void NSMutableURLRequest::setHTTPBody(NSData body) {
    body_ = std::move(body);
}

void NSMutableURLRequest::removeField(const char* name) {
    std::erase_if(fields_,
                  [&](const auto& field) { return isSameHeaderName(field.first.c_str(), name); });
}

NSMutableURLRequest NSMutableURLRequest::redirected(int statusCode,
                                                    std::optional<NSURL> url) const {
    NSMutableURLRequest request = *this;
    const bool isFoundByPost = (statusCode == 301 || statusCode == 302) && method_ == "POST";
    if (isFoundByPost || statusCode == 303) {
        request.method_ = "GET";
        request.body_.reset();
        for (const auto* name :
             {"Content-Type", "Content-Encoding", "Content-Language", "Content-Location"}) {
            request.removeField(name);
        }
    }
    if (!url_ || !url || url_->origin() != url->origin()) {
        for (const auto* name : {"Authorization", "Proxy-Authorization", "Cookie", "Host"}) {
            request.removeField(name);
        }
    }
    request.url_ = std::move(url);
    return request;
}

}  // namespace orvane::platform
