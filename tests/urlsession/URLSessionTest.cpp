#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <future>
#include <optional>
#include <semaphore>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/foundation/NSData.h"
#include "platform/urlsession/NSError.h"
#include "platform/urlsession/NSHTTPURLResponse.h"
#include "platform/urlsession/NSURLSession.h"
#include "tests/urlsession/TestCertificate.h"
#include "tests/urlsession/TestServer.h"

namespace orvane::platform {
namespace {

using Connection = TestServer::Connection;

void answerTarget(const TestServer::Request& request, Connection& connection) {
    connection.answer(200, request.target);
}

// The body of a complete response, or the text of the error.
struct Outcome {
    std::optional<std::string> body;
    std::string error;
    std::string contentType;
};

NSString text(const char* utf8) {
    return NSString::initWithUTF8String(utf8).value();
}

NSMutableURLRequest requestTo(const std::string& url) {
    return NSMutableURLRequest::requestWithURL(NSURL::URLWithString(text(url.c_str())));
}

std::future<Outcome> start(NSURLSession& session, const NSMutableURLRequest& request) {
    auto promise = std::make_shared<std::promise<Outcome>>();
    const auto ended = [promise](const NSData& data,
                                 const std::optional<NSHTTPURLResponse>& response,
                                 const std::optional<NSError>& error) {
        if (error) {
            promise->set_value({{}, error->localizedDescription().UTF8String(), {}});
            return;
        }
        NSHTTPURLResponse::HeaderFields fields = response->allHeaderFields();
        promise->set_value({std::string(data.bytes(), data.bytes() + data.length()),
                            {},
                            fields[text("Content-Type")].UTF8String()});
    };
    session.dataTaskWithRequest(request, ended)->resume();
    return promise->get_future();
}

std::future<Outcome> start(NSURLSession& session, const std::string& url, double timeout = 60) {
    auto request = requestTo(url);
    request.setTimeoutInterval(timeout);
    return start(session, request);
}

NSURLSessionConfiguration configuration() {
    return NSURLSessionConfiguration::defaultSessionConfiguration();
}

NSURLSessionConfiguration trusting(const TestCertificate& certificate) {
    auto result = configuration();
    result.certificateFile = certificate.file();
    return result;
}

TEST(NSURL, AcceptsHttpAddressesOnly) {
    const struct {
        const char* text;
        const char* absolute;
        const char* origin;
    } cases[] = {
        {"http://Host/a", "http://Host/a", "http://host:80"},
        {"HTTPS://h:444", "https://h:444/", "https://h:444"},
        {"http://h/a b?c d", "http://h/a%20b?c+d", "http://h:80"},
        {"http://h/\xC3\xA9?%20", "http://h/%c3%a9?%20", "http://h:80"},
        {"http://u:p@[::1]/", "http://u:p@[::1]/", "http://[::1]:80"},
        {"//h/", nullptr, nullptr},
        {"http://h/\r\nX: y", nullptr, nullptr},
    };
    for (const auto& [text, absolute, origin] : cases) {
        const auto url = NSURL::URLWithString(NSString::initWithUTF8String(text).value());
        ASSERT_EQ(url.has_value(), absolute != nullptr) << text;
        if (url) {
            EXPECT_EQ(url->absoluteString(), absolute);
            EXPECT_EQ(url->origin(), origin);
        }
    }
}

TEST(NSURLSession, KeepsConnectionsAndRepeatsARequestOnANewOneIfTheServerClosedIt) {
    for (const int answers : {1, 100}) {
        TestServer server([=](const TestServer::Request& request, Connection& connection) {
            connection.answers() < answers ? answerTarget(request, connection) : connection.close();
        });
        NSURLSession session(configuration());
        for (int i = 0; i < 50; ++i) {
            const auto outcome = start(session, server.url("/x")).get();
            EXPECT_EQ(outcome.body, "/x") << i << ": " << outcome.error;
        }
        EXPECT_EQ(server.connections(), answers == 1 ? 50 : 1);
    }
}

TEST(NSURLSession, SendsNothingOfAnEarlierRequest) {
    TestServer server([](const TestServer::Request& request, Connection& connection) {
        connection.answer(200, request.head + "\r\n" + request.body);
    });
    NSURLSession session(configuration());
    const auto get = requestTo(server.url("/"));
    const auto untouched = start(session, get).get().body;
    auto post = get;
    post.setHTTPMethod("POST");
    post.setValueForHTTPHeaderField(text("t/s"), text("Content-Type"));
    post.setValueForHTTPHeaderField(text("1"), text("X-Own"));
    post.setHTTPBody(NSData::dataWithBytes("body", 4));
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(start(session, post).get().body.value().ends_with("\r\n\r\nbody"));
        EXPECT_EQ(start(session, get).get().body, untouched);
    }
}

TEST(NSURLSession, DoesNotCountTheTimeOfWaitingTasksAsTimeOut) {
    std::binary_semaphore held(0);
    TestServer server([&](const TestServer::Request& request, Connection& connection) {
        if (request.target == "/held") {
            held.acquire();
        }
        answerTarget(request, connection);
    });
    auto limited = configuration();
    limited.HTTPMaximumConnectionsPerHost = 1;
    NSURLSession session(limited);
    auto first = start(session, server.url("/held"));
    constexpr int timeout = 2;
    std::vector<std::future<Outcome>> others;
    for (int i = 0; i < 10; ++i) {
        others.push_back(start(session, server.url("/x"), timeout));
    }
    // Requests to another host do not wait.
    EXPECT_EQ(start(session, server.url("/y", "localhost")).get().body, "/y");
    // The tasks wait for longer than their time-out.
    std::this_thread::sleep_for(std::chrono::milliseconds(timeout * 1100));
    held.release();
    EXPECT_EQ(first.get().body, "/held");
    for (auto& other : others) {
        const auto outcome = other.get();
        EXPECT_EQ(outcome.body, "/x") << outcome.error;
    }
}

TEST(NSURLSession, LimitsTheMemoryOfBodiesAndChargesOnlyWhatArrived) {
    std::counting_semaphore<> hasAnnounced(0);
    TestServer server([&](const TestServer::Request& request, Connection& connection) {
        const std::string length =
            request.target == "/small" ? "" : "Content-Length: 9000000000000000000\r\n";
        connection.send("HTTP/1.1 200 x\r\n" + length + "\r\n");
        if (request.target == "/announce") {
            connection.send("x");
            hasAnnounced.release();
            connection.stall();
            return;
        }
        connection.send(std::string(request.target == "/small" ? 100'000 : 4 << 20, 'x'));
        connection.close();
    });
    auto bounded = configuration();
    bounded.bodyMemory = 1 << 20;
    NSURLSession session(bounded);
    std::vector<std::future<Outcome>> announced;
    for (int i = 0; i < 8; ++i) {
        announced.push_back(start(session, server.url("/announce")));
        hasAnnounced.acquire();
    }
    // The memory of a body is available again after its task has ended.
    for (int i = 0; i < 20; ++i) {
        const auto outcome = start(session, server.url("/small")).get();
        ASSERT_TRUE(outcome.body) << outcome.error;
        EXPECT_EQ(outcome.body->size(), 100'000U);
    }
    const auto outcome = start(session, server.url("/large")).get();
    EXPECT_NE(outcome.error.find("too large"), std::string::npos) << outcome.error;
}

TEST(NSURLSession, CountsTheBytesOfUnfinishedHeaderLinesAsActivityButNotThoseOfChunkLengths) {
    TestServer server([](const TestServer::Request& request, Connection& connection) {
        std::string slow = "HTTP/1.1 200 x\r\n\r\n";
        if (request.target == "/chunk") {
            connection.send("HTTP/1.1 200 x\r\nTransfer-Encoding: chunked\r\n\r\n1;");
            slow = std::string(30, 'x') + "\r\nx\r\n0\r\n\r\n";
        }
        for (const char byte : slow) {
            connection.send({byte});
            std::this_thread::sleep_for(std::chrono::milliseconds(80));
        }
        connection.close();
    });
    NSURLSession session(configuration());
    EXPECT_EQ(start(session, server.url("/"), 1).get().error, "");
    EXPECT_EQ(start(session, server.url("/chunk"), 1).get().error, "The request timed out.");
}

TEST(NSURLSession, ServesOtherRequestsWhileAProxyIsLookedUp) {
    TestServer proxy(answerTarget);
    TestServer server([](const TestServer::Request& request, Connection& connection) {
        connection.answer(request.target == "/away" ? 302 : 200, "direct",
                          "Location: http://slow.invalid/x\r\n");
    });
    std::binary_semaphore isAsked(0);
    std::binary_semaphore mayAnswer(0);
    auto settings = configuration();
    settings.proxy = [&](const std::string& url) {
        if (url.find("slow.invalid") == std::string::npos) {
            return std::string();
        }
        isAsked.release();
        mayAnswer.acquire();
        return proxy.url("");
    };
    NSURLSession session(settings);
    auto redirected = start(session, server.url("/away"));
    isAsked.acquire();
    auto other = start(session, server.url("/"));
    EXPECT_EQ(other.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    mayAnswer.release();
    EXPECT_EQ(other.get().body, "direct");
    EXPECT_EQ(redirected.get().body, "http://slow.invalid/x");
}

TEST(NSURLSession, FailsEveryTaskWhenItIsInvalidated) {
    TestServer server([](const auto&, Connection& connection) { connection.stall(); });
    auto limited = configuration();
    limited.HTTPMaximumConnectionsPerHost = 2;
    NSURLSession session(limited);
    std::vector<std::future<Outcome>> tasks;
    for (int i = 0; i < 5; ++i) {
        tasks.push_back(start(session, server.url("/")));
    }
    session.invalidateAndCancel();
    tasks.push_back(start(session, server.url("/")));
    for (auto& task : tasks) {
        EXPECT_EQ(task.get().error, "The request was canceled.");
    }
}

TEST(NSURLSession, UsesTheProxyOfTheEnvironment) {
    TestServer proxy(answerTarget);
    TestServer server(answerTarget);
    setenv("http_proxy", proxy.url("").c_str(), 1);
    setenv("no_proxy", "localhost", 1);
    NSURLSession session(configuration());
    EXPECT_EQ(start(session, "http://example.invalid/x").get().body, "http://example.invalid/x");
    EXPECT_EQ(start(session, server.url("/x", "localhost")).get().body, "/x");
    unsetenv("http_proxy");
    unsetenv("no_proxy");
}

TEST(NSURLSession, TrustsServersWithAValidCertificateOnly) {
    const TestCertificate right("IP:127.0.0.1");
    const TestCertificate stranger("IP:127.0.0.1");
    const TestCertificate elsewhere("DNS:elsewhere.invalid");
    const struct {
        const TestCertificate& shown;
        const TestCertificate& trusted;
        std::string error;
    } cases[] = {
        {right, right, ""},
        {elsewhere, elsewhere, "host name"},
        {stranger, right, "self-signed certificate"},
    };
    for (const auto& [shown, trusted, error] : cases) {
        NSURLSession session(trusting(trusted));
        TestServer server(answerTarget, shown.server());
        const auto outcome = start(session, server.url("/x")).get();
        EXPECT_EQ(outcome.body.has_value(), error.empty()) << outcome.error;
        EXPECT_NE(outcome.error.find(error), std::string::npos) << outcome.error;
    }
    // The handshake is not answered.
    TestServer plain(answerTarget);
    NSURLSession session(configuration());
    auto url = plain.url("/");
    EXPECT_EQ(start(session, url.replace(0, 4, "https"), 1).get().error, "The request timed out.");
}

TEST(NSURLSession, SharesAConnectionAmongRequestsOverHttp2) {
    const TestCertificate certificate("IP:127.0.0.1", TestCertificate::Protocol::Http2);
    TestServer server(nullptr, certificate.server());
    NSURLSession session(trusting(certificate));
    std::vector<std::future<Outcome>> tasks;
    for (int i = 0; i < 50; ++i) {
        tasks.push_back(start(session, server.url("/")));
    }
    std::set<std::string> streams;
    for (auto& task : tasks) {
        streams.insert(task.get().contentType);
    }
    EXPECT_EQ(streams.size(), tasks.size());
    EXPECT_EQ(server.connections(), 1);
}

}  // namespace
}  // namespace orvane::platform
