#include "platform/imageio/SVGHelper.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "platform/coregraphics/imageLimits.h"
#include "platform/coretext/CTFontManager.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/runtimeLibrary.h"
#include "platform/imageio/svg/SVGExchange.h"

namespace orvane::platform {

namespace {

// The program is in a folder next to the library. Programs that link the runtime statically are in
// the folder bin of their installation.
std::string pathOfProgram() {
    for (const char* const place : {"orvane/orvane-svg", "../lib/orvane/orvane-svg"}) {
        std::string path = runtimeLibrary(place);
        std::error_code error;
        if (std::filesystem::exists(path, error)) {
            return path;
        }
    }
    return runtimeLibrary("orvane/orvane-svg");
}

// A running orvane-svg. Used by one thread at a time.
class Helper {
public:
    // Returns null, with a line in the log, if the program cannot be started.
    static std::unique_ptr<Helper> start();
    ~Helper() {
        close(socket_);
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    Helper(const Helper&) = delete;
    Helper& operator=(const Helper&) = delete;

    // Whether the program has the fonts that the application has registered by now.
    [[nodiscard]] bool hasFonts() const { return fonts_ == CTFontManager::registeredFiles(); }
    // Returns false if the program has ended.
    bool render(std::span<const unsigned char> bytes, double scale, SVGRendering& rendering);

private:
    Helper(pid_t process, int socket, std::vector<std::string> fonts)
        : process_(process), socket_(socket), fonts_(std::move(fonts)) {}

    bool send(const void* from, std::size_t length);
    bool receive(void* to, std::size_t length);

    const pid_t process_;
    const int socket_;
    const std::vector<std::string> fonts_;
};

std::unique_ptr<Helper> Helper::start() {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        NSLog("No SVG picture can be shown: %s", std::strerror(errno));
        return nullptr;
    }
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, ends[1], STDIN_FILENO);
    // What a library says when it aborts is of no use to the developer of an application.
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    // The signal that ends a long drawing must not be blocked or ignored.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);

    std::string path = pathOfProgram();
    std::vector<std::string> fonts = CTFontManager::registeredFiles();
    std::vector<char*> arguments{path.data()};
    std::vector<std::string> copies = fonts;
    for (std::string& font : copies) {
        arguments.push_back(font.data());
    }
    arguments.push_back(nullptr);
    pid_t process = 0;
    const int error =
        posix_spawn(&process, path.c_str(), &files, &attributes, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    posix_spawnattr_destroy(&attributes);
    close(ends[1]);
    if (error != 0) {
        close(ends[0]);
        NSLog("No SVG picture can be shown: %s: %s", path.c_str(), std::strerror(error));
        return nullptr;
    }
    return std::unique_ptr<Helper>(new Helper(process, ends[0], std::move(fonts)));
}

bool Helper::send(const void* from, std::size_t length) {
    const auto* bytes = static_cast<const unsigned char*>(from);
    while (length > 0) {
        const ssize_t count = ::send(socket_, bytes, length, MSG_NOSIGNAL);
        if (count > 0) {
            bytes += count;
            length -= static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool Helper::receive(void* to, std::size_t length) {
    auto* bytes = static_cast<unsigned char*>(to);
    while (length > 0) {
        const ssize_t count = recv(socket_, bytes, length, 0);
        if (count > 0) {
            bytes += count;
            length -= static_cast<std::size_t>(count);
        } else if (count == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool Helper::render(std::span<const unsigned char> bytes, double scale, SVGRendering& rendering) {
    const SVGRequest request{bytes.size(), scale};
    SVGReply reply{};
    if (!send(&request, sizeof request) || !send(bytes.data(), bytes.size()) ||
        !receive(&reply, sizeof reply)) {
        return false;
    }
    if (!isSensibleImageSize(reply.pixelWidth, reply.pixelHeight)) {
        return true;
    }
    rendering = {{reply.width, reply.height}, reply.pixelWidth, reply.pixelHeight, {}};
    rendering.pixels.resize(static_cast<std::size_t>(reply.pixelWidth) *
                            static_cast<std::size_t>(reply.pixelHeight));
    return receive(rendering.pixels.data(), rendering.pixels.size() * 4);
}

// The program that waits for the next picture. One thread's long drawing does not make others wait:
// they start programs of their own, which end after their picture.
struct Idle {
    std::mutex mutex;
    std::unique_ptr<Helper> helper;
};

Idle& idle() {
    // Never destroyed, because a picture may be drawn on another thread during the exit.
    static Idle& instance = *new Idle;
    return instance;
}

std::unique_ptr<Helper> takeHelper() {
    std::unique_ptr<Helper> helper;
    {
        const std::lock_guard lock(idle().mutex);
        helper = std::move(idle().helper);
    }
    return helper && helper->hasFonts() ? std::move(helper) : Helper::start();
}

}  // namespace

std::optional<SVGRendering> renderSVG(std::span<const unsigned char> bytes, double scale) {
    std::unique_ptr<Helper> helper = takeHelper();
    if (!helper) {
        return std::nullopt;
    }
    SVGRendering rendering;
    if (!helper->render(bytes, scale, rendering)) {
        NSLog("A picture in SVG is not drawn: it takes too long or too much memory");
        return std::nullopt;
    }
    const std::lock_guard lock(idle().mutex);
    std::swap(idle().helper, helper);
    return rendering.pixels.empty() ? std::nullopt : std::optional(std::move(rendering));
}

}  // namespace orvane::platform
