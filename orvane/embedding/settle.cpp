#include "orvane/embedding/settle.h"

#include <glib.h>

#include "platform/offscreen/OffscreenWindow.h"

namespace orvane::embedding {

bool settle(platform::OffscreenWindow& window, std::chrono::milliseconds patience,
            const bool* cancelled) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + patience;
    const auto mayContinue = [&] {
        return (cancelled == nullptr || !*cancelled) && Clock::now() < deadline;
    };
    const auto hasWork = [&] {
        return g_main_context_pending(nullptr) != FALSE ||
               (window.needsDisplay() && !window.isAnimating());
    };
    do {
        while (mayContinue() && g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
        window.display();
    } while (mayContinue() && hasWork());
    return !hasWork();
}

}  // namespace orvane::embedding
