#include <string>
#include <vector>

#include "tests/host/HostTest.h"

namespace orvane::tests {

class GalleryExample : public HostTest {
protected:
    // What the page of the desktop shows after the events of a script, at a time in seconds.
    std::string shown(const std::string& events, const std::string& time) const {
        const std::string openPage = "0.01 down 36 494\n0.02 up 36 494\n";
        return runWell({"--offscreen", "--resources", ORVANE_TEST_RESOURCES, "--events",
                        write("events", openPage + events), "--dump-tree", "--at", time,
                        ORVANE_GALLERY_EXAMPLE});
    }
    static std::string press(double time, int x, int y) {
        const std::string place = " " + std::to_string(x) + " " + std::to_string(y) + "\n";
        return std::to_string(time) + " down" + place + std::to_string(time) + " up" + place;
    }
};

TEST_F(GalleryExample, UsesTheDesktop) {
    const struct {
        std::string events;
        std::vector<std::string> texts;
    } runs[] = {
        {"0 answer /pictures/sea.png\n0.5 drop 823 127 file /tmp/a/trip.png\n" +
             press(0.5, 171, 226) + press(0.51, 1056, 226) + press(0.52, 171, 483) +
             press(0.53, 466, 483) + "0.6 notification\n" + press(0.6, 762, 483) +
             "0.6 appearance dark\n0.6 appearance accent 2FA572\n" + press(0.61, 528, 652) +
             press(0.62, 1118, 652) + "0.65 key Right shift\n",
         {"Copied.", "Files: trip.png", "\"sea.png\"", "It is open.",
          "The notification was pressed.", "Gallery, title 1", "\"dark\"", "#2FA572",
          "Left, 1 click", "\"Shift+Right\""}},
        {"0 answer\n0.5 drop 823 127 text Hello\n0.5 key Tab\n0.51 key space\n" +
             press(0.52, 295, 226) + press(0.53, 1056, 226) + press(0.54, 466, 483) +
             press(0.55, 590, 483) + "0.6 key k ctrl\n",
         {"Text: Hello", "Pasted: A text on its way", "Nothing was chosen.", "It was taken back.",
          "The shortcut has put the dot back."}},
        {"0 answer " + file("saved.png") + "\n0.5 clipboard Grüße\n" + press(0.51, 295, 226) +
             press(0.52, 1180, 226) + "0.6 key Tab shift\n0.61 key x\n",
         {"Pasted: Grüße", "Saved saved.png", "\"x\""}},
    };
    for (const auto& [events, texts] : runs) {
        const std::string tree = shown(events, "0.8");
        for (const std::string& text : texts) {
            EXPECT_NE(tree.find(text), std::string::npos) << text << " in\n" << tree;
        }
    }
    EXPECT_EQ(readPicture(file("saved.png")).width, 120);
}

TEST_F(GalleryExample, HoldsTheWindowOpenWhileItSaves) {
    const std::string held = press(0.4, 1019, 345) + "0.5 close\n";
    EXPECT_NE(shown(held, "0.9").find("The window waits"), std::string::npos);
    EXPECT_NE(shown(held, "2").find("\"Saved.\""), std::string::npos);
}

// The appearance changes while the page is shown: what is painted, and what moves.
TEST_F(GalleryExample, FollowsTheAppearance) {
    const auto pixel = [this](const std::string& events, const std::string& time, int x, int y) {
        return snapshot({"--offscreen", "--resources", ORVANE_TEST_RESOURCES, "--events",
                         write("events", events), "--at", time},
                        {}, ORVANE_GALLERY_EXAMPLE)
            .at(x, y);
    };
    EXPECT_EQ(pixel("", "0.2", 80, 10), 0xF1EEE8FFU);
    EXPECT_EQ(pixel("0.1 appearance dark\n", "0.2", 80, 10), 0x1A1D21FFU);
    EXPECT_EQ(pixel("0.1 appearance accent 2FA572\n", "0.2", 1, 46), 0x30A573FFU);
    // The square on its way, and where it begins.
    const std::string animations = "0.01 down 36 270\n0.02 up 36 270\n";
    EXPECT_NE(pixel(animations, "1", 144, 142), 0xF2555CFFU);
    const std::string still = "0 appearance reduced-motion on\n" + animations;
    EXPECT_EQ(pixel(still, "1", 144, 142), 0xF2555CFFU);
}

}  // namespace orvane::tests
