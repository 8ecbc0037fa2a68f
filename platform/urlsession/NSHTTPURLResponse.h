#pragma once

#include <map>
#include <string>
#include <utility>

#include "orvane/commons/Export.h"
#include "platform/foundation/NSString.h"

namespace orvane::platform {

// The head of a server's answer.
class ORVANE_EXPORT NSHTTPURLResponse {
public:
    struct FieldOrder {
        bool operator()(const NSString& a, const NSString& b) const;
    };
    // Found under its name in whatever case.
    using HeaderFields = std::map<NSString, NSString, FieldOrder>;

    NSHTTPURLResponse(int statusCode, HeaderFields fields)
        : statusCode_(statusCode), fields_(std::move(fields)) {}

    [[nodiscard]] int statusCode() const { return statusCode_; }
    // Well-known names are spelt the standard way, whatever case the server used; the bytes of
    // names and values are taken as Latin-1.
    [[nodiscard]] const HeaderFields& allHeaderFields() const { return fields_; }

    // A few words on the code, or on its class for a code without any.
    static NSString localizedStringForStatusCode(int statusCode);

private:
    int statusCode_;
    HeaderFields fields_;
};

}  // namespace orvane::platform
