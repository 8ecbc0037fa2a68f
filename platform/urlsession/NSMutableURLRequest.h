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

// What an NSURLSession is to send: a value, copied with its body shared.
class ORVANE_EXPORT NSMutableURLRequest {
public:
    using HeaderFields = std::vector<std::pair<std::string, std::string>>;

    // Without an address the request can be built, and fails when it is sent.
    static NSMutableURLRequest requestWithURL(std::optional<NSURL> url);
    [[nodiscard]] const std::optional<NSURL>& URL() const { return url_; }

    // How many seconds may pass without a byte moving in either direction before the request fails.
    // The clock starts when the request gets its turn on the network and starts again with each
    // step: a slow answer that keeps coming is never cut off.
    void setTimeoutInterval(double seconds) { timeoutInterval_ = seconds; }
    [[nodiscard]] double timeoutInterval() const { return timeoutInterval_; }

    void setHTTPMethod(std::string method);
    [[nodiscard]] const std::string& HTTPMethod() const { return method_; }

    // Replaces the field of that name, in whatever case. A name that is no token, or a line break
    // or another control character in the value, would put a line of its own on the wire: such a
    // field is dropped with a line in the log.
    void setValueForHTTPHeaderField(const NSString& value, const NSString& field);
    [[nodiscard]] const HeaderFields& allHTTPHeaderFields() const { return fields_; }

    void setHTTPBody(NSData body);
    [[nodiscard]] const std::optional<NSData>& HTTPBody() const { return body_; }

    // What a browser sends after an answer with this status sent it on to `url`. A POST becomes a
    // GET after 301 and 302, anything does after 303, and loses its body; 307 and 308 repeat the
    // request. What was meant for one origin only (credentials, cookies) stays there.
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
