#include "host/TerminationSignals.h"

#include <glib-unix.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <system_error>
#include <utility>

namespace orvane::host {

namespace {

volatile std::sig_atomic_t signalDescriptor = -1;

// Wakes the main context through the descriptor, which a signal handler is allowed to do.
void onSignal(int) {
    const int error = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(signalDescriptor, &one, sizeof one);
    errno = error;
}

void handle(void (*handler)(int), unsigned int flags) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(flags);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> onTerminate)
    : onTerminate_(std::move(onTerminate)), descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (descriptor_ < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
    signalDescriptor = descriptor_;
    source_ = g_unix_fd_add(
        descriptor_, G_IO_IN,
        [](int, GIOCondition, void* self) -> gboolean {
            auto& signals = *static_cast<TerminationSignals*>(self);
            signals.source_ = 0;
            signals.onTerminate_();
            return G_SOURCE_REMOVE;
        },
        this);
    handle(onSignal, SA_RESTART | SA_RESETHAND);
}

TerminationSignals::~TerminationSignals() {
    handle(SIG_DFL, 0);
    if (source_ != 0) {
        g_source_remove(source_);
    }
    close(descriptor_);
}

}  // namespace orvane::host
