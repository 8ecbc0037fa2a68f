#include "orvane/network/ResponseCache.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <initializer_list>
#include <string>
#include <utility>

#include "orvane/network/Request.h"
#include "orvane/network/Response.h"

namespace orvane::network {
namespace {

constexpr std::time_t kNow = 784111777;  // Sun, 06 Nov 1994 08:49:37 GMT

Response answer(std::initializer_list<std::pair<std::string, std::string>> headers,
                const std::string& body = "body") {
    Response response;
    response.setStatusCode(200);
    for (const auto& [name, value] : headers) {
        response.addHeader(name, value);
    }
    const auto storage = std::make_shared<const std::string>(body);
    response.setBody(commons::ByteArray::createFromArray(
                         reinterpret_cast<const unsigned char*>(storage->data()), storage->size()),
                     storage);
    return response;
}

TEST(ResponseCache, FreshnessFollowsTheHeaders) {
    const struct {
        Response response;
        std::optional<std::time_t> expected;
    } cases[] = {
        {answer({}), kNow},
        {answer({{"Cache-Control", "public, max-age=60"}}), kNow + 60},
        {answer({{"cache-control", "max-age=60"}, {"Age", "25"}}), kNow + 35},
        {answer({{"Cache-Control", "no-store, max-age=60"}}), std::nullopt},
        {answer({{"Cache-Control", "no-cache"}, {"Expires", "Mon, 07 Nov 1994 08:49:37 GMT"}}),
         kNow},
        {answer({{"Date", "Sun, 06 Nov 1994 08:49:07 GMT"},
                 {"Expires", "Sun, 06 Nov 1994 08:49:37 GMT"}}),
         kNow + 30},
        {answer({{"Expires", "0"}}), kNow},
        {answer({{"Last-Modified", "Sun, 06 Nov 1994 08:48:37 GMT"}}), kNow + 6},
        {answer({{"Last-Modified", "Wed, 06 Nov 1985 08:48:37 GMT"}}), kNow + 24 * 3600},
        {answer({{"Vary", "*"}}), std::nullopt},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(ResponseCache::expiryOf(each.response, kNow), each.expected)
            << &each - std::begin(cases);
    }
}

TEST(ResponseCache, KeepsBodiesUpToItsLimit) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("orvane-cache-" + std::to_string(getpid()));
    ResponseCache cache(folder, 3000);
    const std::string binary("\0\n\r\xFF", 4);
    cache.store("http://a/1", answer({{"ETag", "\"x\""}, {"Cache-Control", "max-age=9"}}, binary),
                kNow);
    auto found = cache.find("http://a/1");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->body, binary);
    EXPECT_EQ(found->expires, kNow + 9);
    Request request;
    ResponseCache::addConditions(request, *found);
    EXPECT_EQ(request.getHeaders().at("If-None-Match"), "\"x\"");
    cache.renew("http://a/1", *found, answer({{"Cache-Control", "max-age=5"}}), kNow + 100);
    EXPECT_EQ(cache.find("http://a/1")->expires, kNow + 105);

    EXPECT_FALSE(cache.find("http://a/2"));
    cache.store("http://a/1", answer({{"Cache-Control", "no-store"}}), kNow);
    EXPECT_FALSE(cache.find("http://a/1"));

    for (int i = 0; i < 5; ++i) {
        cache.store("http://b/" + std::to_string(i), answer({}, std::string(900, 'x')), kNow);
    }
    std::uintmax_t total = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        total += file.file_size();
    }
    EXPECT_LE(total, 3000U);
    EXPECT_TRUE(cache.find("http://b/4")) << "the newest one stays";
    std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace orvane::network
