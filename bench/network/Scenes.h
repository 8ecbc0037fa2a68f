#pragma once

#include "bench/Measure.h"
#include "bench/network/LocalServer.h"

namespace bench {

inline constexpr int kSequentialRequests = 4000;
inline constexpr int kParallelRequests = 20000;
inline constexpr int kInFlight = 32;

// What both sides are asked for, as each carries it out. The work returns when all requests have
// been answered, and aborts when one has failed.
struct Client {
    std::function<void(const std::string& url, int count)> oneByOne;
    std::function<void(const std::string& url, int count)> inFlight;
};

inline void runScenes(const LocalServer& server, const Client& client) {
    const auto rate = [](double amount, double time) { return amount / time * 1000; };
    const std::string small = server.url("/small");
    const std::string large = server.url("/large");
    client.oneByOne(small, 100);
    report(
        "network", "one_by_one_requests_a_second",
        rate(kSequentialRequests, median(5, [&] { client.oneByOne(small, kSequentialRequests); })));
    report("network", "32_in_flight_requests_a_second",
           rate(kParallelRequests, median(5, [&] { client.inFlight(small, kParallelRequests); })));
    report("network", "large_body_megabytes_a_second",
           rate(static_cast<double>(LocalServer::largeLength) / 1e6,
                median(5, [&] { client.oneByOne(large, 1); })));
}

}  // namespace bench
