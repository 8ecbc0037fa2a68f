#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "orvane/commons/ByteArray.h"
#include "orvane/commons/Export.h"

namespace orvane::network {

// The response to a Request, as data. RequestService fills it in. Afterwards it is only read, and
// may be copied and read on any thread.
//
// The body is a view of bytes that the response and its copies keep alive together. An application
// that needs the body later keeps the response: the ByteArray alone does not own the bytes.
class ORVANE_EXPORT Response {
public:
    // Sets a header field; a second value for the same name replaces the first.
    //
    // RequestService writes well-known names in their standard form ("Content-Type"), and others as
    // the server sent them. It joins the values of fields with the same name by ", ".
    void addHeader(const std::string& name, const std::string& value) { headers_[name] = value; }
    // The header fields by name.
    [[nodiscard]] const std::unordered_map<std::string, std::string>& getHeaders() const {
        return headers_;
    }

    // `storage` owns the bytes of the body; if it is null, the caller keeps them alive.
    void setBody(const commons::ByteArray& body, std::shared_ptr<const void> storage = nullptr);
    [[nodiscard]] const commons::ByteArray& getBody() const { return body_; }

    // The HTTP status code, or -1 if the server sent no complete response.
    void setStatusCode(std::int32_t code) { statusCode_ = code; }
    [[nodiscard]] std::int32_t getStatusCode() const { return statusCode_; }

    // Why the request failed, in words for people; empty if it succeeded.
    void setStatusMessage(const std::string& message) { statusMessage_ = message; }
    [[nodiscard]] const std::string& getStatusMessage() const { return statusMessage_; }

    // Whether the code is from 200 to 399. A redirection that was not followed is a success, too:
    [[nodiscard]] bool isOk() const { return isOkStatus(statusCode_); }
    [[nodiscard]] static bool isOkStatus(std::int32_t code) { return code >= 200 && code <= 399; }

private:
    commons::ByteArray body_;
    std::unordered_map<std::string, std::string> headers_;
    std::int32_t statusCode_ = -1;
    std::string statusMessage_;
    std::shared_ptr<const void> bodyStorage_;
};

}  // namespace orvane::network
