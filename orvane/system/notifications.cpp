#include "orvane/system/notifications.h"

#include <utility>

#include "orvane/commons/guardedCall.h"
#include "platform/appkit/NSDesktop.h"

namespace orvane::system {

using platform::NSDesktop;

void showNotification(const Notification& notification, std::function<void()> pressed) {
    std::function<void()> guarded;
    if (pressed) {
        guarded = [pressed = std::move(pressed)] {
            commons::guardedCall("exception of a notification", pressed);
        };
    }
    NSDesktop::current().deliver({notification.tag, notification.title, notification.text},
                                 std::move(guarded));
}

void withdrawNotification(const std::string& tag) {
    NSDesktop::current().withdraw(tag);
}

}  // namespace orvane::system
