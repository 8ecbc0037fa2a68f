#include "platform/urlsession/CurlMulti.h"

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>

namespace orvane::platform {

CurlMulti::Descriptor::~Descriptor() {
    close(number_);
}

CurlMulti::CurlMulti()
    : epoll_(epoll_create1(EPOLL_CLOEXEC)),
      wakeup_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      multi_(curl_multi_init()) {
    watch(wakeup_, CURL_POLL_IN);
    curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETFUNCTION, &CurlMulti::socketChanged);
    curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(multi_.get(), CURLMOPT_TIMERFUNCTION, &CurlMulti::timerChanged);
    curl_multi_setopt(multi_.get(), CURLMOPT_TIMERDATA, this);
    curl_multi_setopt(multi_.get(), CURLMOPT_PIPELINING, CURLPIPE_MULTIPLEX);
    // Left alone, the number of connections kept would follow the number of transfers: after a
    // burst, all but a few would be closed.
    curl_multi_setopt(multi_.get(), CURLMOPT_MAXCONNECTS, 256L);
}

CurlMulti::~CurlMulti() = default;

void CurlMulti::add(CURL* easy) {
    curl_easy_setopt(easy, CURLOPT_CLOSESOCKETFUNCTION, &CurlMulti::closeSocket);
    curl_easy_setopt(easy, CURLOPT_CLOSESOCKETDATA, this);
    curl_multi_add_handle(multi_.get(), easy);
}

void CurlMulti::remove(CURL* easy) {
    curl_multi_remove_handle(multi_.get(), easy);
}

void CurlMulti::wake() {
    eventfd_write(wakeup_, 1);
}

void CurlMulti::turn(Clock::time_point deadline) {
    // What was added since starts now, on the sockets that others have just left.
    const bool hasStarted = runTimer();
    stopWatchingLeft();
    const auto until = timer_ ? std::min(*timer_, deadline) : deadline;
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now()).count();
    constexpr std::int64_t longest = 3'600'000;
    std::array<epoll_event, 64> events{};
    // Whoever started may have ended already, and is to be told of first.
    const int count =
        epoll_wait(epoll_, events.data(), static_cast<int>(events.size()),
                   hasStarted ? 0 : static_cast<int>(std::clamp<std::int64_t>(wait, 0, longest)));
    int running = 0;
    for (int i = 0; i < count; ++i) {
        const epoll_event& event = events[static_cast<std::size_t>(i)];
        if (event.data.fd == wakeup_) {
            eventfd_t ignored = 0;
            eventfd_read(wakeup_, &ignored);
            continue;
        }
        const int what = ((event.events & EPOLLIN) != 0 ? CURL_CSELECT_IN : 0) |
                         ((event.events & EPOLLOUT) != 0 ? CURL_CSELECT_OUT : 0) |
                         ((event.events & (EPOLLERR | EPOLLHUP)) != 0 ? CURL_CSELECT_ERR : 0);
        curl_multi_socket_action(multi_.get(), event.data.fd, what, &running);
    }
}

bool CurlMulti::runTimer() {
    if (!timer_ || *timer_ > Clock::now()) {
        return false;
    }
    timer_.reset();
    int running = 0;
    curl_multi_socket_action(multi_.get(), CURL_SOCKET_TIMEOUT, 0, &running);
    return true;
}

void CurlMulti::drainEnded(const std::function<void(CURL*, CURLcode)>& ended) {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
        if (message->msg == CURLMSG_DONE) {
            ended(message->easy_handle, message->data.result);
        }
    }
}

int CurlMulti::socketChanged(CURL*, curl_socket_t socket, int what, void* self, void*) {
    static_cast<CurlMulti*>(self)->watch(socket, what);
    return 0;
}

int CurlMulti::closeSocket(void* self, curl_socket_t socket) {
    // Its number may be another thread's the moment after.
    std::erase(static_cast<CurlMulti*>(self)->left_, socket);
    return close(socket);
}

void CurlMulti::watch(curl_socket_t socket, int what) {
    if (what == CURL_POLL_REMOVE) {
        // A kept connection changes hands with every transfer. The next one mostly comes at once.
        left_.push_back(socket);
        return;
    }
    std::erase(left_, socket);
    epoll_event event{};
    event.events = (what != CURL_POLL_OUT ? EPOLLIN : 0U) | (what != CURL_POLL_IN ? EPOLLOUT : 0U);
    event.data.fd = socket;
    // A socket that was closed is out of the set without a word, and its number comes back.
    if (epoll_ctl(epoll_, EPOLL_CTL_MOD, socket, &event) != 0 && errno == ENOENT) {
        epoll_ctl(epoll_, EPOLL_CTL_ADD, socket, &event);
    }
}

void CurlMulti::stopWatchingLeft() {
    for (const curl_socket_t socket : left_) {
        epoll_ctl(epoll_, EPOLL_CTL_DEL, socket, nullptr);
    }
    left_.clear();
}

int CurlMulti::timerChanged(CURLM*, long milliseconds, void* self) {
    auto& timer = static_cast<CurlMulti*>(self)->timer_;
    if (milliseconds < 0) {
        timer.reset();
    } else {
        timer = Clock::now() + std::chrono::milliseconds(milliseconds);
    }
    return 0;
}

}  // namespace orvane::platform
