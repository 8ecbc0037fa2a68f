#pragma once

#include <curl/curl.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/NSData.h"
#include "platform/urlsession/NSError.h"
#include "platform/urlsession/NSHTTPURLResponse.h"
#include "platform/urlsession/NSMutableURLRequest.h"
#include "platform/urlsession/URLHandle.h"
#include "platform/urlsession/URLTask.h"

namespace orvane::platform {

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

    // The handle and the memory outlive the transfer.
    URLTransfer(URLHandle& handle, const URLTask& task, std::size_t maximumHeaderLength,
                URLBodyMemory& memory);
    ~URLTransfer();
    URLTransfer(const URLTransfer&) = delete;
    URLTransfer& operator=(const URLTransfer&) = delete;

    // When it fails unless a byte moves before.
    [[nodiscard]] Clock::time_point deadline() const { return lastActivity_ + timeout_; }

    // It ended with this code. True when it brought an answer that is complete: the library takes a
    // connection that closes within the header for a good end.
    [[nodiscard]] bool end(CURLcode code);
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

    void setCallbacks();
    void setURL(const std::string& url);
    void setMethodAndBody(const NSMutableURLRequest& request);
    void setFields(const NSMutableURLRequest& request);
    void appendField(const std::string& line);

    static int sending(void* self, char*, char*, int, int);
    static std::size_t headerArrived(char* bytes, std::size_t size, std::size_t count, void* self);
    static std::size_t bodyArrived(char* bytes, std::size_t size, std::size_t count, void* self);
    static int progressed(void* self, curl_off_t, curl_off_t down, curl_off_t, curl_off_t up);
    bool take(const char* bytes, std::size_t length);
    void reserveBody(std::size_t capacity);

    URLHandle& handle_;
    int timesSent_ = 0;
    std::unique_ptr<curl_slist, ListDeleter> fields_;
    std::optional<NSData> sentBody_;
    Clock::duration timeout_;
    Clock::time_point lastActivity_;
    curl_off_t moved_ = 0;

    std::size_t headerLength_ = 0;
    std::size_t maximumHeaderLength_;
    bool isHeaderWhole_ = false;
    bool isOver_ = false;  // in good order
    std::vector<unsigned char> body_;
    URLBodyMemory& memory_;

    // Why the transfer was ended from here, and libcurl's own words.
    const char* refusal_ = nullptr;
    char errorBuffer_[CURL_ERROR_SIZE] = {};
};

}  // namespace orvane::platform
