#pragma once

#include <curl/curl.h>

#include <memory>

namespace orvane::platform {

struct NSURLSessionConfiguration;

// A handle of libcurl's that serves one transfer after another. What every transfer of a session
// wants is told to it once; what a transfer tells it, the transfer takes back. The session's
// thread's own.
class URLHandle {
public:
    URLHandle(CURLSH* share, const NSURLSessionConfiguration& configuration);
    URLHandle(const URLHandle&) = delete;
    URLHandle& operator=(const URLHandle&) = delete;

    [[nodiscard]] CURL* get() const { return easy_.get(); }

    template <typename Value>
    void set(CURLoption option, Value value) {
        curl_easy_setopt(easy_.get(), option, value);
    }

    // As new, whatever has happened on it.
    void reset();

private:
    struct Deleter {
        void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
    };

    void prepare();

    CURLSH* share_;
    const NSURLSessionConfiguration& configuration_;
    std::unique_ptr<CURL, Deleter> easy_;
};

}  // namespace orvane::platform
