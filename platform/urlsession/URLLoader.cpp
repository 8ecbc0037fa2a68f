#include "platform/urlsession/URLLoader.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/select.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

namespace orvane::platform {

namespace {

// The limit of the Fetch standard.
constexpr int kMaximumRedirections = 20;
constexpr std::size_t kMaximumIdleHandles = 64;

// The local port of a socket, or 0.
int portOf(int socket) {
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        return 0;
    }
    return ntohs(address.ss_family == AF_INET6
                     ? reinterpret_cast<const sockaddr_in6&>(address).sin6_port
                     : reinterpret_cast<const sockaddr_in&>(address).sin_port);
}

}  // namespace

URLLoader::URLLoader(const NSURLSessionConfiguration& configuration,
                     std::function<void(URLTask)> resubmit)
    : configuration_(configuration),
      resubmit_(std::move(resubmit)),
      memory_{configuration.bodyMemory, 0},
      share_(curl().shareInit()),
      multi_(curl().multiInit()) {
    curl().shareSetopt(share_.get(), CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE);
    curl().shareSetopt(share_.get(), CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION);
    curl().multiSetopt(multi_.get(), CURLMOPT_PIPELINING, CURLPIPE_MULTIPLEX);
    // By default libcurl keeps four connections for each running transfer, so it would close most
    // of them at the end of a burst.
    curl().multiSetopt(multi_.get(), CURLMOPT_MAXCONNECTS, 256L);
}

URLLoader::~URLLoader() {
    failAll("The session ended.");
}

void URLLoader::add(URLTask task) {
    if (!task.request.URL()) {
        task.fail("unsupported URL");
        return;
    }
    auto& entry = *servers_.try_emplace(task.request.URL()->origin()).first;
    if (entry.second.waiting.empty()) {
        turns_.push_back(&entry);
    }
    entry.second.waiting.push_back(std::move(task));
    startWaiting();
}

void URLLoader::proceed() {
    hasAdded_ = false;
    int running = 0;
    curl().multiPerform(multi_.get(), &running);
    finishEnded();
    expire();
    startWaiting();
}

void URLLoader::wait() {
    if (hasAdded_) {
        return;
    }
    // libcurl 7.88 can miss that a shared HTTP/2 connection is ready again; without the shorter
    // wait its transfers would stand still until they time out.
    const std::int64_t longest = running_.empty() ? 3'600'000 : 50;
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(nextDeadline_ - Clock::now()).count();
    // libcurl shortens the time to that of its next own timer.
    curl().multiPoll(multi_.get(), nullptr, 0,
                     static_cast<int>(std::clamp<std::int64_t>(left, 0, longest)), nullptr);
}

void URLLoader::wake() {
    curl().multiWakeup(multi_.get());
}

void URLLoader::failAll(const char* description) {
    while (!running_.empty()) {
        release(takeRunning(running_.begin()->first)).fail(description);
    }
    turns_.clear();
    for (const auto& [origin, server] : std::exchange(servers_, {})) {
        for (const URLTask& task : server.waiting) {
            task.fail(description);
        }
    }
}

void URLLoader::startWaiting() {
    std::size_t blocked = 0;  // Servers in succession that have no free connection.
    while (blocked < turns_.size() && running_.size() < configuration_.maximumConnections) {
        auto* const turn = turns_.front();
        turns_.pop_front();
        auto& [origin, server] = *turn;
        if (server.running < configuration_.HTTPMaximumConnectionsPerHost) {
            start(origin, server);
            blocked = 0;
        } else {
            ++blocked;
        }
        if (!server.waiting.empty()) {
            turns_.push_back(turn);
        }
    }
}

void URLLoader::start(const std::string& origin, Server& server) {
    auto running = std::make_unique<Running>();
    running->origin = origin;
    running->task = std::move(server.waiting.front());
    server.waiting.pop_front();
    ++server.running;
    if (idle_.empty()) {
        running->handle = std::make_unique<URLHandle>(share_.get(), configuration_);
    } else {
        running->handle = std::move(idle_.back());
        idle_.pop_back();
    }
    send(std::move(running));
}

