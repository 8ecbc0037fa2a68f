#include "host/Watch.h"

#include <gio/gio.h>
#include <glib-unix.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "host/Options.h"

namespace orvane::host {

namespace {

// A build may write several libraries, and the linker may touch one twice.
constexpr double kSettleSeconds = 0.05;
// An application that does not end in this time is killed.
constexpr double kPatienceSeconds = 2;
constexpr std::size_t kMostErrors = 4000;

// The options of the process: those of this one, without --watch.
std::vector<std::string> withoutWatch(const std::vector<std::string>& arguments) {
    std::vector<std::string> result;
    std::ranges::copy_if(arguments, std::back_inserter(result), [](std::string_view argument) {
        return argument.size() < 3 || !std::string_view("--watch").starts_with(argument);
    });
    return result;
}

}  // namespace

Watch::Watch(const Options& options, const std::vector<std::string>& arguments)
    : directory_(options.directory),
      arguments_(withoutWatch(arguments)),
      loop_(g_main_loop_new(nullptr, FALSE), &g_main_loop_unref),
      monitor_(nullptr, [](GFileMonitor* monitor) { g_object_unref(monitor); }),
      signals_([this] {
          ends_ = true;
          end();
      }) {
    std::string folder = std::filesystem::temp_directory_path() / "orvane-watch-XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(), folder);
    }
    folder_ = folder;
    messageFile_ = folder_ + "/message";
    if (options.windowState.empty()) {
        arguments_.insert(arguments_.begin() + 1, {"--window-state", folder_ + "/window"});
    }
    GFile* const directory = g_file_new_for_path(directory_.c_str());
    monitor_.reset(
        g_file_monitor_directory(directory, G_FILE_MONITOR_WATCH_MOVES, nullptr, nullptr));
    g_object_unref(directory);
}

Watch::~Watch() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

ExitCode Watch::run() {
    if (!monitor_) {
        complain("cannot watch " + directory_);
        return ExitCode::CannotDo;
    }
    g_signal_connect(monitor_.get(), "changed",
                     G_CALLBACK(+[](GFileMonitor*, GFile* file, GFile* other,
                                    GFileMonitorEvent event, Watch* watch) {
                         // A library is complete when its writer has closed it, or has moved it to
                         // its place.
                         GFile* const built = event == G_FILE_MONITOR_EVENT_RENAMED ? other : file;
                         if (event != G_FILE_MONITOR_EVENT_CHANGES_DONE_HINT &&
                             event != G_FILE_MONITOR_EVENT_MOVED_IN &&
                             event != G_FILE_MONITOR_EVENT_RENAMED) {
                             return;
                         }
                         char* const name = g_file_get_basename(built);
                         if (std::string_view(name).ends_with(".dylib")) {
                             watch->libraryWasBuilt();
                         }
                         g_free(name);
                     }),
                     this);
    start();
    g_main_loop_run(loop_.get());
    return exitCode_;
}

void Watch::libraryWasBuilt() {
    settled_.emplace(kSettleSeconds, [this] { restart(); });
}

void Watch::restart() {
    if (process_ == 0) {
        start();
    } else {
        startsAgain_ = true;
        end();
    }
}

void Watch::start() {
    startsAgain_ = false;
    lastErrors_.clear();
    spawn({});
}

void Watch::spawn(const std::vector<std::string>& options) {
    std::vector<std::string> command = arguments_;
    command.insert(command.begin() + 1, options.begin(), options.end());
    std::vector<char*> words;
    std::ranges::transform(command, std::back_inserter(words),
                           [](std::string& word) { return word.data(); });
    words.push_back(nullptr);
    // The path of this program.
    char program[] = "/proc/self/exe";
    words.insert(words.begin(), program);
    GError* error = nullptr;
    const auto flags = static_cast<GSpawnFlags>(
        G_SPAWN_DO_NOT_REAP_CHILD | G_SPAWN_FILE_AND_ARGV_ZERO | G_SPAWN_CHILD_INHERITS_STDIN);
    if (g_spawn_async_with_pipes(
            nullptr, words.data(), nullptr, flags,
            // The process ends with this one, even if this one is killed.
            [](void*) { prctl(PR_SET_PDEATHSIG, SIGTERM); }, nullptr, &process_, nullptr, nullptr,
            &errors_, &error) == FALSE) {
        complain(error->message);
        g_error_free(error);
        process_ = 0;
        quit(ExitCode::CannotDo);
        return;
    }
    g_unix_set_fd_nonblocking(errors_, TRUE, nullptr);
    errorsSource_ = g_unix_fd_add(
        errors_, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP),
        [](int, GIOCondition condition, void* self) -> gboolean {
            auto& watch = *static_cast<Watch*>(self);
            watch.readErrors();
            if ((condition & G_IO_HUP) == 0) {
                return G_SOURCE_CONTINUE;
            }
            watch.errorsSource_ = 0;
            return G_SOURCE_REMOVE;
        },
        this);
    g_child_watch_add(
        process_, [](int, int status, void* self) { static_cast<Watch*>(self)->hasEnded(status); },
        this);
}

// Passes on what the process prints, and keeps its end for the message.
void Watch::readErrors() {
    char buffer[4096];
    for (ssize_t count; (count = read(errors_, buffer, sizeof buffer)) > 0;) {
        const auto size = static_cast<std::size_t>(count);
        [[maybe_unused]] const auto written = write(STDERR_FILENO, buffer, size);
        lastErrors_.append(buffer, size);
        if (lastErrors_.size() > kMostErrors) {
            lastErrors_.erase(0, lastErrors_.size() - kMostErrors);
        }
    }
}

void Watch::end() {
    if (process_ == 0) {
        quit(exitCode_);
        return;
    }
    kill(process_, SIGTERM);
    impatient_.emplace(kPatienceSeconds, [this] {
        if (process_ != 0) {
            kill(process_, SIGKILL);
        }
    });
}

void Watch::hasEnded(int status) {
    impatient_.reset();
    readErrors();
    if (errorsSource_ != 0) {
        g_source_remove(errorsSource_);
        errorsSource_ = 0;
    }
    close(errors_);
    g_spawn_close_pid(process_);
    process_ = 0;
    if (ends_) {
        quit(ExitCode::Done);
    } else if (startsAgain_) {
        start();
    } else if (WIFSIGNALED(status)) {
        showMessage(std::string("the application crashed: ") + strsignal(WTERMSIG(status)));
    } else if (WEXITSTATUS(status) == static_cast<int>(ExitCode::NoApplication)) {
        showMessage("no application could be started");
    } else {
        quit(static_cast<ExitCode>(WEXITSTATUS(status)));
    }
}

void Watch::showMessage(const std::string& reason) {
    std::string heading = reason + "; waiting for the next build";
    complain(heading);
    heading.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(heading.front())));
    std::ofstream(messageFile_) << heading << "\n\n" << lastErrors_;
    spawn({"--message", messageFile_});
}

void Watch::quit(ExitCode exitCode) {
    exitCode_ = exitCode;
    g_main_loop_quit(loop_.get());
}

}  // namespace orvane::host
