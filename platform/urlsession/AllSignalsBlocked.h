#pragma once

#include <pthread.h>

#include <csignal>

namespace orvane::platform {

// Blocks all signals, for this scope and for the threads that it starts. Signals of the process are
// for the threads that expect them, and SIGPIPE of a closed connection must not end the process.
class AllSignalsBlocked {
public:
    AllSignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~AllSignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    AllSignalsBlocked(const AllSignalsBlocked&) = delete;
    AllSignalsBlocked& operator=(const AllSignalsBlocked&) = delete;

private:
    sigset_t before_{};
};

}  // namespace orvane::platform
