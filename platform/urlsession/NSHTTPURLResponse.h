#pragma once

#include <map>
#include <string>
#include <utility>

#include "orvane/commons/Export.h"
#include "platform/foundation/NSString.h"

namespace orvane::platform {

// The status and the header fields of a response.
class ORVANE_EXPORT NSHTTPURLResponse {
public:
    // Compares names without regard to case.
    struct FieldOrder {
        bool operator()(const NSString& a, const NSString& b) const;
    };
    // Values by name.
    using HeaderFields = std::map<NSString, NSString, FieldOrder>;

    NSHTTPURLResponse(int statusCode, HeaderFields fields)
        : statusCode_(statusCode), fields_(std::move(fields)) {}

    [[nodiscard]] int statusCode() const { return statusCode_; }
    // Well-known names have their standard form ("Content-Type"), others the server's. The bytes of
    // names and values are read as Latin-1. Values of fields with the same name are joined by ", ".
    [[nodiscard]] const HeaderFields& allHeaderFields() const { return fields_; }

    // Describes the code in a few words ("not found"), or its class if the code is not known.
    static NSString localizedStringForStatusCode(int statusCode);

private:
    int statusCode_;
    HeaderFields fields_;
};

}  // namespace orvane::platform
