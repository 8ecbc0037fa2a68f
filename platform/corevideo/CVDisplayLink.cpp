#include "platform/corevideo/CVDisplayLink.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "platform/dispatch/dispatch.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::platform {

namespace {

using Clock = std::chrono::steady_clock;  // the media clock's time base

std::atomic<double> refreshRate{60};

Clock::duration refreshPeriod() {
    return std::chrono::duration_cast<Clock::duration>(
        std::chrono::duration<double>(1 / refreshRate.load()));
}

}  // namespace

struct CVDisplayLink::Link : std::enable_shared_from_this<Link> {
    std::mutex mutex;
    std::condition_variable stopped;
    // Set before the first start, and then only called: from one thread at a time, but for a link
    // that is started again while the last callback of its former thread is still under way.
    OutputCallback callback;
    // Odd while it runs. A thread that finds another number than it began with is no longer the
    // one.
    std::uint64_t run = 0;

    bool isRunning() const { return run % 2 == 1; }

    void refresh(std::uint64_t hostTime) {
        CVDisplayLink handle(shared_from_this());
        callback(handle, {hostTime});
    }

    void runThread(std::uint64_t current) {
        const UnjoinedThread unjoined;
        const Clock::duration period = refreshPeriod();
        Clock::time_point next = Clock::now() + period;
        std::unique_lock lock(mutex);
        while (!stopped.wait_until(lock, next, [&] { return run != current; })) {
            lock.unlock();
            refresh(static_cast<std::uint64_t>(
                std::chrono::nanoseconds(next.time_since_epoch()).count()));
            // A callback that takes longer than a refresh misses some; it does not call them in.
            const Clock::time_point now = Clock::now();
            next += period * std::max<Clock::rep>(1, (now - next) / period + 1);
            lock.lock();
        }
    }

    // The links of virtual clocks, in the order of their starts. Never destroyed: one that is never
    // stopped lives as long as the process.
    struct Driven {
        std::mutex mutex;
        std::vector<std::shared_ptr<Link>> links;

        static Driven& shared() {
            static auto& driven = *new Driven;
            return driven;
        }
    };

    static void refreshDriven(double time) {
        std::vector<std::shared_ptr<Link>> links;
        {
            Driven& driven = Driven::shared();
            const std::scoped_lock lock(driven.mutex);
            links = driven.links;
        }
        for (const std::shared_ptr<Link>& link : links) {
            const bool runs = [&link] {
                const std::scoped_lock lock(link->mutex);
                return link->isRunning();
            }();
            if (runs) {
                link->refresh(static_cast<std::uint64_t>(std::max(time, 0.0) * 1e9 + 0.5));
            }
        }
    }
};

CVDisplayLink::Return CVDisplayLink::createWithMainDisplay(CVDisplayLink& link) {
    link.link_ = std::make_shared<Link>();
    return kCVReturnSuccess;
}

CVDisplayLink::Return CVDisplayLink::setOutputCallback(OutputCallback callback) {
    if (!link_ || !callback) {
        return kCVReturnInvalidArgument;
    }
    const std::scoped_lock lock(link_->mutex);
    if (link_->run != 0) {
        return kCVReturnDisplayLinkAlreadyRunning;
    }
    link_->callback = std::move(callback);
    return kCVReturnSuccess;
}

CVDisplayLink::Return CVDisplayLink::start() {
    if (!link_) {
        return kCVReturnInvalidArgument;
    }
    const std::scoped_lock lock(link_->mutex);
    if (!link_->callback) {
        return kCVReturnDisplayLinkCallbacksNotSet;
    }
    if (link_->isRunning()) {
        return kCVReturnDisplayLinkAlreadyRunning;
    }
    if (CAVirtualClock::current()) {
        CAVirtualClock::setRefreshHandler(&Link::refreshDriven);
        Link::Driven& driven = Link::Driven::shared();
        const std::scoped_lock drivenLock(driven.mutex);
        driven.links.push_back(link_);
        ++link_->run;
        return kCVReturnSuccess;
    }
    try {
        // On its own: whoever stops the link need not wait, and may be the thread itself. It keeps
        // the link alive to its end.
        std::thread([link = link_, run = link_->run + 1] { link->runThread(run); }).detach();
    } catch (const std::system_error&) {
        return kCVReturnError;
    }
    ++link_->run;
    return kCVReturnSuccess;
}

CVDisplayLink::Return CVDisplayLink::stop() {
    if (!link_) {
        return kCVReturnInvalidArgument;
    }
    {
        const std::scoped_lock lock(link_->mutex);
        if (!link_->isRunning()) {
            return kCVReturnDisplayLinkNotRunning;
        }
        ++link_->run;
    }
    link_->stopped.notify_all();
    Link::Driven& driven = Link::Driven::shared();
    const std::scoped_lock lock(driven.mutex);
    std::erase(driven.links, link_);
    return kCVReturnSuccess;
}

void CVDisplayLink::release() {
    link_.reset();
}

void CVDisplayLink::setRefreshRate(double hertz) {
    if (hertz >= 1 && hertz <= 1000) {
        refreshRate = hertz;
    }
}

}  // namespace orvane::platform
