#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/urlsession/CurlLibrary.h"
#include "platform/urlsession/NSURLSessionConfiguration.h"
#include "platform/urlsession/URLHandle.h"
#include "platform/urlsession/URLTask.h"
#include "platform/urlsession/URLTransfer.h"

namespace orvane::platform {

// Runs the tasks of one session on libcurl's multi interface: their order, redirections, time-outs,
// and what transfers share (connections, cookies, TLS sessions). Used by one thread, except for
// wake().
class URLLoader {
public:
    // `resubmit` receives tasks that were redirected to another server. It looks up the server's
    // proxy and passes the task to add() later.
    URLLoader(const NSURLSessionConfiguration& configuration,
              std::function<void(URLTask)> resubmit);
    ~URLLoader();
    URLLoader(const URLLoader&) = delete;
    URLLoader& operator=(const URLLoader&) = delete;

    void add(URLTask task);
    // Lets the transfers proceed as far as they can, and ends and starts tasks.
    void proceed();
    // Waits until a transfer can proceed, a time-out is due or wake() is called.
    void wait();
    // Ends the current wait or the next one. Thread-safe.
    void wake();
    // Ends every task with an error.
    void failAll(const char* description);

private:
    using Clock = std::chrono::steady_clock;

    struct ShareDeleter {
        void operator()(CURLSH* share) const { curl().shareCleanup(share); }
    };
    struct MultiDeleter {
        void operator()(CURLM* multi) const { curl().multiCleanup(multi); }
    };
    // What runs and what waits for a connection to one origin.
    struct Server {
        std::size_t running = 0;
        std::deque<URLTask> waiting;
    };
    struct Running {
        std::unique_ptr<URLHandle> handle;
        URLTask task;
        // The key of the server that the transfer is counted for.
        std::string origin;
        // Borrows the handle, so it is declared after it.
        std::unique_ptr<URLTransfer> transfer;
    };

    void startWaiting();
    void start(const std::string& origin, Server& server);
    void send(std::unique_ptr<Running> running);
    std::unique_ptr<Running> takeRunning(CURL* easy);
    void finishEnded();
    void finish(CURL* easy, CURLcode code);
    void redirect(std::unique_ptr<Running> running, const std::string& target);
    // Ends the transfer and returns its task.
    URLTask release(std::unique_ptr<Running> running);
    void expire();
    // When the connection with this local port received its last byte; the epoch if that is not
    // known.
    [[nodiscard]] Clock::time_point lastReceived(int localPort) const;

    const NSURLSessionConfiguration configuration_;
    const std::function<void(URLTask)> resubmit_;
    URLBodyMemory memory_;
    std::unique_ptr<CURLSH, ShareDeleter> share_;
    std::unique_ptr<CURLM, MultiDeleter> multi_;
    std::vector<std::unique_ptr<URLHandle>> idle_;
    std::unordered_map<CURL*, std::unique_ptr<Running>> running_;
    // By origin. A server without running and waiting tasks is removed.
    std::unordered_map<std::string, Server> servers_;
    // The servers with waiting tasks, each once, which take turns. The entries of servers_ do not
    // move.
    std::deque<std::pair<const std::string, Server>*> turns_;
    // Set when a transfer was added that has not been started by libcurl.
    bool hasAdded_ = false;
    // No transfer times out earlier. Activity only postpones time-outs, so the transfers are
    // checked at this time and not with every byte.
    Clock::time_point nextDeadline_ = Clock::time_point::max();
};

}  // namespace orvane::platform
