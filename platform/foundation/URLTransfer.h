#pragma once

#include <curl/curl.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/NSData.h"
#include "platform/foundation/NSError.h"
#include "platform/foundation/NSHTTPURLResponse.h"
#include "platform/foundation/NSMutableURLRequest.h"
#include "platform/foundation/NSURLSessionConfiguration.h"

namespace orvane::platform {

struct CurlEasyDeleter {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
using CurlEasy = std::unique_ptr<CURL, CurlEasyDeleter>;

// What the bodies on their way in may hold together. One thread's own.
struct URLBodyMemory {
    std::size_t limit = 0;
    std::size_t used = 0;
};

// One exchange with a server, a redirection not followed: the request as libcurl is told it, and
// what came back. It borrows a handle, which must be out of every multi handle before it goes.
class URLTransfer {
public:
    using Clock = std::chrono::steady_clock;

    // Everything but the request outlives the transfer. The handle is given back as a new one.
    URLTransfer(CURL* easy, CURLSH* share, const NSMutableURLRequest& request,
                const NSURLSessionConfiguration& configuration, URLBodyMemory& memory);
    ~URLTransfer();
    URLTransfer(const URLTransfer&) = delete;
    URLTransfer& operator=(const URLTransfer&) = delete;

    // When it fails unless a byte moves before.
    [[nodiscard]] Clock::time_point deadline() const { return lastActivity_ + timeout_; }

    // Whether, ended with this code, it brought an answer that is complete. The library takes a
    // connection that closes within the header for a good end.
    [[nodiscard]] bool isWhole(CURLcode code) const;
    // Once it is whole:
    [[nodiscard]] int statusCode() const;
    // Where a redirection that is to be followed leads to.
    [[nodiscard]] std::optional<std::string> redirection() const;
    [[nodiscard]] NSHTTPURLResponse response() const;
    [[nodiscard]] NSData takeBody();

    // Once it is not:
    [[nodiscard]] NSError error(CURLcode code) const;

private:
    struct ListDeleter {
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };

    template <typename Value>
    void set(CURLoption option, Value value) {
        curl_easy_setopt(easy_, option, value);
    }
    void setTransport(const NSURLSessionConfiguration& configuration);
    void setCallbacks();
    void setURL(const std::string& url);
    void setMethodAndBody(const NSMutableURLRequest& request);
    void setFields(const NSMutableURLRequest& request);
    void appendField(const std::string& line);

    static std::size_t headerArrived(char* bytes, std::size_t size, std::size_t count, void* self);
    static std::size_t bodyArrived(char* bytes, std::size_t size, std::size_t count, void* self);
    static int progressed(void* self, curl_off_t, curl_off_t down, curl_off_t, curl_off_t up);
    bool take(const char* bytes, std::size_t length);
    void reserveBody(std::size_t capacity);

    CURL* easy_;
    std::unique_ptr<curl_slist, ListDeleter> fields_;
    std::optional<NSData> sentBody_;
    Clock::duration timeout_;
    Clock::time_point lastActivity_;
    curl_off_t moved_ = 0;

    std::size_t headerLength_ = 0;
    std::size_t maximumHeaderLength_;
    bool isHeaderWhole_ = false;
    std::vector<unsigned char> body_;
    URLBodyMemory& memory_;

    // Why the transfer was ended from here, and libcurl's own words.
    const char* refusal_ = nullptr;
    char errorBuffer_[CURL_ERROR_SIZE] = {};
};

}  // namespace orvane::platform
