#include "platform/foundation/NSLog.h"

#include <sys/time.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <string>

namespace orvane::platform {

namespace {

std::string timeStamp() {
    timeval now{};
    gettimeofday(&now, nullptr);
    tm local{};
    localtime_r(&now.tv_sec, &local);
    char date[32];
    std::strftime(date, sizeof date, "%Y-%m-%d %H:%M:%S", &local);
    char stamp[96];
    std::snprintf(stamp, sizeof stamp, "%s.%03ld [%d:%d] ", date,
                  static_cast<long>(now.tv_usec / 1000), getpid(), gettid());
    return stamp;
}

}  // namespace

void NSLog(const char* format, ...) {
    std::string line = timeStamp();
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    if (length > 0) {
        const std::size_t start = line.size();
        line.resize(start + static_cast<std::size_t>(length) + 1);
        std::vsnprintf(line.data() + start, line.size() - start, format, again);
        line.pop_back();
    }
    va_end(again);
    line += '\n';
    // The stream's lock covers one call, so a line that is written at once stays in one piece.
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace orvane::platform
