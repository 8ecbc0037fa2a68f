// The rival: plain libcurl with its connections kept, as its examples show it. One by one on the
// easy interface; at once on the multi interface, all on one thread; to the main thread, a thread a
// transfer with the easy interface.
#include <curl/curl.h>

#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <utility>

#include "bench/network/Scenes.h"

namespace {

class Transfer {
public:
    explicit Transfer(const std::string& url) : easy_(curl_easy_init(), &curl_easy_cleanup) {
        curl_easy_setopt(easy_.get(), CURLOPT_URL, url.c_str());
        curl_easy_setopt(easy_.get(), CURLOPT_WRITEFUNCTION, &Transfer::append);
        curl_easy_setopt(easy_.get(), CURLOPT_WRITEDATA, this);
    }
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    CURL* handle() const { return easy_.get(); }

    void check(CURLcode code) {
        // Whoever asked for the body takes it, and the next one starts with nothing.
        const std::string body = std::move(body_);
        if (code != CURLE_OK || body.size() < 100) {
            std::abort();
        }
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

void oneByOne(const std::string& url, int count) {
    static Transfer transfer(url);
    curl_easy_setopt(transfer.handle(), CURLOPT_URL, url.c_str());
    for (int i = 0; i < count; ++i) {
        transfer.check(curl_easy_perform(transfer.handle()));
    }
}

void inFlight(const std::string& url, int count) {
    static const std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)> multi(curl_multi_init(),
                                                                             &curl_multi_cleanup);
    std::unordered_map<CURL*, std::unique_ptr<Transfer>> transfers;
    int started = 0;
    int answered = 0;
    const auto start = [&](CURL* easy) {
        if (started < count) {
            ++started;
            curl_multi_add_handle(multi.get(), easy);
        }
    };
    for (int i = 0; i < bench::kInFlight; ++i) {
        auto transfer = std::make_unique<Transfer>(url);
        CURL* const easy = transfer->handle();
        transfers.emplace(easy, std::move(transfer));
        start(easy);
    }
    while (answered < count) {
        int running = 0;
        curl_multi_perform(multi.get(), &running);
        int left = 0;
        while (const CURLMsg* message = curl_multi_info_read(multi.get(), &left)) {
            CURL* const easy = message->easy_handle;
            transfers.at(easy)->check(message->data.result);
            curl_multi_remove_handle(multi.get(), easy);
            ++answered;
            start(easy);
        }
        if (answered < count) {
            curl_multi_poll(multi.get(), nullptr, 0, 1000, nullptr);
        }
    }
}

// Hands things over between threads.
template <typename T>
class Queue {
public:
    void push(T value) {
        {
            const std::lock_guard lock(mutex_);
            values_.push_back(std::move(value));
        }
        arrived_.notify_one();
    }
    T pop() {
        std::unique_lock lock(mutex_);
        arrived_.wait(lock, [this] { return !values_.empty(); });
        T value = std::move(values_.front());
        values_.pop_front();
        return value;
    }

private:
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<T> values_;
};

void toMainThread(const std::string& url, int count) {
    Queue<bool> wanted;
    Queue<CURLcode> answers;
    std::vector<std::thread> workers;
    for (int i = 0; i < bench::kInFlight; ++i) {
        wanted.push(true);
        workers.emplace_back([&] {
            Transfer transfer(url);
            while (wanted.pop()) {
                const CURLcode code = curl_easy_perform(transfer.handle());
                transfer.check(code);
                answers.push(code);
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
    const bench::LocalServer server;
    bench::runScenes(server, {oneByOne, inFlight, toMainThread});
}
