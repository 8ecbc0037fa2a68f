#pragma once

#include <curl/curl.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orvane::platform {

// libcurl's multi interface on epoll: the cost of a turn is that of the sockets something happened
// on, however many transfers run. One thread's own, except for wake().
class CurlMulti {
public:
    using Clock = std::chrono::steady_clock;

    CurlMulti();
    ~CurlMulti();
    CurlMulti(const CurlMulti&) = delete;
    CurlMulti& operator=(const CurlMulti&) = delete;

    // A handle is removed before it goes.
    void add(CURL* easy);
    void remove(CURL* easy);

    // Ends the turn that waits, or the next one; from any thread.
    void wake();
    // Waits for a socket, a timer of a transfer, a wake or the deadline, and lets the transfers
    // proceed as far as they can.
    void turn(Clock::time_point deadline);

    // Tells of each transfer that has ended since, once. It may be removed meanwhile.
    void drainEnded(const std::function<void(CURL*, CURLcode)>& ended);

private:
    struct MultiDeleter {
        void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
    };
    class Descriptor {
    public:
        explicit Descriptor(int number) : number_(number) {}
        ~Descriptor();
        Descriptor(const Descriptor&) = delete;
        Descriptor& operator=(const Descriptor&) = delete;
        operator int() const { return number_; }

    private:
        int number_;
    };

    static int socketChanged(CURL* easy, curl_socket_t socket, int what, void* self, void*);
    static int closeSocket(void* self, curl_socket_t socket);
    static int timerChanged(CURLM* multi, long milliseconds, void* self);
    // False when none was due.
    bool runTimer();
    void watch(curl_socket_t socket, int what);
    void stopWatchingLeft();

    Descriptor epoll_;
    Descriptor wakeup_;
    std::optional<Clock::time_point> timer_;
    std::vector<curl_socket_t> left_;  // no transfer's any more, and still watched
    // Last, so that it goes first: cleaning up still reports sockets.
    std::unique_ptr<CURLM, MultiDeleter> multi_;
};

}  // namespace orvane::platform
