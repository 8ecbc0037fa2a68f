// Measures requests through RequestService, and through the URL session that it uses.
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <optional>

#include "bench/network/Scenes.h"
#include "orvane/network/Request.h"
#include "orvane/network/RequestService.h"
#include "orvane/network/Response.h"
#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSData.h"
#include "platform/urlsession/NSError.h"
#include "platform/urlsession/NSHTTPURLResponse.h"
#include "platform/urlsession/NSURLSession.h"

using orvane::network::Request;
using orvane::network::RequestService;
using orvane::network::Response;
namespace platform = orvane::platform;

namespace {

void check(bool isRight) {
    if (!isRight) {
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
        const Response response = RequestService::syncRequest(request);
        check(response.isOk() && response.getBody().size() >= bench::kSmallLength);
    }
}

void inFlight(const std::string& url, int count) {
    const auto request =
        platform::NSMutableURLRequest::requestWithURL(platform::NSURL::URLWithString(
            platform::NSString::initWithUTF8String(url.c_str()).value()));
    std::atomic<int> started = 0;
    std::atomic<int> answered = 0;
    platform::DispatchSemaphore allAnswered(0);
    const std::function<void()> startNext = [&] {
        if (started++ < count) {
            platform::NSURLSession::sharedSession()
                .dataTaskWithRequest(request,
                                     [&](const platform::NSData& data,
                                         const std::optional<platform::NSHTTPURLResponse>&,
                                         const std::optional<platform::NSError>& error) {
                                         check(!error && data.length() >= bench::kSmallLength);
                                         startNext();
                                         if (++answered == count) {
                                             allAnswered.signal();
                                         }
                                     })
                ->resume();
        }
    };
    for (int i = 0; i < bench::kInFlight; ++i) {
        startNext();
    }
    allAnswered.wait();
}

void toMainThread(const std::string& url, int count) {
    const Request request = requestTo(url);
    int started = 0;
    int answered = 0;
    const std::function<void()> startNext = [&] {
        if (started++ < count) {
            RequestService::asyncRequest(request, [&](const Response& response) {
                check(response.getBody().size() >= bench::kSmallLength);
                ++answered;
                startNext();
            });
        }
    };
    for (int i = 0; i < bench::kInFlight; ++i) {
        startNext();
    }
    while (answered < count) {
        platform::drainMainQueue(std::chrono::seconds(1));
    }
}

}  // namespace

int main() {
    bench::runScenes({oneByOne, inFlight, toMainThread});
}
