#include "platform/urlsession/URLLoader.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace orvane::platform {

namespace {

// As many as browsers follow.
constexpr int maximumRedirections = 20;

}  // namespace

URLLoader::URLLoader(const NSURLSessionConfiguration& configuration)
    : configuration_(configuration),
      memory_{configuration.bodyMemory, 0},
      share_(curl_share_init()) {
    curl_share_setopt(share_.get(), CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE);
    curl_share_setopt(share_.get(), CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION);
}

URLLoader::~URLLoader() {
    cancelAll();
}

void URLLoader::add(URLTask task) {
    if (!task.request.URL()) {
        task.fail("unsupported URL");
        return;
    }
    waiting_.push_back(std::move(task));
    startWaiting();
}

void URLLoader::turn() {
    multi_.turn(nextDeadline_);
    multi_.drainEnded([this](CURL* easy, CURLcode code) { ended(easy, code); });
    expire();
    startWaiting();
}

void URLLoader::wake() {
    multi_.wake();
}

void URLLoader::cancelAll() {
    while (!running_.empty()) {
        release(takeRunning(running_.begin()->first)).fail("cancelled");
    }
    for (const URLTask& task : std::exchange(waiting_, {})) {
        task.fail("cancelled");
    }
}

bool URLLoader::hasTurn(const std::string& host) const {
    const auto found = runningByHost_.find(host);
    return found == runningByHost_.end() ||
           found->second < configuration_.HTTPMaximumConnectionsPerHost;
}

void URLLoader::startWaiting() {
    auto next = waiting_.begin();
    while (next != waiting_.end() && running_.size() < configuration_.maximumConnections) {
        if (!hasTurn(next->request.URL()->origin())) {
            ++next;
            continue;
        }
        start(std::move(*next));
        next = waiting_.erase(next);
    }
}

void URLLoader::start(URLTask task) {
    auto running = std::make_unique<Running>();
    running->host = task.request.URL()->origin();
    running->task = std::move(task);
    if (idle_.empty()) {
        running->handle = std::make_unique<URLHandle>(share_.get(), configuration_);
    } else {
        running->handle = std::move(idle_.back());
        idle_.pop_back();
    }
    ++runningByHost_[running->host];
    send(std::move(running));
}

void URLLoader::send(std::unique_ptr<Running> running) {
    CURL* const easy = running->handle->get();
    running->transfer.reset();
    running->transfer = std::make_unique<URLTransfer>(*running->handle, running->task,
                                                      configuration_.maximumHeaderLength, memory_);
    nextDeadline_ = std::min(nextDeadline_, running->transfer->deadline());
    running_.emplace(easy, std::move(running));
    multi_.add(easy);
}

std::unique_ptr<URLLoader::Running> URLLoader::takeRunning(CURL* easy) {
    multi_.remove(easy);
    auto node = running_.extract(easy);
    return std::move(node.mapped());
}

void URLLoader::ended(CURL* easy, CURLcode code) {
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
    if (++running->redirections > maximumRedirections) {
        release(std::move(running)).fail("too many HTTP redirects");
        return;
    }
    URLTask& task = running->task;
    if (configuration_.proxy && url->origin() != task.request.URL()->origin()) {
        task.proxy = configuration_.proxy(url->absoluteString());
    }
    task.request = task.request.redirected(running->transfer->statusCode(), std::move(url));
    send(std::move(running));
}

URLTask URLLoader::release(std::unique_ptr<Running> running) {
    const auto count = runningByHost_.find(running->host);
    if (--count->second == 0) {
        runningByHost_.erase(count);
    }
    running->transfer.reset();
    constexpr std::size_t mostIdle = 64;
    if (idle_.size() < mostIdle) {
        idle_.push_back(std::move(running->handle));
    }
    return std::move(running->task);
}

void URLLoader::expire() {
    const auto now = Clock::now();
    if (now < nextDeadline_) {
        return;
    }
    std::vector<CURL*> expired;
    nextDeadline_ = Clock::time_point::max();
    for (const auto& [easy, running] : running_) {
        if (running->transfer->deadline() <= now) {
            expired.push_back(easy);
        } else {
            nextDeadline_ = std::min(nextDeadline_, running->transfer->deadline());
        }
    }
    for (CURL* const easy : expired) {
        release(takeRunning(easy)).fail("The request timed out.");
    }
}

}  // namespace orvane::platform
