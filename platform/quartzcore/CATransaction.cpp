#include "platform/quartzcore/CATransaction.h"

#include <utility>
#include <vector>

#include "platform/quartzcore/CATimeline.h"
#include "platform/quartzcore/CATransactionGroup.h"

namespace orvane::platform {

namespace {

thread_local std::vector<std::shared_ptr<CATransactionGroup>> open;

}  // namespace

CATransactionGroup::CATransactionGroup(std::shared_ptr<CATransactionGroup> outer)
    : outer_(std::move(outer)) {}

CATransactionGroup::~CATransactionGroup() {
    if (completion_) {
        CATimeline::instance().enqueueCompletion(std::move(completion_));
    }
}

std::shared_ptr<CATransactionGroup> CATransactionGroup::current() {
    return open.empty() ? nullptr : open.back();
}

void CATransaction::begin() {
    open.push_back(std::make_shared<CATransactionGroup>(CATransactionGroup::current()));
}

void CATransaction::commit() {
    if (!open.empty()) {
        open.pop_back();
    }
}

void CATransaction::setCompletionBlock(std::function<void()> block) {
    if (!open.empty()) {
        open.back()->setCompletion(std::move(block));
    }
}

}  // namespace orvane::platform
