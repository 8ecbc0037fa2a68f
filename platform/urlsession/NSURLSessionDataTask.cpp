#include "platform/urlsession/NSURLSessionDataTask.h"

#include <utility>

#include "platform/urlsession/URLSessionThread.h"

namespace orvane::platform {

NSURLSessionDataTask::NSURLSessionDataTask(std::shared_ptr<URLSessionThread> thread, URLTask task)
    : thread_(std::move(thread)), task_(std::move(task)) {}

NSURLSessionDataTask::~NSURLSessionDataTask() = default;

void NSURLSessionDataTask::resume() {
    if (auto task = std::exchange(task_, std::nullopt)) {
        thread_->submit(std::move(*task));
    }
}

}  // namespace orvane::platform
