#include "platform/urlsession/NSURLSession.h"

#include <cstdlib>
#include <utility>

#include "platform/urlsession/CurlLibrary.h"
#include "platform/urlsession/URLSessionThread.h"

namespace orvane::platform {

NSURLSession& NSURLSession::sharedSession() {
    // Never destroyed, because a background worker may still use it while the process exits.
    static auto* const session =
        new NSURLSession(NSURLSessionConfiguration::defaultSessionConfiguration());
    return *session;
}

NSURLSession::NSURLSession(const NSURLSessionConfiguration& configuration)
    : configuration_(configuration), thread_(std::make_shared<URLSessionThread>(configuration)) {}

NSURLSession::~NSURLSession() {
    invalidateAndCancel();
}

std::shared_ptr<NSURLSessionDataTask> NSURLSession::dataTaskWithRequest(
    NSMutableURLRequest request, NSURLSessionDataTask::CompletionHandler handler) {
    // An exit handler ends the thread of the shared session. It is registered after that of the TLS
    // library, so it runs before that library cleans up.
    static const bool isRegistered =
        CurlLibrary::instance() != nullptr &&
        std::atexit([] { sharedSession().invalidateAndCancel(); }) == 0;
    static_cast<void>(isRegistered);
    return std::make_shared<NSURLSessionDataTask>(thread(),
                                                  URLTask{std::move(request), std::move(handler)});
}

void NSURLSession::invalidateAndCancel() {
    std::shared_ptr<URLSessionThread> cancelled;
    {
        const std::scoped_lock lock(mutex_);
        isInvalidated_ = true;
        cancelled = thread_;
    }
    cancelled->cancel();
}

void NSURLSession::renew() {
    const std::scoped_lock lock(mutex_);
    if (isInvalidated_) {
        thread_ = std::make_shared<URLSessionThread>(configuration_);
        isInvalidated_ = false;
    }
}

std::shared_ptr<URLSessionThread> NSURLSession::thread() {
    const std::scoped_lock lock(mutex_);
    return thread_;
}

}  // namespace orvane::platform
