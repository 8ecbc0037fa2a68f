#include "orvane/network/RequestService.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <latch>
#include <map>
#include <optional>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <thread>

#include "orvane/network/Request.h"
#include "orvane/network/Response.h"
#include "orvane/network/convert.h"
#include "platform/dispatch/dispatch.h"
#include "tests/urlsession/TestServer.h"

namespace orvane::network {
namespace {

using Connection = TestServer::Connection;

// Answers with the bytes of the request.
void echo(const TestServer::Request& request, Connection& connection) {
    connection.answer(200, request.head + "\r\n" + request.body);
}

std::string bodyOf(const Response& response) {
    return {reinterpret_cast<const char*>(response.getBody().data()), response.getBody().size()};
}

// "hello", compressed with gzip.
std::string packedHello() {
    static constexpr char bytes[] =
        "\x1f\x8b\x08\0\0\0\0\0\0\x03\xcb\x48\xcd\xc9\xc9\x07\0\x86\xa6\x10\x36\x05\0\0";
    return {bytes, sizeof bytes};
}

Request requestTo(const std::string& url, RequestMethod method = RequestMethod::GET) {
    Request request;
    request.setUrl(url);
    request.setMethod(method);
    return request;
}

// Sends the request asynchronously and drains the main queue until a callback has been called.
// Returns what was passed to the error callback.
std::pair<int, std::string> failureOf(Request request) {
    std::optional<std::pair<int, std::string>> failure;
    request.setErrorCallback([&](int code, const std::string& message) {
        EXPECT_TRUE(platform::isMainThread());
        failure.emplace(code, message);
    });
    RequestService::asyncRequest(request, [&](const Response& response) {
        failure.emplace(response.getStatusCode(), "no failure");
    });
    while (!failure) {
        platform::drainMainQueue(std::chrono::seconds(1));
    }
    return *failure;
}

// Sends the request to a server that echoes and returns what the server received.
TestServer::Request sentBy(const Request& request) {
    const std::string echoed = bodyOf(RequestService::syncRequest(request));
    const auto end = echoed.find("\r\n\r\n");
    return {"", echoed.substr(0, end + 2), echoed.substr(end + 4)};
}

TEST(RequestService, SendsMethodBodyAndHeaders) {
    TestServer server(echo);
    static const std::string bytes("\0\xFF\r\n", 4);
    static const auto byteArray = commons::ByteArray::createFromArray(
        reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    using Method = RequestMethod;
    const struct {
        Method method;
        void (*change)(Request&);
        std::string sent;  // Request line|type|length|body.
    } cases[] = {
        {Method::GET, [](Request& r) { r.addParam("q", "a b"); }, "GET /p?q=a+b HTTP/1.1|||"},
        {static_cast<Method>(17), [](Request&) {}, "GET /p HTTP/1.1|||"},
        {Method::HEADER, [](Request&) {}, "HEADER /p HTTP/1.1|||"},
        {Method::DELETE, [](Request&) {}, "DELETE /p HTTP/1.1|||"},
        {Method::POST, [](Request&) {}, "POST /p HTTP/1.1||0|"},
        {Method::POST, [](Request& r) { r.addFormContent("a=b c"); },
         "POST /p HTTP/1.1|application/x-www-form-urlencoded|5|a=b+c"},
        {Method::PUT,
         [](Request& r) {
             r.addHeader("content-type", "replaced");
             r.addHeader("Content-Length", "99");
             r.addByteContent(byteArray, "image", "png", "x=y");
         },
         "PUT /p HTTP/1.1|image/png; x=y|4|" + bytes},
        {Method::GET, [](Request& r) { r.addJsonContent("{}"); },
         "GET /p HTTP/1.1|application/json|2|{}"},
        // Of several parts none is sent.
        {Method::POST,
         [](Request& r) {
             r.addTextContent("one");
             r.addByteContent(byteArray, "a", "b", "");
         },
         "POST /p HTTP/1.1||0|"},
    };
    for (const auto& [method, change, sent] : cases) {
        Request request = requestTo(server.url("/p"), method);
        change(request);
        const TestServer::Request seen = sentBy(request);
        EXPECT_EQ(seen.head.substr(0, seen.head.find("\r\n")) + "|" + seen.header("Content-Type") +
                      "|" + seen.header("Content-Length") + "|" + seen.body,
                  sent);
        EXPECT_EQ(seen.header("Expect"), "");
    }
}

TEST(RequestService, AuthorizesIfNameAndPasswordAreGiven) {
    TestServer server(echo);
    const struct {
        const char* login;
        const char* password;
        const char* sent;
    } cases[] = {
        {"Aladdin", "open sesame", "Basic QWxhZGRpbjpvcGVuIHNlc2FtZQ=="},
        {"\xE9", "x", "Basic w6k6eA=="},
        {"Aladdin", "", ""},
        {"", "open sesame", ""},
    };
    for (const auto& [login, password, sent] : cases) {
        Request request = requestTo(server.url("/"));
        request.setBasicAuthorization(login, password);
        EXPECT_EQ(sentBy(request).header("Authorization"), sent);
        request.addHeader("authorization", "Bearer t");
        EXPECT_EQ(sentBy(request).header("Authorization"), "");
        EXPECT_EQ(sentBy(request).header("authorization"), "Bearer t");
    }
    // Credentials in an address are sent for that address only.
    for (const auto& [host, sent] : {std::pair("u:p@127.0.0.1", "Basic dTpw"), {"127.0.0.1", ""}}) {
        EXPECT_EQ(sentBy(requestTo(server.url("/", host))).header("Authorization"), sent);
    }
}

TEST(RequestService, DropsFieldsThatWouldAddOthers) {
    TestServer server(echo);
    const std::pair<std::string, std::string> fields[] = {{"X-A", "1\r\nEvil: 1"},
                                                          {"X-A", "1\n"},
                                                          {"X-A: 1\r\nEvil", "1"},
                                                          {"X A", "1"},
                                                          {"", "Evil"}};
    for (const auto& [name, value] : fields) {
        Request request = requestTo(server.url("/"));
        request.addHeader(name, value);
        request.addHeader("Kept", " ");
        testing::internal::CaptureStderr();
        const std::string seen = sentBy(request).head;
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_EQ(seen.find("Evil"), std::string::npos) << seen;
        EXPECT_EQ(seen.find("X"), std::string::npos) << seen;
        EXPECT_NE(seen.find("\r\nKept:\r\n"), std::string::npos) << seen;
        EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
    }
}

TEST(RequestService, KeepsTheBytesOfHeadersAndDecodesKnownEncodings) {
    TestServer server([](const TestServer::Request& request, Connection& connection) {
        EXPECT_NE(request.header("Accept-Encoding").find("gzip"), std::string::npos);
        // A gzip body may have several parts, and zeros behind the last one.
        const bool isGzip = request.target == "/gzip";
        connection.answer(200, packedHello() + (isGzip ? packedHello() + '\0' : ""),
                          "X-Latin: \xE9\r\nX-Utf: \xC3\xA9\xE2\x82\xAC\r\ncontent-TYPE: t/s\r\n"
                          "X-List: a=1\r\nx-list: b=2\r\nX-Empty: \r\nContent-Encoding: " +
                              request.target.substr(1) + "\r\n");
    });
    const Response response = RequestService::syncRequest(requestTo(server.url("/gzip")));
    EXPECT_EQ(bodyOf(response), "hellohello");
    EXPECT_EQ(bodyOf(RequestService::syncRequest(requestTo(server.url("/unknown")))),
              packedHello());
    const auto& headers = response.getHeaders();
    EXPECT_EQ(headers.at("X-Latin"), "\xE9");
    EXPECT_EQ(headers.at("X-Utf"), "\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(headers.at("Content-Type"), "t/s");
    EXPECT_EQ(headers.at("X-List"), "a=1, b=2");
    EXPECT_EQ(headers.at("X-Empty"), "");
}

TEST(Convert, ReadsUtf8OrLatin1AndReturnsLatin1) {
    EXPECT_EQ(convert(convert(std::string("\xC3\xA9"))), "\xE9");
    EXPECT_EQ(convert(convert(std::string("\xE2\x82\xAC"))), "");
}

TEST(RequestService, FollowsRedirectionsAsBrowsersDo) {
    TestServer other(echo);
    TestServer server([&](const TestServer::Request& request, Connection& connection) {
        if (request.target == "/200") {
            echo(request, connection);
            return;
        }
        const bool leaves = request.target.ends_with("other");
        connection.answer(std::stoi(request.target.substr(1)), "not this",
                          "Location: " + (leaves ? other.url("/200") : "/200") + "\r\n");
    });
    const struct {
        std::string path;
        RequestMethod method;
        std::string line;
        std::string body;
    } cases[] = {
        {"/301", RequestMethod::POST, "GET /200", ""},
        {"/302", RequestMethod::POST, "GET /200", ""},
        {"/302", RequestMethod::PUT, "PUT /200", "text"},
        {"/303", RequestMethod::PUT, "GET /200", ""},
        {"/307", RequestMethod::POST, "POST /200", "text"},
        {"/308", RequestMethod::POST, "POST /200", "text"},
        {"/308/other", RequestMethod::POST, "POST /200", "text"},
    };
    for (const auto& [path, method, line, body] : cases) {
        SCOPED_TRACE(path);
        Request request = requestTo(server.url(path), method);
        request.setBasicAuthorization("name", "secret");
        request.addHeader("Cookie", "own=1");
        request.addTextContent("text");
        const TestServer::Request seen = sentBy(request);
        EXPECT_TRUE(seen.head.starts_with(line)) << seen.head;
        EXPECT_EQ(seen.body, body);
        EXPECT_EQ(seen.header("Content-Type").empty(), body.empty());
        EXPECT_EQ(seen.header("Authorization").empty(), path.ends_with("other"));
        EXPECT_EQ(seen.header("Cookie").empty(), path.ends_with("other"));
    }
    // A 300 is not followed, even with a location.
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

TEST(RequestService, ReportsEveryFailure) {
    const std::string ok = "HTTP/1.1 200 x\r\n";
    const auto head = [&](int lines, const std::string& line) {
        std::string result = ok;
        for (int i = 0; i < lines; ++i) {
            result += line;
        }
        return result + "\r\n";
    };
    const std::string gzip = "Content-Encoding: gzip\r\n\r\n";
    struct Answer {
        std::string bytes;
        const char* message;
        bool stalls = false;
    };
    const std::map<std::string, Answer> answers = {
        {"/stall", {"", "timed out", true}},
        {"/stall-in-body", {ok + "Content-Length: 9\r\n\r\nhalf", "timed out", true}},
        {"/short", {ok + "Content-Length: 9\r\n\r\nhalf", "remaining"}},
        {"/garbage", {"\x16\x03\x01 this is no answer at all\r\n\r\n", "HTTP/0.9"}},
        {"/half-head", {ok + "Content-", "within the header"}},
        {"/cut-gzip", {ok + gzip + packedHello().substr(0, 20), "incomplete"}},
        {"/bad-gzip", {ok + gzip + "no gzip", "damaged"}},
        {"/long-head", {head(8 << 10, "X: " + std::string(1000, 'x') + "\r\n"), "header"}},
        {"/many-lines", {head(60'000, "X:\r\n"), "header"}},
        {"/long-line", {head(1, "X: " + std::string(8 << 20, 'x') + "\r\n"), "header"}},
        {"/circle", {"HTTP/1.1 302 x\r\nLocation: /circle\r\n\r\n", "too many HTTP redirects"}},
        {"/to-file", {"HTTP/1.1 302 x\r\nLocation: file:///etc/hostname\r\n\r\n", "unsupported"}},
    };
    TestServer server([&](const TestServer::Request& request, Connection& connection) {
        const Answer& answer = answers.at(request.target);
        connection.send(answer.bytes);
        if (answer.stalls) {
            connection.stall();
        }
        connection.close();
    });
    const auto expectFailure = [](const Request& request, const std::string& message) {
        const auto [code, text] = failureOf(request);
        EXPECT_EQ(code, -1) << request.getUrl();
        EXPECT_NE(text.find(message), std::string::npos) << request.getUrl() << ": " << text;
    };
    for (const auto& [path, answer] : answers) {
        Request request = requestTo(server.url(path));
        // The others must not fail because of a slow machine.
        if (answer.stalls) {
            request.setTimeout(1);
        }
        expectFailure(request, answer.message);
    }
    expectFailure(requestTo("http://127.0.0.1:1/"), "connect");
    for (const char* url :
         {"file:///etc/hostname", "ftp://127.0.0.1/", "no address", "http://", ""}) {
        expectFailure(requestTo(url), "unsupported URL");
    }
}

TEST(RequestService, ReportsTheStatusOfAFailureAndKeepsItsBody) {
    TestServer server(
        [](const auto&, Connection& connection) { connection.answer(404, "a page"); });
    const Request request = requestTo(server.url("/"));
    // Without an error callback no function is called.
    RequestService::asyncRequest(request, [](const Response&) { ADD_FAILURE(); });
    EXPECT_EQ(failureOf(request), std::pair(404, std::string("not found")));
    EXPECT_EQ(bodyOf(RequestService::syncRequest(request)), "a page");
}

TEST(RequestService, LogsWhatACallbackThrows) {
    TestServer server(echo);
    bool isCalled = false;
    testing::internal::CaptureStderr();
    RequestService::asyncRequest(requestTo(server.url("/")), [&](const Response&) {
        isCalled = true;
        throw std::runtime_error("thrown by the callback");
    });
    while (!isCalled) {
        platform::drainMainQueue(std::chrono::seconds(1));
    }
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_NE(log.find("thrown by the callback"), std::string::npos) << log;
}

TEST(RequestService, ServesTwoHundredRequestsAtOnce) {
    constexpr int all = 200;
    std::latch arrived(all);
    // The server answers when all requests have arrived.
    TestServer server([&](const TestServer::Request& request, Connection& connection) {
        arrived.arrive_and_wait();
        connection.answer(200, request.target);
    });
    int ended = 0;
    for (int i = 0; i < all; ++i) {
        const std::string path = "/" + std::to_string(i);
        RequestService::asyncRequest(requestTo(server.url(path)), [&, path](const Response& r) {
            EXPECT_TRUE(platform::isMainThread());
            EXPECT_EQ(bodyOf(r), path);
            ++ended;
        });
    }
    while (ended < all) {
        platform::drainMainQueue(std::chrono::seconds(1));
    }
}

TEST(RequestServiceDeathTest, TheProcessExitsWhileRequestsAreRunning) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto leave = [] {
        alarm(60);
        constexpr int count = 20;
        // Static objects are destroyed in reverse order, so these outlive the session.
        static std::counting_semaphore<> arrived(0);
        static TestServer server([](const auto&, Connection& connection) {
            arrived.release();
            connection.stall();
        });
        const Request request = requestTo(server.url("/"));
        for (int i = 0; i < count; ++i) {
            RequestService::asyncRequest(request, [](const Response&) {});
        }
        std::thread([request] {
            static_cast<void>(RequestService::syncRequest(request));
        }).detach();
        for (int i = 0; i <= count; ++i) {
            arrived.acquire();
        }
        std::exit(0);
    };
    EXPECT_EXIT(leave(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace orvane::network
