#pragma once

#include <optional>
#include <string>

#include "orvane/commons/Export.h"
#include "platform/foundation/NSString.h"

namespace orvane::platform {

// A valid http or https address.
class ORVANE_EXPORT NSURL {
public:
    // Spaces and characters outside ASCII are encoded in the path and the query; existing escapes
    // are kept. Returns nothing for text that is not an address, and for all other schemes.
    static std::optional<NSURL> URLWithString(const NSString& text);

    [[nodiscard]] const std::string& absoluteString() const { return absoluteString_; }
    // Scheme, host and port in a normal form ("http://host:80"), for comparisons: credentials are
    // sent to one origin only.
    [[nodiscard]] const std::string& origin() const { return origin_; }

private:
    NSURL(std::string absoluteString, std::string origin);

    std::string absoluteString_;
    std::string origin_;
};

}  // namespace orvane::platform
