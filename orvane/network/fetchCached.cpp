#include "orvane/network/fetchCached.h"

#include <algorithm>
#include <ctime>
#include <string_view>
#include <utility>

#include "orvane/network/Request.h"
#include "orvane/network/RequestService.h"
#include "orvane/network/Response.h"
#include "orvane/network/ResponseCache.h"
#include "platform/dispatch/dispatch.h"

namespace orvane::network {

namespace {

using Done = std::function<void(const Fetched&)>;

int hexDigit(char c) {
    const std::size_t at = std::string_view("0123456789abcdef").find(static_cast<char>(c | 0x20));
    return c >= '0' && c <= '9'                     ? c - '0'
           : at != std::string_view::npos && at > 9 ? static_cast<int>(at)
                                                    : -1;
}

// A request encodes its parameters, and an address has them encoded.
Request requestOf(std::string_view address) {
    Request request;
    address = address.substr(0, address.find('#'));
    const std::size_t query = address.find('?');
    request.setUrl(std::string(address.substr(0, query)));
    if (query == address.npos) {
        return request;
    }
    std::string_view rest = address.substr(query + 1);
    while (!rest.empty()) {
        const std::string each(rest.substr(0, rest.find('&')));
        rest.remove_prefix(std::min(each.size() + 1, rest.size()));
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

std::span<const unsigned char> bytesOf(const std::string& text) {
    return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

void receive(ResponseCache& cache, const std::string& address, const Response& response,
             const std::optional<ResponseCache::Entry>& kept, const Done& done) {
    constexpr int kNotModified = 304;
    const std::time_t now = std::time(nullptr);
    if (kept && response.getStatusCode() == kNotModified) {
        cache.renew(address, *kept, response, now);
        done({bytesOf(kept->body), {}, 0});
        return;
    }
    cache.store(address, response, now);
    const commons::ByteArray& body = response.getBody();
    done({std::span(body.data(), body.size()), {}, 0});
}

}  // namespace

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

void fetchCached(const std::shared_ptr<ResponseCache>& cache, const std::string& address,
                 Done done) {
    const std::optional<ResponseCache::Entry> kept = cache->find(address);
    if (kept && std::time(nullptr) < kept->expires) {
        done({bytesOf(kept->body), {}, 0});
        return;
    }
    Request request = requestOf(address);
    if (kept) {
        ResponseCache::addConditions(request, *kept);
    }
    request.setErrorCallback([kept, done](std::int32_t status, const std::string& message) {
        platform::dispatchBackgroundAsync([kept, done, status, message] {
            Fetched fetched{{}, message, status};
            if (kept) {
                fetched.body = bytesOf(kept->body);
            }
            done(fetched);
        });
    });
    RequestService::asyncRequest(request, [cache, address, kept, done](const Response& response) {
        platform::dispatchBackgroundAsync([cache, address, response, kept, done] {
            receive(*cache, address, response, kept, done);
        });
    });
}

}  // namespace orvane::network
