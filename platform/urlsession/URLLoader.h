#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/urlsession/CurlMulti.h"
#include "platform/urlsession/NSURLSessionConfiguration.h"
#include "platform/urlsession/URLHandle.h"
#include "platform/urlsession/URLTask.h"
#include "platform/urlsession/URLTransfer.h"

namespace orvane::platform {

// Carries out the tasks of one session: who runs and who waits for a turn, redirections, time-outs,
// and what transfers share (connections, cookies, TLS sessions). One thread's own, except for
// wake().
class URLLoader {
public:
    explicit URLLoader(const NSURLSessionConfiguration& configuration);
    ~URLLoader();
    URLLoader(const URLLoader&) = delete;
    URLLoader& operator=(const URLLoader&) = delete;

    void add(URLTask task);
    // Waits until something happens and deals with it; wake() ends the wait.
    void turn();
    void wake();
    // Ends every task with an error.
    void cancelAll();

private:
    using Clock = std::chrono::steady_clock;

    struct ShareDeleter {
        void operator()(CURLSH* share) const { curl_share_cleanup(share); }
    };
    struct Running {
        std::unique_ptr<URLHandle> handle;
        URLTask task;
        // The turn is the first host's, wherever redirections lead.
        std::string host;
        int redirections = 0;
        // Before the handle that it borrows.
        std::unique_ptr<URLTransfer> transfer;
    };

    void startWaiting();
    [[nodiscard]] bool hasTurn(const std::string& host) const;
    void start(URLTask task);
    void send(std::unique_ptr<Running> running);
    std::unique_ptr<Running> takeRunning(CURL* easy);
    void ended(CURL* easy, CURLcode code);
    void redirect(std::unique_ptr<Running> running, const std::string& target);
    // Gives the turn back.
    URLTask release(std::unique_ptr<Running> running);
    void expire();

    const NSURLSessionConfiguration configuration_;
    URLBodyMemory memory_;
    std::unique_ptr<CURLSH, ShareDeleter> share_;
    CurlMulti multi_;
    std::vector<std::unique_ptr<URLHandle>> idle_;
    std::deque<URLTask> waiting_;
    std::unordered_map<CURL*, std::unique_ptr<Running>> running_;
    std::unordered_map<std::string, std::size_t> runningByHost_;
    // No transfer times out before. Bytes that move only put it off, so it is looked at when it
    // has come and not with every byte.
    Clock::time_point nextDeadline_ = Clock::time_point::max();
};

}  // namespace orvane::platform
