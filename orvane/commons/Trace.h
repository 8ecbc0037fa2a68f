#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>

#include "orvane/commons/Export.h"

namespace orvane::commons {

// Writes what the program does, and when, to a file in the JSON array form of the Chrome trace
// format, which chrome://tracing and ui.perfetto.dev show. TraceScope records what one thread does;
// begin and end record what crosses threads. While no trace is running, each costs one branch.
//
// The form allows the closing bracket to be missing: the file of a process that was killed can
// still be opened. The last 64 KiB may be missing then. Any thread; there is one trace per process.
class ORVANE_EXPORT Trace {
public:
    using Clock = std::chrono::steady_clock;

    // Creates the file and starts the trace, which ends with stop() or at the end of the process.
    // Returns false if the file cannot be created or a trace is running. The calling thread is
    // named "main" in the file.
    static bool start(const std::string& path);
    // Ends the trace and closes the file. Returns false if the file could not be written
    // completely, or no trace is running.
    static bool stop();
    // Sets the function that is called at the end of each TraceScope, also without a file, on the
    // thread of the scope; null for none. One per process.
    using Listener = void (*)(const char* name, Clock::time_point start, Clock::time_point end);
    static void setListener(Listener listener);
    // Whether a trace is running, or a function is set.
    static bool isRunning() { return running_.load(std::memory_order_relaxed); }

    // Begins an interval that may end on another thread. `name` needs no escaping in JSON; `detail`
    // is any text, for example an address: characters outside printable ASCII are written as
    // percent escapes. Returns a number for end(); 0 if no trace is running.
    static std::uint64_t begin(const char* name, const std::string& detail);
    // Ends the interval. 0 is ignored.
    static void end(const char* name, std::uint64_t number);

private:
    friend class TraceScope;
    // Records an event from `start` until now.
    static void record(const char* name, Clock::time_point start);

    static std::atomic<bool> running_;
    static std::atomic<Listener> listener_;
};

// Records the lifetime of this object as an event of the calling thread. `name` is a literal
// without characters that JSON escapes.
class TraceScope {
public:
    // Begins the event.
    explicit TraceScope(const char* name) : name_(Trace::isRunning() ? name : nullptr) {
        if (name_ != nullptr) {
            start_ = Trace::Clock::now();
        }
    }
    // Ends it.
    ~TraceScope() {
        if (name_ != nullptr) {
            Trace::record(name_, start_);
        }
    }
    TraceScope(const TraceScope&) = delete;
    TraceScope& operator=(const TraceScope&) = delete;

private:
    const char* name_;
    Trace::Clock::time_point start_;
};

}  // namespace orvane::commons
