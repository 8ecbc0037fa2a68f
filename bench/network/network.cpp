// Requests through the runtime's own doors: one by one, a caller that waits; in flight, callers
// that are told on the main thread and ask for the next.
#include <chrono>
#include <cstdlib>

#include "bench/network/Scenes.h"
#include "orvane/network/Request.h"
#include "orvane/network/RequestService.h"
#include "orvane/network/Response.h"
#include "platform/dispatch/dispatch.h"

using orvane::network::Request;
using orvane::network::RequestService;
using orvane::network::Response;

namespace {

void check(const Response& response) {
    if (!response.isOk() || response.getBody().size() < 100) {
        std::abort();
    }
}

Request requestTo(const std::string& url) {
    Request request;
    request.setUrl(url);
    request.setErrorCallback([](int, const std::string&) { std::abort(); });
    return request;
}

void oneByOne(const std::string& url, int count) {
    const Request request = requestTo(url);
    for (int i = 0; i < count; ++i) {
        check(RequestService::syncRequest(request));
    }
}

void inFlight(const std::string& url, int count) {
    const Request request = requestTo(url);
    int started = 0;
    int answered = 0;
    std::function<void()> startNext = [&] {
        if (started < count) {
            ++started;
            RequestService::asyncRequest(request, [&](const Response& response) {
                check(response);
                ++answered;
                startNext();
            });
        }
    };
    for (int i = 0; i < bench::kInFlight; ++i) {
        startNext();
    }
    while (answered < count) {
        orvane::platform::drainMainQueue(std::chrono::seconds(1));
    }
}

}  // namespace

int main() {
    const bench::LocalServer server;
    bench::runScenes(server, {oneByOne, inFlight});
}
