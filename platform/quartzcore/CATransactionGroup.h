#pragma once

#include <functional>
#include <memory>

namespace orvane::platform {

// What holds a transaction open: the transaction itself until its commit, each animation added in
// it until it is over, and the groups of the transactions nested in it. When the last of them lets
// go, the completion is handed to the timeline; so it runs once, however the animations end.
class CATransactionGroup {
public:
    explicit CATransactionGroup(std::shared_ptr<CATransactionGroup> outer);
    ~CATransactionGroup();
    CATransactionGroup(const CATransactionGroup&) = delete;
    CATransactionGroup& operator=(const CATransactionGroup&) = delete;

    // Of the innermost transaction that is open on this thread; null for none.
    static std::shared_ptr<CATransactionGroup> current();

    void setCompletion(std::function<void()> completion) { completion_ = std::move(completion); }

private:
    std::shared_ptr<CATransactionGroup> outer_;
    std::function<void()> completion_;
};

}  // namespace orvane::platform
