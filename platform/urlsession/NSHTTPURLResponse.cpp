#include "platform/urlsession/NSHTTPURLResponse.h"

#include <glib.h>

#include <algorithm>
#include <array>

namespace orvane::platform {

namespace {

struct StatusText {
    int code;
    const char* text;
};

constexpr std::array kStatusTexts{
    StatusText{100, "continue"},
    StatusText{101, "switching protocols"},
    StatusText{200, "no error"},
    StatusText{201, "created"},
    StatusText{202, "accepted"},
    StatusText{203, "non authoritative information"},
    StatusText{204, "no content"},
    StatusText{205, "reset content"},
    StatusText{206, "partial content"},
    StatusText{300, "multiple choices"},
    StatusText{301, "moved permanently"},
    StatusText{302, "found"},
    StatusText{303, "see other"},
    StatusText{304, "not modified"},
    StatusText{305, "needs proxy"},
    StatusText{307, "temporarily redirected"},
    StatusText{308, "permanently redirected"},
    StatusText{400, "bad request"},
    StatusText{401, "unauthorized"},
    StatusText{402, "payment required"},
    StatusText{403, "forbidden"},
    StatusText{404, "not found"},
    StatusText{405, "method not allowed"},
    StatusText{406, "unacceptable"},
    StatusText{407, "proxy authentication required"},
    StatusText{408, "request timed out"},
    StatusText{409, "conflict"},
    StatusText{410, "no longer exists"},
    StatusText{411, "length required"},
    StatusText{412, "precondition failed"},
    StatusText{413, "request too large"},
    StatusText{414, "requested URL too long"},
    StatusText{415, "unsupported media type"},
    StatusText{416, "requested range not satisfiable"},
    StatusText{417, "expectation failed"},
    StatusText{421, "misdirected request"},
    StatusText{422, "unprocessable content"},
    StatusText{423, "locked"},
    StatusText{424, "failed dependency"},
    StatusText{425, "too early"},
    StatusText{426, "upgrade required"},
    StatusText{428, "precondition required"},
    StatusText{429, "too many requests"},
    StatusText{431, "header fields too large"},
    StatusText{451, "unavailable for legal reasons"},
    StatusText{500, "internal server error"},
    StatusText{501, "unimplemented"},
    StatusText{502, "bad gateway"},
    StatusText{503, "service unavailable"},
    StatusText{504, "gateway timed out"},
    StatusText{505, "unsupported version"},
    StatusText{507, "insufficient storage"},
    StatusText{508, "loop detected"},
    StatusText{511, "network authentication required"},
};

const char* textOfClass(int code) {
    switch (code / 100) {
        case 1:
            return "informational";
        case 2:
            return "success";
        case 3:
            return "redirected";
        case 4:
            return "client error";
        default:
            return "server error";
    }
}

}  // namespace

bool NSHTTPURLResponse::FieldOrder::operator()(const NSString& a, const NSString& b) const {
    return g_ascii_strcasecmp(a.UTF8String().c_str(), b.UTF8String().c_str()) < 0;
}

NSString NSHTTPURLResponse::localizedStringForStatusCode(int statusCode) {
    const auto* found = std::ranges::find(kStatusTexts, statusCode, &StatusText::code);
    const char* text = found == kStatusTexts.end() ? textOfClass(statusCode) : found->text;
    return NSString::initWithUTF8String(text).value_or(NSString());
}

}  // namespace orvane::platform
