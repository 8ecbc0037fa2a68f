#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/NSData.h"
#include "platform/urlsession/BodyDecoder.h"
#include "platform/urlsession/CurlLibrary.h"
#include "platform/urlsession/NSError.h"
#include "platform/urlsession/NSHTTPURLResponse.h"
#include "platform/urlsession/URLHandle.h"

namespace orvane::platform {

class NSMutableURLRequest;
struct NSURLSessionConfiguration;
struct URLTask;

// The memory of the bodies that a session is receiving, in bytes. Used by the session's thread
// only.
struct URLBodyMemory {
    std::size_t limit = 0;
    std::size_t used = 0;
};

// One exchange with a server, without its redirections: it sets the options of the request and
// receives the response. Remove its handle from the multi handle before you destroy it.
class URLTransfer {
public:
    using Clock = std::chrono::steady_clock;

    // The arguments must outlive the transfer.
    URLTransfer(URLHandle& handle, const URLTask& task,
                const NSURLSessionConfiguration& configuration, URLBodyMemory& memory);
    ~URLTransfer();
    URLTransfer(const URLTransfer&) = delete;
    URLTransfer& operator=(const URLTransfer&) = delete;

    // The transfer times out at this time if no byte is sent or received before.
    [[nodiscard]] Clock::time_point deadline() const { return lastActivity_ + timeout_; }
    // Whether the final header of the response is not complete.
    [[nodiscard]] bool isReceivingHeader() const;
    // Postpones the deadline for activity that libcurl does not report.
    void noteActivity(Clock::time_point time);
    // The local port of the transfer's connection. It is 0 before the request was sent, and when
    // other transfers may use the same connection: HTTP/2 is possible for a secure one until its
    // first response shows another version.
    [[nodiscard]] int ownConnectionPort() const;

    // Called with libcurl's result at the end of the transfer. Returns whether the response is
    // complete.
    [[nodiscard]] bool end(CURLcode code);

    // For a complete response:
    [[nodiscard]] int statusCode() const;
    // The target of a redirection that is to be followed.
    [[nodiscard]] std::optional<std::string> redirection() const;
    [[nodiscard]] NSHTTPURLResponse response() const;
    [[nodiscard]] NSData takeBody();

    // For a response that is not complete:
    [[nodiscard]] NSError error(CURLcode code) const;

private:
    struct ListDeleter {
        void operator()(curl_slist* list) const { curl().slistFreeAll(list); }
    };

    void setCallbacks();
    void setURL(const std::string& url);
    void setMethodAndBody(const NSMutableURLRequest& request);
    void setFields(const NSMutableURLRequest& request);
    void appendField(const std::string& line);

    static int sending(void* self, char*, char*, int, int localPort);
    static std::size_t headerArrived(char* bytes, std::size_t size, std::size_t count, void* self);
    static std::size_t bodyArrived(char* bytes, std::size_t size, std::size_t count, void* self);
    static int progressed(void* self, curl_off_t, curl_off_t down, curl_off_t, curl_off_t up);
    void startBody();
    // Both return false when the transfer is refused.
    bool decode(std::string_view bytes);
    bool take(std::string_view bytes);

    URLHandle& handle_;
    bool isSecure_ = false;
    int timesSent_ = 0;
    int localPort_ = 0;
    std::unique_ptr<curl_slist, ListDeleter> fields_;
    std::optional<NSData> sentBody_;
    Clock::duration timeout_;
    Clock::time_point lastActivity_;
    curl_off_t moved_ = 0;

    const NSURLSessionConfiguration& configuration_;
    std::size_t headerLength_ = 0;
    std::size_t headerLines_ = 0;
    bool isHeaderComplete_ = false;
    bool hasSucceeded_ = false;
    bool hasBody_ = false;
    std::unique_ptr<BodyDecoder> decoder_;  // Null if the body is not encoded.
    std::vector<unsigned char> body_;
    URLBodyMemory& memory_;

    // Why the session itself ended the transfer, or null.
    const char* refusal_ = nullptr;
    char errorBuffer_[CURL_ERROR_SIZE] = {};
};

}  // namespace orvane::platform
