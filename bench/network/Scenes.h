#pragma once

#include <functional>
#include <string>

#include "bench/Measure.h"
#include "bench/network/LocalServer.h"

namespace bench {

inline constexpr int kRequests = 8000;
inline constexpr int kInFlight = 32;

// What both sides are asked for, as each carries it out. Work returns when every request has been
// answered, and aborts when one has failed.
struct Client {
    using Work = std::function<void(const std::string& url, int count)>;

    // A caller that waits for each.
    Work oneByOne;
    // 32 at once, whoever is told of one asks for the next: told wherever it suits the transfers,
    // ...
    Work inFlight;
    // ... and told on the main thread, which nothing holds up meanwhile.
    Work toMainThread;
};

inline void runScenes(const LocalServer& server, const Client& client) {
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
           static_cast<double>(LocalServer::largeLength) / 1e3 / time);
}

}  // namespace bench
