#include "platform/appkit/NSPasteboard.h"

namespace orvane::platform {

NSPasteboard& NSPasteboard::generalPasteboard() {
    static NSPasteboard pasteboard;
    return pasteboard;
}

}  // namespace orvane::platform
