#pragma once

#include <optional>
#include <string>

#include "orvane/commons/Export.h"
#include "platform/foundation/NSString.h"

namespace orvane::platform {

// An http or https address, known to be well formed.
class ORVANE_EXPORT NSURL {
public:
    // Blanks and characters beyond ASCII in the path and the query are encoded; nothing
    // that is encoded already is touched. Nothing for text that is no address, and for every other
    // scheme: no other is ever spoken.
    static std::optional<NSURL> URLWithString(const NSString& text);

    [[nodiscard]] const std::string& absoluteString() const { return absoluteString_; }
    // Scheme, host and port, comparable: what a redirection must share to see the same secrets.
    [[nodiscard]] const std::string& origin() const { return origin_; }

private:
    NSURL(std::string absoluteString, std::string origin);

    std::string absoluteString_;
    std::string origin_;
};

}  // namespace orvane::platform
