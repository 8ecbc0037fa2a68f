#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "orvane/commons/ByteArray.h"
#include "orvane/commons/Export.h"

namespace orvane::network {

// What came back for a Request, as data. RequestService fills it; after that it only gets read and
// may be copied and handed between threads.
//
// The body is a view. Its bytes live for as long as this response or any copy of it: the response
// holds their storage beside the view and copies share it. Keep a response, not the ByteArray
// alone.
class ORVANE_EXPORT Response {
public:
    // Header names are spelt as the field's standards spell them ("Content-Type") where they are
    // well known, and as the server sent them otherwise. Values that a server sent under one name
    // several times are joined by ", ".
    void addHeader(const std::string& name, const std::string& value) { headers_[name] = value; }
    [[nodiscard]] const std::unordered_map<std::string, std::string>& getHeaders() const {
        return headers_;
    }

    // `storage` is what keeps the bytes alive; without it the caller does.
    void setBody(const commons::ByteArray& body, std::shared_ptr<const void> storage = nullptr);
    [[nodiscard]] const commons::ByteArray& getBody() const { return body_; }

    // -1 as long as no response came.
    void setStatusCode(std::int32_t code) { statusCode_ = code; }
    [[nodiscard]] std::int32_t getStatusCode() const { return statusCode_; }

    void setStatusMessage(const std::string& message) { statusMessage_ = message; }
    [[nodiscard]] const std::string& getStatusMessage() const { return statusMessage_; }

    // True from 200 to 399: a redirection that was not followed counts as a success.
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
