#include "host/OffscreenHost.h"

#include <glib.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <memory>
#include <string>

#include "host/EventScript.h"
#include "host/Options.h"
#include "host/Playback.h"
#include "host/Timer.h"
#include "orvane/embedding/settle.h"

namespace orvane::host {

namespace {

// The limit for an application that keeps giving itself new work.
constexpr std::chrono::seconds kLongestSettling{2};

// The refreshes of the display per second, and the most that are played between two events.
constexpr double kRefreshRate = 60;
constexpr double kMostRefreshes = 10000;

std::string framePath(const std::string& directory, long number) {
    char name[32];
    std::snprintf(name, sizeof name, "frame-%06ld.png", number);
    return (std::filesystem::path(directory) / name).string();
}

}  // namespace

OffscreenHost::OffscreenHost(const Options& options, const EventScript& script)
    : options_(options),
      script_(script),
      window_(options.size, options.scale.value_or(1)),
      signals_([this] {
          terminated_ = true;
          if (onTerminate_) {
              onTerminate_();
          }
      }),
      session_(window_, options.directory, options.resources) {
    if (options.endsAfterOutput() || options.at) {
        clock_.emplace();
        start_ = platform::CACurrentMediaTime();
    }
    window_.windowHost().setCloseHandler([this] {
        if (onTerminate_) {
            onTerminate_();
        }
    });
}

ExitCode OffscreenHost::run() {
    if (!session_.start()) {
        return ExitCode::NoApplication;
    }
    if (options_.inspects) {
        inspectorWindow_.emplace(kInspectorSize, window_.backingScaleFactor());
        inspector_ = openInspector(options_, window_, *inspectorWindow_);
        if (!inspector_) {
            return ExitCode::CannotDo;
        }
    }
    if (!options_.frames.empty()) {
        return writeFrames();
    }
    if (options_.at) {
        return writeMoment(*options_.at);
    }
    if (options_.endsAfterOutput()) {
        settle();
        play(std::numeric_limits<double>::infinity());
        return write();
    }
    return runUntilTerminated();
}

ExitCode OffscreenHost::writeMoment(double time) {
    realStart_ = std::chrono::steady_clock::now();
    settle();
    play(time);
    advanceTo(time);
    settle();
    return write();
}

ExitCode OffscreenHost::writeFrames() {
    const auto count = std::max(1L, std::lround(options_.seconds * options_.fps));
    for (long frame = 0; frame < count && !terminated_; ++frame) {
        const double time = static_cast<double>(frame) / options_.fps;
        play(time);
        advanceTo(time);
        settle();
        if (const std::string path = framePath(options_.frames, frame); !writePNG(path)) {
            complain("cannot write " + path);
            return ExitCode::CannotDo;
        }
    }
    return write();
}

ExitCode OffscreenHost::runUntilTerminated() {
    const std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> loop(
        g_main_loop_new(nullptr, FALSE), &g_main_loop_unref);
    const Playback playback(script_, window_, [] {});
    if (!terminated_ && !isClosed()) {
        onTerminate_ = [&loop] { g_main_loop_quit(loop.get()); };
        g_main_loop_run(loop.get());
        onTerminate_ = nullptr;
    }
    return ExitCode::Done;
}

ExitCode OffscreenHost::write() {
    if (terminated_) {
        return ExitCode::Done;
    }
    if (inspector_) {
        inspector_->refresh();
        settle();
    }
    return writeOutput(options_, [this](const auto& path) {
        return writePNG(path) && (!inspector_ || inspectorWindow_->writePNG(inspectorPath(path)));
    });
}

void OffscreenHost::advanceTo(double time) {
    const double step = std::max(1 / kRefreshRate, (time - time_) / kMostRefreshes);
    for (double next = time_ + step; next < time && !terminated_; next += step) {
        waitUntil(next);
        clock_->advanceTo(start_ + next);
        settle();
    }
    waitUntil(time);
    clock_->advanceTo(start_ + time);
    time_ = time;
}

void OffscreenHost::waitUntil(double time) {
    if (!options_.at) {
        return;
    }
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - realStart_;
    bool due = false;
    const Timer timer(time - passed.count(), [&due] { due = true; });
    while (!due && !terminated_) {
        g_main_context_iteration(nullptr, TRUE);
    }
}

void OffscreenHost::play(double until) {
    const auto& steps = script_.steps();
    for (; nextStep_ < steps.size() && !terminated_ && !isClosed(); ++nextStep_) {
        const EventScript::Step& step = steps[nextStep_];
        if (step.seconds > until) {
            return;
        }
        advanceTo(step.seconds);
        step.perform(window_, start_ + step.seconds);
        settle();
    }
}

void OffscreenHost::settle() {
    embedding::settle(window_, kLongestSettling, &terminated_);
    if (inspector_) {
        inspectorWindow_->display();
    }
}

}  // namespace orvane::host
