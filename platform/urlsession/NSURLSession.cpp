#include "platform/urlsession/NSURLSession.h"

#include <curl/curl.h>

#include <cstdlib>
#include <utility>

#include "platform/urlsession/URLSessionThread.h"

namespace orvane::platform {

namespace {

// Never destroyed: a background worker may still ask for the session while the process ends. Its
// thread ends in an exit handler, registered after the TLS library's own, so that it runs before
// that library goes away under the transfers.
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
    // Once for the process, whichever session is first.
    static const CURLcode initialised = curl_global_init(CURL_GLOBAL_ALL);
    static_cast<void>(initialised);
    thread_ = std::make_shared<URLSessionThread>(configuration);
}

NSURLSession::~NSURLSession() {
    invalidateAndCancel();
}

std::shared_ptr<NSURLSessionDataTask> NSURLSession::dataTaskWithRequest(
    NSMutableURLRequest request, NSURLSessionDataTask::CompletionHandler handler) {
    return std::make_shared<NSURLSessionDataTask>(
        thread_, URLTask{std::move(request), std::move(handler), {}});
}

void NSURLSession::invalidateAndCancel() {
    thread_->cancel();
}

}  // namespace orvane::platform
