#pragma once

#include <functional>
#include <memory>

namespace orvane::platform {

// The shared state of one transaction. It is owned by the open transaction until its commit, by
// each animation added in it until the animation is over, and by the groups of nested transactions.
// When the last owner releases it, the destructor gives the completion to the timeline, so the
// completion runs exactly once, however the animations end.
class CATransactionGroup {
public:
    explicit CATransactionGroup(std::shared_ptr<CATransactionGroup> outer);
    ~CATransactionGroup();
    CATransactionGroup(const CATransactionGroup&) = delete;
    CATransactionGroup& operator=(const CATransactionGroup&) = delete;

    // The group of the innermost transaction that is open on this thread; null for none.
    static std::shared_ptr<CATransactionGroup> current();

    void setCompletion(std::function<void()> completion) { completion_ = std::move(completion); }

private:
    std::shared_ptr<CATransactionGroup> outer_;
    std::function<void()> completion_;
};

}  // namespace orvane::platform
