#include "platform/urlsession/NSURLSession.h"

#include <curl/curl.h>

#include <cstdlib>
#include <utility>

#include "platform/urlsession/URLSessionThread.h"

namespace orvane::platform {

namespace {

// The session is never destroyed, because a background worker may still use it while the process
// exits. An exit handler ends its thread. It is registered after that of the TLS library, so it
// runs before that library cleans up.
NSURLSession* makeSharedSession() {
    auto* session = new NSURLSession(NSURLSessionConfiguration::defaultSessionConfiguration());
    std::atexit([] { NSURLSession::sharedSession().invalidateAndCancel(); });
    return session;
}

}  // namespace

NSURLSession& NSURLSession::sharedSession() {
    static NSURLSession* const session = makeSharedSession();
    return *session;
}

NSURLSession::NSURLSession(const NSURLSessionConfiguration& configuration) {
    static const CURLcode initialized = curl_global_init(CURL_GLOBAL_ALL);
    static_cast<void>(initialized);
    thread_ = std::make_shared<URLSessionThread>(configuration);
}

NSURLSession::~NSURLSession() {
    invalidateAndCancel();
}

std::shared_ptr<NSURLSessionDataTask> NSURLSession::dataTaskWithRequest(
    NSMutableURLRequest request, NSURLSessionDataTask::CompletionHandler handler) {
    return std::make_shared<NSURLSessionDataTask>(thread_,
                                                  URLTask{std::move(request), std::move(handler)});
}

void NSURLSession::invalidateAndCancel() {
    thread_->cancel();
}

}  // namespace orvane::platform
