#include <csignal>
#include <string>
#include <vector>

#include "tests/host/HostTest.h"
#include "tests/host/XWindow.h"

namespace orvane::tests {

using GTKHost = HostTest;

TEST_F(GTKHost, ShowsWhatTheOffscreenHostRenders) {
    const std::string events = write("events", "0 down 20 30\n0.1 move 70 80\n0.2 up 120 130\n");
    for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{
             {"--size", "500x300"}, {"--scale", "2", "--events", events}}) {
        std::vector<std::string> offscreen = options;
        offscreen.emplace_back("--offscreen");
        const Picture shown = snapshot(options);
        const Picture rendered = snapshot(offscreen);
        EXPECT_EQ(shown.width, rendered.width);
        EXPECT_TRUE(shown == rendered) << ::testing::PrintToString(options);
    }
}

TEST_F(GTKHost, ReportsAResizeToTheDisplayInPoints) {
    HostProcess host({"--size", "600x400", "--scale", "2", probe});
    ASSERT_TRUE(host.awaitOutput("started 600x400"));
    XWindow().resize(600, 1000);
    EXPECT_TRUE(host.awaitOutput("size 300x500 portrait\n"));
    host.sendSignal(SIGTERM);
    EXPECT_EQ(host.finish().exitCode, 0);
}

TEST_F(GTKHost, EndsCleanlyWhenItsWindowIsClosedOrItIsSignaled) {
    HostProcess signaled({probe});
    ASSERT_TRUE(signaled.awaitOutput("started "));
    signaled.sendSignal(SIGINT);
    EXPECT_EQ(signaled.finish().exitCode, 0);
    HostProcess closed({probe});
    XWindow().close();
    const auto result = closed.finish();
    EXPECT_EQ(result.exitCode, 0) << result.errors;
}

}  // namespace orvane::tests
