#include <gtest/gtest.h>

#include <future>
#include <optional>
#include <string>

#include "TestCertificate.h"
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
};

NSString text(const char* value) {
    return NSString::initWithUTF8String(value).value();
}

NSMutableURLRequest requestTo(const std::string& url) {
    return NSMutableURLRequest::requestWithURL(NSURL::URLWithString(text(url.c_str())));
}

std::future<Outcome> start(NSURLSession& session, const NSMutableURLRequest& request) {
    auto promise = std::make_shared<std::promise<Outcome>>();
    const auto ended = [promise](const NSData& data, const auto&,
                                 const std::optional<NSError>& error) {
        if (error) {
            promise->set_value({{}, error->localizedDescription().UTF8String()});
        } else {
            promise->set_value({std::string(data.bytes(), data.bytes() + data.length()), {}});
        }
    };
    session.dataTaskWithRequest(request, ended)->resume();
    return promise->get_future();
}

NSURLSessionConfiguration configuration() {
    return NSURLSessionConfiguration::defaultSessionConfiguration();
}

NSURLSessionConfiguration trusting(const TestCertificate& certificate) {
    auto result = configuration();
    result.certificateFile = certificate.file();
    return result;
}

TEST(NSURLSession, KeepsItsConnectionsAndAsksAgainWhereOneIsClosedInsteadOfAnswering) {
    for (const int answers : {1, 100}) {
        TestServer server([=](const TestServer::Request& request, Connection& connection) {
            connection.answers() < answers ? answerTarget(request, connection) : connection.close();
        });
        NSURLSession session(configuration());
        for (int i = 0; i < 50; ++i) {
            const auto outcome = start(session, requestTo(server.url("/x"))).get();
            EXPECT_EQ(outcome.body, "/x") << i << ": " << outcome.error;
        }
        EXPECT_EQ(server.connections(), answers == 1 ? 50 : 1);
    }
}

TEST(NSURLSession, SendsNothingOfTheRequestBeforeThatUsedTheSameHandle) {
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
        const std::string sent = start(session, get).get().body.value();
        EXPECT_TRUE(sent.starts_with("GET / ")) << sent;
        EXPECT_TRUE(sent.ends_with("\r\n\r\n")) << sent;
        for (const char* field : {"Content-", "Transfer-Encoding", "X-Own"}) {
            EXPECT_EQ(sent.find(field), std::string::npos) << sent;
        }
        EXPECT_EQ(sent, untouched);
    }
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
        const auto outcome = start(session, requestTo(server.url("/small"))).get();
        ASSERT_TRUE(outcome.body) << outcome.error;
        EXPECT_EQ(outcome.body->size(), 100'000U);
    }
    for (const char* path : {"/large", "/lie"}) {
        const auto outcome = start(session, requestTo(server.url(path))).get();
        EXPECT_NE(outcome.error.find("too large"), std::string::npos) << path << outcome.error;
    }
}

TEST(NSURLSession, AsksTheProxyThatTheSystemNames) {
    TestServer proxy(answerTarget);
    auto settings = configuration();
    settings.proxy = [&](const std::string&) { return proxy.url(""); };
    NSURLSession session(settings);
    EXPECT_EQ(start(session, requestTo("http://example.invalid/x")).get().body,
              "http://example.invalid/x");
}

TEST(NSURLSession, TrustsTheServersThatItsCertificatesVouchFor) {
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
        const auto outcome = start(session, requestTo(server.url("/x"))).get();
        EXPECT_EQ(outcome.body.has_value(), error.empty()) << outcome.error;
        EXPECT_NE(outcome.error.find(error), std::string::npos) << outcome.error;
    }
}

}  // namespace
}  // namespace orvane::platform
