#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "bench/Measure.h"
#include "tests/urlsession/TestServer.h"

namespace bench {

inline constexpr int kRequests = 8000;
inline constexpr int kInFlight = 32;
inline constexpr std::size_t kSmallLength = 100;
inline constexpr std::size_t kLargeLength = std::size_t{256} << 20;

// How one side carries out the scenes. Each function returns when all requests have been answered,
// and aborts when one fails.
struct Client {
    using Work = std::function<void(const std::string& url, int count)>;

    // The caller waits for each answer before it sends the next request.
    Work oneByOne;
    // 32 requests run at the same time: each response starts the next request. The client chooses
    // the thread that receives the responses.
    Work inFlight;
    // The same, but the main thread receives the responses and does nothing else.
    Work toMainThread;
};

// The server of both sides: 100 bytes for "/small" and 256 MiB for "/large".
inline void serve(const TestServer::Request& request, TestServer::Connection& connection) {
    static const std::string small(kSmallLength, 'x');
    static const std::string block(std::size_t{1} << 20, 'x');
    if (request.target != "/large") {
        connection.answer(200, small);
        return;
    }
    connection.send("HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(kLargeLength) +
                    "\r\n\r\n");
    for (std::size_t sent = 0; sent < kLargeLength; sent += block.size()) {
        connection.send(block);
    }
}

inline void runScenes(const Client& client) {
    const TestServer server(serve);
    const std::string small = server.url("/small");
    const auto reportRequests = [&](const char* figure, const Client::Work& work) {
        work(small, 100);
        report("network", figure, 1000 * kRequests / median(9, [&] { work(small, kRequests); }));
    };
    reportRequests("32_at_once_requests_a_second", client.inFlight);
    reportRequests("main_thread_requests_a_second", client.toMainThread);
    reportRequests("one_by_one_requests_a_second", client.oneByOne);
    const double time = median(9, [&] { client.oneByOne(server.url("/large"), 1); });
    report("network", "large_body_megabytes_a_second",
           static_cast<double>(kLargeLength) / 1e3 / time);
}

}  // namespace bench
