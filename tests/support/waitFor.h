#pragma once

#include <glib.h>
#include <gtest/gtest.h>

#include <chrono>
#include <source_location>

namespace orvane::tests {

// Runs the main loop until the condition is true; fails after some seconds.
template <typename Condition>
void waitFor(const Condition& condition,
             std::source_location place = std::source_location::current()) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "line " << place.line();
        if (g_main_context_iteration(nullptr, FALSE) == FALSE) {
            g_usleep(1000);
        }
    }
}

}  // namespace orvane::tests
