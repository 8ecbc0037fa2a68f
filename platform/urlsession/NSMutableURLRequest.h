#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/foundation/NSData.h"
#include "platform/foundation/NSString.h"
#include "platform/urlsession/NSURL.h"

namespace orvane::platform {

// A request for an NSURLSession. Copies share the body.
class ORVANE_EXPORT NSMutableURLRequest {
public:
    using HeaderFields = std::vector<std::pair<std::string, std::string>>;

    // A request without a URL fails when it is sent.
    static NSMutableURLRequest requestWithURL(std::optional<NSURL> url);
    [[nodiscard]] const std::optional<NSURL>& URL() const { return url_; }

    // The request fails when no byte was sent or received for this many seconds. The time starts
    // when the session starts to send the request, and again with every byte: a slow response is
    // not cut off. 60 by default.
    void setTimeoutInterval(double seconds) { timeoutInterval_ = seconds; }
    [[nodiscard]] double timeoutInterval() const { return timeoutInterval_; }

    // "GET" by default.
    void setHTTPMethod(std::string method);
    [[nodiscard]] const std::string& HTTPMethod() const { return method_; }

    // Replaces the field with that name; case is ignored. A field is dropped with a line in the log
    // if its name is not a token or its value contains a line break or another control character,
    // because it could smuggle further fields into the request.
    void setValueForHTTPHeaderField(const NSString& value, const NSString& field);
    [[nodiscard]] const HeaderFields& allHTTPHeaderFields() const { return fields_; }

    void setHTTPBody(NSData body);
    [[nodiscard]] const std::optional<NSData>& HTTPBody() const { return body_; }

    // Returns the request that follows a redirection with this status to `url`, by the rules of the
    // Fetch standard. A POST becomes a GET without a body after 301 and 302, as does every method
    // after 303; 307 and 308 repeat the request. Credentials and cookies are not sent to another
    // origin.
    [[nodiscard]] NSMutableURLRequest redirected(int statusCode, std::optional<NSURL> url) const;

private:
    void removeField(const char* name);

    std::optional<NSURL> url_;
    double timeoutInterval_ = 60;
    std::string method_ = "GET";
    HeaderFields fields_;
    std::optional<NSData> body_;
};

}  // namespace orvane::platform
