#include <gtest/gtest.h>

#include <cstdlib>
#include <future>
#include <optional>
#include <string>
#include <vector>

#include "TestAuthority.h"
#include "TestServer.h"
#include "platform/foundation/NSData.h"
#include "platform/foundation/NSError.h"
#include "platform/foundation/NSHTTPURLResponse.h"
#include "platform/foundation/NSURLSession.h"

namespace orvane::platform {
namespace {

using Connection = TestServer::Connection;

void answerTarget(const TestServer::Request& request, Connection& connection) {
    connection.answer(200, request.target);
}

// The body of a whole answer, or the words of the error.
struct Outcome {
    std::optional<std::string> body;
    std::string error;
    std::string contentType;
};

std::future<Outcome> start(NSURLSession& session, const std::string& url, double timeout = 30) {
    auto request = NSMutableURLRequest::requestWithURL(
        NSURL::URLWithString(NSString::initWithUTF8String(url.c_str()).value()));
    request.setTimeoutInterval(timeout);
    auto promise = std::make_shared<std::promise<Outcome>>();
    session
        .dataTaskWithRequest(
            request,
            [promise](const NSData& data, const std::optional<NSHTTPURLResponse>& response,
                      const std::optional<NSError>& error) {
                Outcome outcome;
                if (error) {
                    outcome.error = error->localizedDescription().UTF8String();
                } else {
                    outcome.body.emplace(reinterpret_cast<const char*>(data.bytes()),
                                         data.length());
                    const auto type = NSString::initWithUTF8String("Content-Type").value();
                    const auto& fields = response->allHeaderFields();
                    if (const auto found = fields.find(type); found != fields.end()) {
                        outcome.contentType = found->second.UTF8String();
                    }
                }
                promise->set_value(outcome);
            })
        ->resume();
    return promise->get_future();
}

NSURLSessionConfiguration configuration() {
    return NSURLSessionConfiguration::defaultSessionConfiguration();
}

TEST(NSURL, TakesAddressesThatCanBeSpokenTo) {
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
        {"ftp://h/", nullptr, nullptr},
        {"//h/", nullptr, nullptr},
        {"http://h/\r\nX: y", nullptr, nullptr},
        {"http://h:99999/", nullptr, nullptr},
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

TEST(NSURLSession, KeepsItsConnections) {
    TestServer server(answerTarget);
    NSURLSession session(configuration());
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(start(session, server.url("/x")).get().body, "/x");
    }
    EXPECT_EQ(server.connections(), 1);
}

TEST(NSURLSession, AsksAgainWhereAKeptConnectionIsClosedInsteadOfAnswering) {
    TestServer server([](const TestServer::Request& request, Connection& connection) {
        if (connection.answers() == 0) {
            answerTarget(request, connection);
        } else {
            connection.close();
        }
    });
    NSURLSession session(configuration());
    for (int i = 0; i < 50; ++i) {
        const auto outcome = start(session, server.url("/x")).get();
        EXPECT_EQ(outcome.body, "/x") << i << ": " << outcome.error;
    }
}

TEST(NSURLSession, LetsWaitingTasksHaveTheirTurnWithoutTimingOut) {
    TestServer server([](const TestServer::Request& request, Connection& connection) {
        request.target == "/stall" ? connection.stall() : answerTarget(request, connection);
    });
    auto limited = configuration();
    limited.HTTPMaximumConnectionsPerHost = 1;
    NSURLSession session(limited);
    auto stalled = start(session, server.url("/stall"), 1);
    std::vector<std::future<Outcome>> others;
    for (int i = 0; i < 10; ++i) {
        others.push_back(start(session, server.url("/x"), 1));
    }
    // Another host is not held back.
    auto elsewhere = start(session, server.url("/y", "localhost"));
    EXPECT_EQ(elsewhere.get().body, "/y");
    EXPECT_EQ(stalled.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
    for (auto& other : others) {
        EXPECT_EQ(other.get().body, "/x");
    }
    EXPECT_EQ(stalled.get().error, "The request timed out.");
}

TEST(NSURLSession, BoundsWhatBodiesHold) {
    TestServer server([](const TestServer::Request& request, Connection& connection) {
        const std::string length =
            request.target == "/lie" ? "Content-Length: 9000000000000000000\r\n" : "";
        connection.send("HTTP/1.1 200 x\r\n" + length + "\r\n");
        connection.send(std::string(request.target == "/small" ? 100'000 : 4 << 20, 'x'));
        connection.close();
    });
    auto bounded = configuration();
    bounded.bodyMemory = 1 << 20;
    NSURLSession session(bounded);
    // What a body held is free again after it.
    for (int i = 0; i < 20; ++i) {
        const auto outcome = start(session, server.url("/small")).get();
        ASSERT_TRUE(outcome.body) << outcome.error;
        EXPECT_EQ(outcome.body->size(), 100'000U);
    }
    EXPECT_NE(start(session, server.url("/large")).get().error.find("too large"),
              std::string::npos);
    EXPECT_NE(start(session, server.url("/lie")).get().error.find("too large"), std::string::npos);
}

TEST(NSURLSession, TellsEveryTaskWhenItIsInvalidated) {
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
        EXPECT_EQ(task.get().error, "cancelled");
    }
}

TEST(NSURLSession, AsksTheProxyThatTheEnvironmentNames) {
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

TEST(NSURLSession, TrustsTheServersThatItsAuthorityVouchesFor) {
    using Protocol = TestAuthority::Protocol;
    const TestAuthority authority("Authority");
    const TestAuthority stranger("Stranger");
    const auto right = authority.server("IP:127.0.0.1", Protocol::Http1Unsaid);
    const auto elsewhere = authority.server("DNS:elsewhere.invalid", Protocol::Http1Unsaid);
    const auto unknown = stranger.server("IP:127.0.0.1", Protocol::Http1Unsaid);
    auto trusting = configuration();
    trusting.certificateFile = authority.file();
    NSURLSession session(trusting);
    const struct {
        SSL_CTX* tls;
        const char* error;
    } cases[] = {
        {right.get(), nullptr},
        {elsewhere.get(), "host name"},
        {unknown.get(), "issuer certificate"},
    };
    for (const auto& expected : cases) {
        TestServer server(answerTarget, expected.tls);
        const auto outcome = start(session, server.url("/x")).get();
        EXPECT_EQ(outcome.body.has_value(), expected.error == nullptr) << outcome.error;
        EXPECT_NE(outcome.error.find(expected.error == nullptr ? "" : expected.error),
                  std::string::npos)
            << outcome.error;
    }
    // A handshake that nobody answers.
    TestServer plain(answerTarget);
    auto url = plain.url("/");
    EXPECT_EQ(start(session, url.replace(0, 4, "https"), 1).get().error, "The request timed out.");
}

TEST(NSURLSession, SharesOneConnectionAmongRequestsInHttp2) {
    const TestAuthority authority("Authority");
    const auto tls = authority.server("IP:127.0.0.1", TestAuthority::Protocol::Http2);
    TestServer server(answerTarget, tls.get());
    auto trusting = configuration();
    trusting.certificateFile = authority.file();
    NSURLSession session(trusting);
    std::vector<std::future<Outcome>> tasks;
    for (int i = 0; i < 50; ++i) {
        tasks.push_back(start(session, server.url("/" + std::to_string(i))));
    }
    for (int i = 0; i < 50; ++i) {
        const auto outcome = tasks[static_cast<std::size_t>(i)].get();
        EXPECT_EQ(outcome.body, "GET /" + std::to_string(i)) << outcome.error;
        EXPECT_EQ(outcome.contentType, "text/plain");
    }
    EXPECT_EQ(server.connections(), 1);
}

}  // namespace
}  // namespace orvane::platform
