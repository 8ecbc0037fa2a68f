// The rival: the same requests with libcurl alone. One thread runs all transfers on the multi
// interface and keeps the connections; callers on other threads pass it requests and wait.
#include <curl/curl.h>

#include <atomic>
#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <semaphore>
#include <thread>
#include <utility>
#include <vector>

#include "bench/network/Scenes.h"

namespace {

// A request that can be sent repeatedly.
class Transfer {
public:
    explicit Transfer(const std::string& url) : easy_(curl_easy_init(), &curl_easy_cleanup) {
        curl_easy_setopt(easy_.get(), CURLOPT_URL, url.c_str());
        curl_easy_setopt(easy_.get(), CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(easy_.get(), CURLOPT_USERAGENT, "Orvane");
        curl_easy_setopt(easy_.get(), CURLOPT_ACCEPT_ENCODING, "");
        curl_easy_setopt(easy_.get(), CURLOPT_WRITEFUNCTION, &Transfer::append);
        curl_easy_setopt(easy_.get(), CURLOPT_WRITEDATA, this);
        curl_easy_setopt(easy_.get(), CURLOPT_PRIVATE, this);
    }
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    CURL* handle() const { return easy_.get(); }

    // Called on the thread of the transfers for each response.
    std::function<void()> answered;

    void end(CURLcode code) {
        // The caller takes the body, so the next response starts with an empty one.
        const std::string body = std::move(body_);
        if (code != CURLE_OK || body.size() < bench::kSmallLength) {
            std::abort();
        }
        answered();
    }

private:
    static std::size_t append(char* bytes, std::size_t size, std::size_t count, void* self) {
        auto& transfer = *static_cast<Transfer*>(self);
        if (transfer.body_.empty()) {
            curl_off_t length = 0;
            curl_easy_getinfo(transfer.handle(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
            transfer.body_.reserve(static_cast<std::size_t>(length));
        }
        transfer.body_.append(bytes, size * count);
        return size * count;
    }

    std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> easy_;
    std::string body_;
};

// The thread of all transfers.
class Session {
public:
    Session() : thread_([this] { run(); }) {}
    ~Session() {
        send(nullptr);
        thread_.join();
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Thread-safe. The session uses the transfer until it has called `answered`.
    void send(Transfer* transfer) {
        {
            const std::lock_guard lock(mutex_);
            sent_.push_back(transfer);
        }
        if (std::this_thread::get_id() != thread_.get_id()) {
            curl_multi_wakeup(multi_.get());
        }
    }

private:
    void run() {
        for (;;) {
            std::vector<Transfer*> sent;
            {
                const std::lock_guard lock(mutex_);
                sent.swap(sent_);
            }
            for (const Transfer* const transfer : sent) {
                if (transfer == nullptr) {
                    return;
                }
                curl_multi_add_handle(multi_.get(), transfer->handle());
            }
            int running = 0;
            curl_multi_perform(multi_.get(), &running);
            bool hasEnded = false;
            int left = 0;
            while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
                CURL* const easy = message->easy_handle;
                const CURLcode code = message->data.result;
                Transfer* transfer = nullptr;
                curl_easy_getinfo(easy, CURLINFO_PRIVATE, &transfer);
                curl_multi_remove_handle(multi_.get(), easy);
                transfer->end(code);
                hasEnded = true;
            }
            if (!hasEnded) {
                curl_multi_poll(multi_.get(), nullptr, 0, 1000, nullptr);
            }
        }
    }

    std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)> multi_{curl_multi_init(),
                                                                 &curl_multi_cleanup};
    std::mutex mutex_;
    std::vector<Transfer*> sent_;
    std::thread thread_;
};

Session& session() {
    static Session session;
    return session;
}

// Sends requests one after the other and waits for each response.
void perform(Transfer& transfer, int count) {
    std::binary_semaphore answered(0);
    transfer.answered = [&answered] { answered.release(); };
    for (int i = 0; i < count; ++i) {
        session().send(&transfer);
        answered.acquire();
    }
}

void oneByOne(const std::string& url, int count) {
    static Transfer transfer(url);
    curl_easy_setopt(transfer.handle(), CURLOPT_URL, url.c_str());
    perform(transfer, count);
}

void inFlight(const std::string& url, int count) {
    std::vector<std::unique_ptr<Transfer>> transfers;
    std::atomic<int> started = 0;
    std::atomic<int> ended = 0;
    std::binary_semaphore allEnded(0);
    for (int i = 0; i < bench::kInFlight; ++i) {
        transfers.push_back(std::make_unique<Transfer>(url));
        Transfer* const transfer = transfers.back().get();
        transfer->answered = [&, transfer] {
            if (started++ < count) {
                session().send(transfer);
            }
            if (++ended == count) {
                allEnded.release();
            }
        };
    }
    for (const auto& transfer : transfers) {
        ++started;
        session().send(transfer.get());
    }
    allEnded.acquire();
}

// Passes values between threads.
class Queue {
public:
    void push(bool value) {
        {
            const std::lock_guard lock(mutex_);
            values_.push_back(value);
        }
        arrived_.notify_one();
    }
    bool pop() {
        std::unique_lock lock(mutex_);
        arrived_.wait(lock, [this] { return !values_.empty(); });
        const bool value = values_.front();
        values_.pop_front();
        return value;
    }

private:
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<bool> values_;
};

// Workers wait for the transfers, and the main thread waits for the workers.
void toMainThread(const std::string& url, int count) {
    Queue wanted;
    Queue answers;
    std::vector<std::thread> workers;
    for (int i = 0; i < bench::kInFlight; ++i) {
        wanted.push(true);
        workers.emplace_back([&] {
            Transfer transfer(url);
            while (wanted.pop()) {
                perform(transfer, 1);
                answers.push(true);
            }
        });
    }
    for (int answered = 0; answered < count; ++answered) {
        answers.pop();
        wanted.push(answered + bench::kInFlight < count);
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
}

}  // namespace

int main() {
    curl_global_init(CURL_GLOBAL_ALL);
    bench::runScenes({oneByOne, inFlight, toMainThread});
}
