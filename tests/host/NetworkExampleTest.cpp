#include "tests/host/HostTest.h"

namespace orvane::tests {

namespace {

// What the example's two cards that ask for something show on a display of 1280x800, in pixels.
struct Shown {
    explicit Shown(const Picture& screen) {
        const Picture loaded = Picture::read(ORVANE_NETWORK_EXAMPLE_PICTURE);
        for (int y = 0; y < loaded.height; ++y) {
            for (int x = 0; x < loaded.width; ++x) {
                picture += screen.at(64 + x, 100 + y) == loaded.at(x, y) ? 1 : 0;
                text += screen.at(600 + x, 100 + y) == 0xFFFFFFFF ? 0 : 1;
            }
        }
        for (int y = 430; y < 460; ++y) {
            for (int x = 64; x < 1080; ++x) {
                const std::uint32_t pixel = screen.at(x, y);
                failures += (pixel >> 24) > (pixel >> 8 & 0xFF) + 60 ? 1 : 0;
            }
        }
    }

    int picture = 0;   // those that are the loaded picture's, where it belongs
    int text = 0;      // where the text belongs, not white
    int failures = 0;  // red, in the line below
};

}  // namespace

using NetworkExample = HostTest;

TEST_F(NetworkExample, ShowsWhatItLoadsOrThatTheServerIsGone) {
    // With the system's data: the desktop's settings, which name proxies, are among them.
    const struct {
        std::vector<std::string> changes;
        std::string expected;
    } cases[] = {
        {{"-u", "XDG_DATA_DIRS"}, "the picture, the text"},
        // All that is asked for goes by way of a proxy, which is not there.
        {{"-u", "XDG_DATA_DIRS", "-u", "no_proxy", "http_proxy=http://127.0.0.1:1"}, "failures"},
    };
    for (const auto& [changes, expected] : cases) {
        std::string seen;
        // Answers take their time: what is not there yet is looked for again, later.
        for (const char* moment : {"0.5", "2", "8", "20"}) {
            const Shown shown(
                snapshot({"--offscreen", "--at", moment}, changes, ORVANE_NETWORK_EXAMPLE));
            seen = shown.picture == 480 * 320 ? "the picture" : "";
            seen += shown.text > 1000 ? ", the text" : "";
            seen += shown.failures > 100 ? "failures" : "";
            if (seen == expected) {
                break;
            }
        }
        EXPECT_EQ(seen, expected);
    }
}

}  // namespace orvane::tests
