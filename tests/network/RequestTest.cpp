#include "orvane/network/Request.h"

#include <gtest/gtest.h>

#include "orvane/network/Response.h"

namespace orvane::network {
namespace {

TEST(Request, BuildsTheUrlWithEncodedParameters) {
    const struct {
        const char* url;
        const char* built;
    } cases[] = {
        {"http://h/a b#f", "http://h/a b#f"},
        {"http://h/p?", "http://h/p"},
        {"http://h/p?=dropped", "http://h/p"},
        {"http://h/p?a=1&b&=c&d=&&e=f=g&", "http://h/p?a=1&d=&e=f%3Dg&b&"},
        // Escapes are encoded again.
        {"http://h/p?q=a%20b&c=d+e", "http://h/p?q=a%2520b&c=d%2Be"},
        {"http://h/p?q=\xC3\xA9\xFF", "http://h/p?q=%C3%A9%FF"},
        {"http://h/p?q=AZaz09-._~!*'()/?", "http://h/p?q=AZaz09-._~%21%2A%27%28%29%2F%3F"},
        {"http://h/p?x y", "http://h/p?x+y"},
    };
    for (const auto& [url, built] : cases) {
        Request request;
        request.setUrl(url);
        EXPECT_EQ(request.buildUrl(), built);
    }
    Request twice;
    twice.setUrl("http://h/p?a=1&b");
    twice.setUrl("http://other/?h=i");
    EXPECT_EQ(twice.getUrl(), "http://other/");
    EXPECT_EQ(twice.buildUrl(), "http://other/?a=1&h=i&b");
}

TEST(Request, EncodesFormsAndNothingElse) {
    Request request;
    request.addFormContent("name=J\xC3\xB6rg B&flag&=x&e=%41");
    request.addContent("a=b c", "text", "x-www-form-urlencoded", "p=q");
    request.addContent("a=b c", "application", "X-WWW-FORM-URLENCODED");
    request.addTextContent("a=b c");
    request.addHtmlContent("<p>");
    request.addJsonContent("{}");
    request.addXmlContent("<x/>");
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"name=J%C3%B6rg+B&e=%2541&flag", "application/x-www-form-urlencoded"},
        {"a=b+c", "text/x-www-form-urlencoded; p=q"},
        {"a=b c", "application/X-WWW-FORM-URLENCODED"},
        {"a=b c", "text/plain; charset=utf-8"},
        {"<p>", "text/html"},
        {"{}", "application/json"},
        {"<x/>", "application/xml"},
    };
    std::vector<std::pair<std::string, std::string>> encoded;
    for (const auto& each : request.getContents()) {
        encoded.emplace_back(each.content, each.mime.asString());
    }
    EXPECT_EQ(encoded, expected);
}

TEST(Response, IsOkFrom200To399) {
    for (const int code : {199, 200, 399, 400}) {
        EXPECT_EQ(Response::isOkStatus(code), code == 200 || code == 399) << code;
    }
}

TEST(Response, HoldsTheStorageOfItsBodyAndSoDoCopies) {
    auto storage = std::make_shared<const std::string>("body");
    const auto* bytes = reinterpret_cast<const unsigned char*>(storage->data());
    Response copy;
    {
        Response response;
        response.setBody(commons::ByteArray::createFromArray(bytes, storage->size()), storage);
        copy = response;
    }
    EXPECT_EQ(storage.use_count(), 2);
    EXPECT_EQ(copy.getBody().data(), bytes);
}

}  // namespace
}  // namespace orvane::network
