#include "tests/host/HostTest.h"

namespace orvane::tests {

using NetworkExample = HostTest;

TEST_F(NetworkExample, SaysThatTheServerIsGone) {
    const std::string failure = "Failed to connect to 127.0.0.1 port 1 ";
    std::size_t failures = 0;
    // A slow machine needs more time for the answers.
    for (const char* moment : {"0.5", "2", "8", "20"}) {
        // Without XDG_DATA_DIRS the system's data are used: they contain the desktop's proxy
        // settings. All requests go to a proxy that does not exist.
        const std::string tree =
            runWell({"--offscreen", "--at", moment, "--dump-tree", ORVANE_NETWORK_EXAMPLE},
                    {"-u", "XDG_DATA_DIRS", "-u", "no_proxy", "http_proxy=http://127.0.0.1:1"});
        failures = 0;
        for (auto at = tree.find(failure); at != std::string::npos;
             at = tree.find(failure, at + 1)) {
            ++failures;
        }
        if (failures == 3) {
            break;
        }
    }
    EXPECT_EQ(failures, 3U);
}

}  // namespace orvane::tests
