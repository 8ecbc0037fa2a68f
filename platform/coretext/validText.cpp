#include "platform/coretext/validText.h"

#include <glib.h>

namespace orvane::platform {

bool isValidText(std::string_view text) {
    // This check also rejects zero bytes.
    return g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != FALSE;
}

std::string validText(std::string_view text) {
    text = text.substr(0, kLongestText);
    // Nearly all texts are valid and are copied at once.
    if (isValidText(text)) {
        return std::string(text);
    }
    static constexpr std::string_view replacement = "\xEF\xBF\xBD";
    std::string valid;
    valid.reserve(text.size() + replacement.size());
    while (!text.empty()) {
        const char* end = nullptr;
        g_utf8_validate(text.data(), static_cast<gssize>(text.size()), &end);
        const auto good = static_cast<std::size_t>(end - text.data());
        valid.append(text.substr(0, good));
        text.remove_prefix(good);
        if (!text.empty()) {
            valid.append(replacement);
            text.remove_prefix(1);
        }
    }
    return valid;
}

}  // namespace orvane::platform
