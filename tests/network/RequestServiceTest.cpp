#include "orvane/network/RequestService.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>

#include "TestServer.h"
#include "orvane/network/Request.h"
#include "orvane/network/Response.h"
#include "orvane/network/convert.h"
#include "platform/dispatch/dispatch.h"

namespace orvane::network {
namespace {

using Connection = TestServer::Connection;

// Answers with what it was asked, byte for byte.
void echo(const TestServer::Request& request, Connection& connection) {
    connection.answer(200, request.head + "\r\n" + request.body);
}

std::string bodyOf(const Response& response) {
    return {reinterpret_cast<const char*>(response.getBody().data()), response.getBody().size()};
}

Request requestTo(const std::string& url, RequestMethod method = RequestMethod::GET) {
    Request request;
    request.setUrl(url);
    request.setMethod(method);
    return request;
}

struct Outcome {
    std::optional<std::string> body;
    int code = 0;
    std::string message;
};

// Runs the request through the asynchronous door and drains the main queue until it has reported.
Outcome outcomeOf(Request request) {
    std::optional<Outcome> outcome;
    request.setErrorCallback([&](int code, const std::string& message) {
        EXPECT_TRUE(platform::isMainThread());
        outcome = Outcome{{}, code, message};
    });
    RequestService::asyncRequest(request, [&](const Response& response) {
        EXPECT_TRUE(platform::isMainThread());
        outcome = Outcome{bodyOf(response), response.getStatusCode(), response.getStatusMessage()};
    });
    while (!outcome) {
        platform::drainMainQueue(std::chrono::seconds(1));
    }
    return *outcome;
}

TEST(RequestService, SendsMethodBodyAndHeaders) {
    TestServer server(echo);
    const std::string bytes("\0\xFF\r\n", 4);
    const auto byteArray = commons::ByteArray::createFromArray(
        reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    using Change = void (*)(Request&, const commons::ByteArray&);
    const struct {
        RequestMethod method;
        Change change;
        std::string line;
        std::string type;
        std::string length;
        std::string body;
    } cases[] = {
        {RequestMethod::GET, [](Request& r, auto&) { r.addParam("q", "a b"); },
         "GET /p?q=a+b HTTP/1.1", "", "", ""},
        {static_cast<RequestMethod>(17), [](Request&, auto&) {}, "GET /p HTTP/1.1", "", "", ""},
        {RequestMethod::HEADER, [](Request&, auto&) {}, "HEADER /p HTTP/1.1", "", "", ""},
        {RequestMethod::DELETE, [](Request&, auto&) {}, "DELETE /p HTTP/1.1", "", "", ""},
        {RequestMethod::POST, [](Request&, auto&) {}, "POST /p HTTP/1.1", "", "0", ""},
        {RequestMethod::POST, [](Request& r, auto&) { r.addFormContent("a=b c"); },
         "POST /p HTTP/1.1", "application/x-www-form-urlencoded", "5", "a=b+c"},
        {RequestMethod::PUT,
         [](Request& r, auto& b) {
             r.addHeader("content-type", "replaced");
             r.addHeader("Content-Length", "99");
             r.addByteContent(b, "image", "png", "x=y");
         },
         "PUT /p HTTP/1.1", "image/png; x=y", "4", bytes},
        {RequestMethod::GET, [](Request& r, auto&) { r.addJsonContent("{}"); }, "GET /p HTTP/1.1",
         "application/json", "2", "{}"},
        // Two parts: none is sent.
        {RequestMethod::POST,
         [](Request& r, auto& b) {
             r.addTextContent("one");
             r.addByteContent(b, "a", "b", "");
         },
         "POST /p HTTP/1.1", "", "0", ""},
    };
    for (const auto& expected : cases) {
        Request request = requestTo(server.url("/p"), expected.method);
        expected.change(request, byteArray);
        const std::string echoed = bodyOf(RequestService::syncRequest(request));
        TestServer::Request seen;
        seen.head = echoed;
        EXPECT_EQ(echoed.substr(0, echoed.find("\r\n")), expected.line);
        EXPECT_EQ(seen.header("Content-Type"), expected.type) << expected.line;
        EXPECT_EQ(seen.header("Content-Length"), expected.length) << expected.line;
        EXPECT_EQ(seen.header("Expect"), "");
        EXPECT_EQ(echoed.substr(echoed.find("\r\n\r\n") + 4), expected.body) << expected.line;
    }
}

TEST(RequestService, AuthorizesWhenNameAndSecretAreGiven) {
    TestServer server(echo);
    const struct {
        const char* login;
        const char* password;
        const char* replacement;
        const char* sent;
    } cases[] = {
        {"Aladdin", "open sesame", nullptr, "Basic QWxhZGRpbjpvcGVuIHNlc2FtZQ=="},
        {"\xE9", "x", nullptr, "Basic w6k6eA=="},
        {"Aladdin", "", nullptr, ""},
        {"", "open sesame", nullptr, ""},
        {"Aladdin", "open sesame", "Bearer t", "Bearer t"},
    };
    for (const auto& expected : cases) {
        Request request = requestTo(server.url("/"));
        request.setBasicAuthorization(expected.login, expected.password);
        if (expected.replacement != nullptr) {
            request.addHeader("authorization", expected.replacement);
        }
        TestServer::Request seen;
        seen.head = bodyOf(RequestService::syncRequest(request));
        const bool isReplaced = expected.replacement != nullptr;
        EXPECT_EQ(seen.header("Authorization"), isReplaced ? "" : expected.sent);
        EXPECT_EQ(seen.header("authorization"), isReplaced ? expected.sent : "");
    }
    // What an address carries goes with that address alone.
    for (const auto& [host, sent] : {std::pair("u:p@127.0.0.1", "Basic dTpw"), {"127.0.0.1", ""}}) {
        TestServer::Request seen;
        seen.head = bodyOf(RequestService::syncRequest(requestTo(server.url("/", host))));
        EXPECT_EQ(seen.header("Authorization"), sent);
    }
}

TEST(RequestService, LetsNoHeaderBecomeTwo) {
    TestServer server(echo);
    for (const auto& [name, value] :
         std::vector<std::pair<std::string, std::string>>{{"X-A", "1\r\nEvil: 1"},
                                                          {"X-A", "1\nEvil: 1"},
                                                          {"X-A", "\r"},
                                                          {"X-A: 1\r\nEvil", "1"},
                                                          {"X A", "1"},
                                                          {"X-A:", "1"},
                                                          {"", "Evil"}}) {
        Request request = requestTo(server.url("/"));
        request.addHeader(name, value);
        request.addHeader("Kept", " ");
        testing::internal::CaptureStderr();
        const std::string seen = bodyOf(RequestService::syncRequest(request));
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_EQ(seen.find("Evil"), std::string::npos) << seen;
        EXPECT_EQ(seen.find("X"), std::string::npos) << seen;
        EXPECT_NE(seen.find("\r\nKept:\r\n"), std::string::npos) << seen;
        EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
    }
}

TEST(RequestService, KeepsTheBytesOfHeadersAsTheServerSentThem) {
    TestServer server([](const auto&, Connection& connection) {
        connection.answer(200, "",
                          "X-Latin: \xE9\r\nX-Utf: \xC3\xA9\xE2\x82\xAC\r\ncontent-TYPE: t/s\r\n"
                          "X-List: a=1\r\nx-list: b=2\r\n");
    });
    const auto headers = RequestService::syncRequest(requestTo(server.url("/"))).getHeaders();
    EXPECT_EQ(headers.at("X-Latin"), "\xE9");
    EXPECT_EQ(headers.at("X-Utf"), "\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(headers.at("Content-Type"), "t/s");
    EXPECT_EQ(headers.at("X-List"), "a=1, b=2");

    EXPECT_EQ(convert(std::string("\xC3\xA9")).UTF8String(), "\xC3\xA9");
    EXPECT_EQ(convert(std::string("\xE9")).UTF8String(), "\xC3\xA9");
    EXPECT_EQ(convert(convert(std::string("\xC3\xA9"))), "\xE9");
    EXPECT_EQ(convert(convert(std::string("\xE2\x82\xAC"))), "");
}

TEST(RequestService, FollowsRedirectionsAsBrowsersDo) {
    TestServer other(echo);
    TestServer server([&](const TestServer::Request& request, Connection& connection) {
        const std::string& target = request.target;
        const auto status = std::stoi(target.substr(1));
        if (status == 200) {
            echo(request, connection);
            return;
        }
        const bool leaves = target.find("other") != std::string::npos;
        connection.answer(status, "not this",
                          "Location: " + (leaves ? other.url("/200") : "/200") + "\r\n");
    });
    const struct {
        const char* path;
        RequestMethod method;
        const char* line;
        bool keepsBody;
    } cases[] = {
        {"/301", RequestMethod::POST, "GET /200", false},
        {"/302", RequestMethod::POST, "GET /200", false},
        {"/302", RequestMethod::PUT, "PUT /200", true},
        {"/303", RequestMethod::PUT, "GET /200", false},
        {"/303", RequestMethod::DELETE, "GET /200", false},
        {"/307", RequestMethod::POST, "POST /200", true},
        {"/308", RequestMethod::POST, "POST /200", true},
        {"/308/other", RequestMethod::POST, "POST /200", true},
    };
    for (const auto& expected : cases) {
        Request request = requestTo(server.url(expected.path), expected.method);
        request.setBasicAuthorization("name", "secret");
        request.addHeader("Cookie", "own=1");
        request.addTextContent("text");
        const Response response = RequestService::syncRequest(request);
        EXPECT_EQ(response.getStatusCode(), 200) << expected.path;
        TestServer::Request seen;
        seen.head = bodyOf(response);
        const bool stays = std::string(expected.path).find("other") == std::string::npos;
        EXPECT_TRUE(seen.head.starts_with(expected.line)) << expected.path << seen.head;
        EXPECT_EQ(seen.head.ends_with("\r\n\r\ntext"), expected.keepsBody) << expected.path;
        EXPECT_EQ(seen.header("Content-Type").empty(), !expected.keepsBody) << expected.path;
        EXPECT_EQ(seen.header("Authorization").empty(), !stays) << expected.path;
        EXPECT_EQ(seen.header("Cookie").empty(), !stays) << expected.path;
    }
    // Not a redirection, whatever it carries.
    EXPECT_EQ(bodyOf(RequestService::syncRequest(requestTo(server.url("/300")))), "not this");
}

TEST(RequestService, SharesCookies) {
    TestServer server([](const TestServer::Request& request, Connection& connection) {
        if (request.target == "/set") {
            connection.answer(302, "", "Set-Cookie: crumb=1; Path=/jar\r\nLocation: /jar\r\n");
        } else {
            connection.answer(200, request.header("Cookie"));
        }
    });
    for (const auto& [path, cookie] :
         {std::pair("/set", "crumb=1"), {"/jar/x", "crumb=1"}, {"/", ""}}) {
        EXPECT_EQ(bodyOf(RequestService::syncRequest(requestTo(server.url(path)))), cookie) << path;
    }
}

TEST(RequestService, DecodesWhatTheServerCompressed) {
    TestServer server([](const TestServer::Request& request, Connection& connection) {
        EXPECT_NE(request.header("Accept-Encoding").find("gzip"), std::string::npos);
        static constexpr char packed[] =
            "\x1f\x8b\x08\0\0\0\0\0\0\x03\xcb\x48\xcd\xc9\xc9\x07\0\x86\xa6\x10\x36\x05\0\0";
        connection.answer(200, std::string(packed, sizeof packed), "Content-Encoding: gzip\r\n");
    });
    EXPECT_EQ(bodyOf(RequestService::syncRequest(requestTo(server.url("/")))), "hello");
}

TEST(RequestService, ReportsEveryFailure) {
    TestServer server([&](const TestServer::Request& request, Connection& connection) {
        const std::string& target = request.target;
        if (target == "/stall") {
            connection.stall();
        } else if (target == "/stall-in-body") {
            connection.send("HTTP/1.1 200 x\r\nContent-Length: 9\r\n\r\nhalf");
            connection.stall();
        } else if (target == "/short") {
            connection.send("HTTP/1.1 200 x\r\nContent-Length: 9\r\n\r\nhalf");
        } else if (target == "/short-chunk") {
            connection.send("HTTP/1.1 200 x\r\nTransfer-Encoding: chunked\r\n\r\nFF\r\nhalf");
        } else if (target == "/bad-chunk") {
            connection.send("HTTP/1.1 200 x\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\nhalf\r\n");
        } else if (target == "/bad-length") {
            connection.send("HTTP/1.1 200 x\r\nContent-Length: -5\r\n\r\nhalf");
        } else if (target == "/garbage") {
            connection.send("\x16\x03\x01 this is no answer at all\r\n\r\n");
        } else if (target == "/half-head") {
            connection.send("HTTP/1.1 200 x\r\nContent-");
        } else if (target == "/bad-gzip") {
            connection.send("HTTP/1.1 200 x\r\nContent-Encoding: gzip\r\n\r\nno gzip");
        } else if (target == "/long-head") {
            connection.send("HTTP/1.1 200 x\r\n");
            for (int line = 0; line < 8 << 10; ++line) {
                connection.send("X-" + std::to_string(line) + ": " + std::string(1000, 'x') +
                                "\r\n");
            }
        } else if (target == "/long-line") {
            connection.send("HTTP/1.1 200 x\r\nX: " + std::string(8 << 20, 'x') + "\r\n\r\n");
        } else if (target == "/circle") {
            connection.answer(302, "", "Location: /circle\r\n");
        } else if (target == "/to-file") {
            connection.answer(302, "", "Location: file:///etc/hostname\r\n");
        } else if (target == "/missing") {
            connection.answer(404, "a page");
        }
        connection.close();
    });
    const struct {
        std::string url;
        int code;
        const char* message;
    } cases[] = {
        {"/missing", 404, "not found"},
        {"/stall", -1, "timed out"},
        {"/stall-in-body", -1, "timed out"},
        {"/short", -1, "remaining"},
        {"/short-chunk", -1, "outstanding"},
        {"/bad-chunk", -1, "hex"},
        {"/bad-length", -1, "Content-Length"},
        {"/garbage", -1, "HTTP/0.9"},
        {"/early-close", -1, "Empty reply"},
        {"/half-head", -1, "within the header"},
        {"/bad-gzip", -1, "unencoding"},
        {"/long-head", -1, "header"},
        {"/long-line", -1, "header"},
        {"/circle", -1, "too many HTTP redirects"},
        {"/to-file", -1, "unsupported URL"},
        {"http://127.0.0.1:1/", -1, "connect"},
        {"file:///etc/hostname", -1, "unsupported URL"},
        {"ftp://127.0.0.1/", -1, "unsupported URL"},
        {"no address", -1, "unsupported URL"},
        {"http://", -1, "unsupported URL"},
        {"", -1, "unsupported URL"},
    };
    for (const auto& expected : cases) {
        const bool isPath = expected.url.starts_with("/");
        Request request = requestTo(isPath ? server.url(expected.url) : expected.url);
        request.setTimeout(1);
        const Outcome outcome = outcomeOf(request);
        EXPECT_FALSE(outcome.body) << expected.url;
        EXPECT_EQ(outcome.code, expected.code) << expected.url;
        EXPECT_FALSE(outcome.message.empty()) << expected.url;
        EXPECT_NE(outcome.message.find(expected.message), std::string::npos)
            << expected.url << ": " << outcome.message;
    }
    EXPECT_EQ(outcomeOf(requestTo(server.url("/missing"))).code, 404);
    const Response missing = RequestService::syncRequest(requestTo(server.url("/missing")));
    EXPECT_EQ(bodyOf(missing), "a page");
}

TEST(RequestService, ServesTwoHundredRequestsAtOnce) {
    constexpr int all = 200;
    std::mutex mutex;
    std::condition_variable changed;
    int arrived = 0;
    // The slowest of servers: it answers nobody before everybody has asked.
    TestServer server([&](const TestServer::Request& request, Connection& connection) {
        std::unique_lock lock(mutex);
        ++arrived;
        changed.notify_all();
        changed.wait_for(lock, std::chrono::seconds(60), [&] { return arrived >= all; });
        lock.unlock();
        connection.answer(arrived >= all ? 200 : 500, request.target);
    });
    int answered = 0;
    int failed = 0;
    for (int i = 0; i < all; ++i) {
        const std::string path = "/" + std::to_string(i);
        Request request = requestTo(server.url(path));
        request.setErrorCallback([&](int, const std::string& message) {
            ADD_FAILURE() << message;
            ++failed;
        });
        RequestService::asyncRequest(request, [&, path](const Response& response) {
            EXPECT_EQ(bodyOf(response), path);
            ++answered;
        });
    }
    while (answered + failed < all) {
        platform::drainMainQueue(std::chrono::seconds(1));
    }
    EXPECT_EQ(answered, all);
}

TEST(RequestService, ReportsWithoutAnErrorCallbackToNobody) {
    TestServer server([](const auto&, Connection& connection) { connection.answer(500, ""); });
    std::atomic<bool> wasCalled = false;
    RequestService::asyncRequest(requestTo(server.url("/")),
                                 [&](const Response&) { wasCalled = true; });
    // The main queue is serial: this failure is reported after the other one.
    EXPECT_EQ(outcomeOf(requestTo(server.url("/"))).message, "internal server error");
    EXPECT_FALSE(wasCalled);
}

}  // namespace
}  // namespace orvane::network