void URLLoader::send(std::unique_ptr<Running> running) {
    CURL* const easy = running->handle->get();
    running->transfer.reset();
    running->transfer =
        std::make_unique<URLTransfer>(*running->handle, running->task, configuration_, memory_);
    nextDeadline_ = std::min(nextDeadline_, running->transfer->deadline());
    running_.emplace(easy, std::move(running));
    curl().multiAddHandle(multi_.get(), easy);
    hasAdded_ = true;
}

std::unique_ptr<URLLoader::Running> URLLoader::takeRunning(CURL* easy) {
    curl().multiRemoveHandle(multi_.get(), easy);
    auto node = running_.extract(easy);
    return std::move(node.mapped());
}

void URLLoader::finishEnded() {
    int left = 0;
    while (const CURLMsg* const message = curl().multiInfoRead(multi_.get(), &left)) {
        if (message->msg == CURLMSG_DONE) {
            finish(message->easy_handle, message->data.result);
        }
    }
}

void URLLoader::finish(CURL* easy, CURLcode code) {
    auto running = takeRunning(easy);
    if (!running->transfer->end(code)) {
        const NSError error = running->transfer->error(code);
        release(std::move(running)).fail(error);
        return;
    }
    if (const auto target = running->transfer->redirection()) {
        redirect(std::move(running), *target);
        return;
    }
    const NSHTTPURLResponse response = running->transfer->response();
    const NSData body = running->transfer->takeBody();
    release(std::move(running)).complete(body, response);
}

void URLLoader::redirect(std::unique_ptr<Running> running, const std::string& target) {
    std::optional<NSURL> url;
    if (const auto text = NSString::initWithUTF8String(target.c_str())) {
        url = NSURL::URLWithString(*text);
    }
    if (!url) {
        release(std::move(running)).fail("unsupported URL");
        return;
    }
    if (++running->task.redirections > kMaximumRedirections) {
        release(std::move(running)).fail("too many HTTP redirects");
        return;
    }
    NSMutableURLRequest& request = running->task.request;
    request = request.redirected(running->transfer->statusCode(), std::move(url));
    if (request.URL()->origin() == running->origin) {
        send(std::move(running));
    } else {
        resubmit_(release(std::move(running)));
    }
}

URLTask URLLoader::release(std::unique_ptr<Running> running) {
    const auto server = servers_.find(running->origin);
    if (--server->second.running == 0 && server->second.waiting.empty()) {
        servers_.erase(server);
    }
    running->transfer.reset();
    if (idle_.size() < kMaximumIdleHandles) {
        idle_.push_back(std::move(running->handle));
    }
    return std::move(running->task);
}

// libcurl reports header lines when they are complete. The system knows when a connection received
// its last byte.
URLLoader::Clock::time_point URLLoader::lastReceived(int localPort) const {
    fd_set reading;
    fd_set others;
    FD_ZERO(&reading);
    FD_ZERO(&others);
    int last = -1;
    if (localPort == 0 ||
        curl().multiFdset(multi_.get(), &reading, &others, &others, &last) != CURLM_OK) {
        return {};
    }
    for (int socket = 0; socket <= last; ++socket) {
        tcp_info information{};
        socklen_t size = sizeof information;
        if (FD_ISSET(socket, &reading) && portOf(socket) == localPort &&
            getsockopt(socket, IPPROTO_TCP, TCP_INFO, &information, &size) == 0) {
            return Clock::now() - std::chrono::milliseconds(information.tcpi_last_data_recv);
        }
    }
    return {};
}

void URLLoader::expire() {
    const auto now = Clock::now();
    if (now < nextDeadline_) {
        return;
    }
    std::vector<CURL*> expired;
    nextDeadline_ = Clock::time_point::max();
    for (const auto& [easy, running] : running_) {
        URLTransfer& transfer = *running->transfer;
        // In a body, only the bytes that are delivered count. The length of a chunk may have
        // extensions without end.
        if (transfer.deadline() <= now && transfer.isReceivingHeader()) {
            transfer.noteActivity(lastReceived(transfer.ownConnectionPort()));
        }
        if (transfer.deadline() <= now) {
            expired.push_back(easy);
        } else {
            nextDeadline_ = std::min(nextDeadline_, transfer.deadline());
        }
    }
    for (CURL* const easy : expired) {
        release(takeRunning(easy)).fail("The request timed out.");
    }
}

}  // namespace orvane::platform
