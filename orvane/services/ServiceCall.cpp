#include "orvane/services/ServiceCall.h"

#include <utility>

#include "orvane/commons/guardedCall.h"
#include "platform/foundation/NSLog.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "platform/quartzcore/CATimer.h"

namespace orvane::services {

ServiceCall::ServiceCall(FailureCallback failed) : failed_(std::move(failed)) {}

ServiceCall::~ServiceCall() = default;

void ServiceCall::cancel() {
    isPending_ = false;
    if (deadline_) {
        deadline_->stop();
    }
}

void ServiceCall::limit(double seconds) {
    deadline_ = std::make_unique<platform::CATimer>();
    deadline_->start(platform::CACurrentMediaTime() + seconds, 0, [this] {
        fail({ServiceFailure::Reason::TimedOut, "no answer in time"});
    });
}

void ServiceCall::finish(const std::function<void()>& deliver) {
    if (isPending_) {
        cancel();
        commons::guardedCall("exception of a callback of a service", deliver);
    }
}

void ServiceCall::fail(const ServiceFailure& failure) {
    finish([&failure, failed = failed_] {  // which may release this object
        platform::NSLog("A service failed: %s", failure.message.c_str());
        if (failed) {
            failed(failure);
        }
    });
}

}  // namespace orvane::services
