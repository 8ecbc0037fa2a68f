#include "platform/urlsession/NSURLSessionDataTask.h"

#include <utility>

#include "platform/foundation/NSData.h"
#include "platform/urlsession/NSError.h"
#include "platform/urlsession/NSHTTPURLResponse.h"
#include "platform/urlsession/URLSessionThread.h"

namespace orvane::platform {

NSURLSessionDataTask::NSURLSessionDataTask(std::shared_ptr<URLSessionThread> thread,
                                           NSMutableURLRequest request, CompletionHandler handler)
    : thread_(std::move(thread)), request_(std::move(request)), handler_(std::move(handler)) {}

void NSURLSessionDataTask::resume() {
    thread_->submit(shared_from_this());
}

void NSURLSessionDataTask::setCurrentRequest(NSMutableURLRequest request) {
    request_ = std::move(request);
}

void NSURLSessionDataTask::complete(const NSData& data, const NSHTTPURLResponse& response) const {
    handler_(data, response, std::nullopt);
}

void NSURLSessionDataTask::fail(const NSError& error) const {
    handler_(NSData(), std::nullopt, error);
}

}  // namespace orvane::platform
