#include "tests/host/HostTest.h"

namespace orvane::tests {

class NetworkExample : public HostTest {
protected:
    // Returns what the example's two cards with requests show on a display of 1280x800.
    static std::string namesOfWhatIsShown(const Picture& screen) {
        const Picture loaded = readPicture(ORVANE_NETWORK_EXAMPLE_PICTURE);
        int picture = 0;   // pixels of the loaded picture at its place
        int text = 0;      // pixels that are not white at the place of the text
        int failures = 0;  // red pixels in the line below
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
        return std::string(picture == 480 * 320 ? "the picture" : "") +
               (text > 1000 ? ", the text" : "") + (failures > 100 ? "failures" : "");
    }
};

TEST_F(NetworkExample, ShowsWhatItLoadsOrThatTheServerIsGone) {
    // Without XDG_DATA_DIRS the system's data are used: they contain the desktop's proxy settings.
    const struct {
        std::vector<std::string> changes;
        std::string expected;
    } cases[] = {
        {{"-u", "XDG_DATA_DIRS"}, "the picture, the text"},
        // All requests go to a proxy that does not exist.
        {{"-u", "XDG_DATA_DIRS", "-u", "no_proxy", "http_proxy=http://127.0.0.1:1"}, "failures"},
    };
    for (const auto& [changes, expected] : cases) {
        std::string seen;
        // A slow machine needs more time for the answers.
        for (const char* moment : {"0.5", "2", "8", "20"}) {
            seen = namesOfWhatIsShown(
                snapshot({"--offscreen", "--at", moment}, changes, ORVANE_NETWORK_EXAMPLE));
            if (seen == expected) {
                break;
            }
        }
        EXPECT_EQ(seen, expected);
    }
}

}  // namespace orvane::tests
