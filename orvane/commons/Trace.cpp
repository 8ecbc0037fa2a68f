#include "orvane/commons/Trace.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <string_view>

namespace orvane::commons {

namespace {

// Written to the file at once; large enough that a write is rare, and small enough that it does not
// delay a frame.
constexpr std::size_t kBatch = std::size_t{64} << 10;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// Guarded by the mutex. Never destroyed, because threads that outlive the exit handlers still
// record events.
struct Output {
    std::mutex mutex;
    std::unique_ptr<std::FILE, CloseFile> file;
    std::string batch;
    bool failed = false;
    Trace::Clock::time_point start;
    std::uint64_t intervals = 0;

    void endEvent(const char* end) {
        batch += end;
        if (batch.size() >= kBatch) {
            writeBatch();
        }
    }
    void writeBatch() {
        failed = std::fwrite(batch.data(), 1, batch.size(), file.get()) != batch.size() || failed;
        batch.clear();
    }
};

Output& output() {
    static auto* const instance = new Output;
    return *instance;
}

// A number for each thread that has recorded an event, from 1.
unsigned threadNumber() {
    static std::atomic<unsigned> last{0};
    thread_local const unsigned number = ++last;
    return number;
}

void append(std::string& text, std::uint64_t number) {
    char digits[20];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

// Microseconds with three decimals, as the format requires.
void append(std::string& text, Trace::Clock::duration time) {
    const auto nanoseconds = static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::nanoseconds>(time).count());
    append(text, nanoseconds / 1000);
    const auto rest = nanoseconds % 1000;
    text += {'.', static_cast<char>('0' + rest / 100), static_cast<char>('0' + rest / 10 % 10),
             static_cast<char>('0' + rest % 10)};
}

void appendEscaped(std::string& text, std::string_view detail) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    for (const char character : detail) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < ' ' || byte > '~' || byte == '"' || byte == '\\') {
            text += {'%', kDigits[byte / 16], kDigits[byte % 16]};
        } else {
            text += character;
        }
    }
}

void beginEvent(std::string& text, char phase, const char* name, unsigned thread) {
    // The first event of the file has none before it.
    text += text.ends_with("[\n") ? "{\"ph\":\"" : ",\n{\"ph\":\"";
    text += phase;
    text += "\",\"cat\":\"orvane\",\"name\":\"";
    text += name;
    text += "\",\"pid\":1,\"tid\":";
    append(text, thread);
}

}  // namespace

std::atomic<bool> Trace::running_{false};
std::atomic<Trace::Listener> Trace::listener_{nullptr};

void Trace::setListener(Listener listener) {
    Output& out = output();
    const std::lock_guard lock(out.mutex);
    listener_ = listener;
    running_ = listener != nullptr || out.file != nullptr;
}

bool Trace::start(const std::string& path) {
    Output& out = output();
    const std::lock_guard lock(out.mutex);
    if (out.file != nullptr) {
        return false;
    }
    out.file.reset(std::fopen(path.c_str(), "we"));
    if (out.file == nullptr) {
        return false;
    }
    // The batches are the buffer.
    std::setvbuf(out.file.get(), nullptr, _IONBF, 0);
    out.failed = false;
    out.start = Clock::now();
    out.batch = "[\n";
    beginEvent(out.batch, 'M', "thread_name", threadNumber());
    out.batch += ",\"args\":{\"name\":\"main\"}}";
    running_ = true;
    static const int atExit = std::atexit([] { stop(); });
    return atExit == 0;
}

bool Trace::stop() {
    Output& out = output();
    const std::lock_guard lock(out.mutex);
    running_ = listener_ != nullptr;
    if (out.file == nullptr) {
        return false;
    }
    out.batch += "\n]\n";
    out.writeBatch();
    return std::fclose(out.file.release()) == 0 && !out.failed;
}

void Trace::record(const char* name, Clock::time_point start) {
    const auto end = Clock::now();
    if (const Listener listener = listener_) {
        listener(name, start, end);
    }
    const unsigned thread = threadNumber();
    Output& out = output();
    const std::lock_guard lock(out.mutex);
    // The trace may have ended, or have been started again, since the event began.
    if (out.file == nullptr || start < out.start) {
        return;
    }
    beginEvent(out.batch, 'X', name, thread);
    out.batch += ",\"ts\":";
    append(out.batch, start - out.start);
    out.batch += ",\"dur\":";
    append(out.batch, end - start);
    out.endEvent("}");
}

std::uint64_t Trace::begin(const char* name, const std::string& detail) {
    if (!isRunning()) {
        return 0;
    }
    const unsigned thread = threadNumber();
    Output& out = output();
    const std::lock_guard lock(out.mutex);
    if (out.file == nullptr) {
        return 0;
    }
    beginEvent(out.batch, 'b', name, thread);
    out.batch += ",\"ts\":";
    append(out.batch, Clock::now() - out.start);
    out.batch += ",\"id\":";
    append(out.batch, ++out.intervals);
    out.batch += ",\"args\":{\"detail\":\"";
    appendEscaped(out.batch, detail);
    out.endEvent("\"}}");
    return out.intervals;
}

void Trace::end(const char* name, std::uint64_t number) {
    if (number == 0) {
        return;
    }
    const unsigned thread = threadNumber();
    Output& out = output();
    const std::lock_guard lock(out.mutex);
    if (out.file == nullptr) {
        return;
    }
    beginEvent(out.batch, 'e', name, thread);
    out.batch += ",\"ts\":";
    append(out.batch, Clock::now() - out.start);
    out.batch += ",\"id\":";
    append(out.batch, number);
    out.endEvent("}");
}

}  // namespace orvane::commons
