#include <csignal>
#include <filesystem>

#include "tests/host/HostTest.h"

namespace orvane::tests {

namespace {

// A color component of 0 is stored as 1/256, and is therefore painted as 1.
constexpr std::uint32_t kRed = 0xFF0101FF;
constexpr std::uint32_t kGreen = 0x01FF01FF;
constexpr std::uint32_t kBlue = 0x0101FFFF;
constexpr std::uint32_t kBlack = 0x000000FF;

}  // namespace

using OffscreenHost = HostTest;

TEST_F(OffscreenHost, PlaysEventsBeforeTheSnapshotOfItsSizeAndScale) {
    // A minute of events is played without waiting; the lines are in no order.
    const std::string events = write("events",
                                     "60 up 120 130\n"
                                     "0 down 20 30\n"
                                     "30 move 70.5 80  # halfway\n");
    const Picture picture =
        snapshot({"--offscreen", "--size", "500x220", "--scale", "1.5", "--events", events});
    ASSERT_EQ(picture.width, 750);
    ASSERT_EQ(picture.height, 330);
    EXPECT_EQ(picture.at(30, 30), kBlack);
    EXPECT_EQ(picture.at(166, 166), kRed);
    EXPECT_EQ(picture.at(313, 313), kRed);
    EXPECT_EQ(picture.at(316, 316), kBlack);
}

TEST_F(OffscreenHost, PlaysKeysTextWheelsAndThePointerWithoutAButton) {
    const std::string events = write("events",
                                     "0.0 scroll 350 150 0 96\n"
                                     "0.1 down 50 135\n"
                                     "0.1 up 50 135\n"
                                     "0.2 text Grüße #1\n"
                                     "0.3 key Left shift+ctrl\n"
                                     "0.4 key x ctrl\n"
                                     "0.5 key Home\n"
                                     "0.6 key v ctrl\n"
                                     "0.7 key a shift\n"
                                     "3.0 key Return\n"
                                     "3.1 move 395 180\n");
    const std::string snapshot = file("snapshot.png");
    const std::string printed = runWell(
        {"--offscreen", "--events", events, "--snapshot", snapshot, probe}, {"PROBE_FORM=1"});
    EXPECT_NE(printed.find("entered '1AGrüße #' at 96\n"), std::string::npos) << printed;
    const Picture picture = readPicture(snapshot);
    EXPECT_EQ(picture.at(320, 142), 0xFFFFFFFF) << "the third row";
    EXPECT_EQ(picture.at(320, 146), 0xFF01FFFF) << "the fourth, 24 points below the top";
    EXPECT_NE(picture.at(388, 199), picture.at(320, 199)) << "the bar is open";
}

TEST_F(OffscreenHost, AtShowsExactlyThatMomentAndGivesTimedTasksTheirTime) {
    const Picture picture =
        snapshot({"--offscreen", "--at", "2"}, {"PROBE_DELAY=100", "PROBE_MOVE=4"});
    EXPECT_EQ(picture.at(349, 20), kBlack);
    EXPECT_EQ(picture.at(350, 20), kGreen);
    EXPECT_EQ(picture.at(449, 20), kGreen);
    EXPECT_EQ(picture.at(450, 20), kBlack);
}

TEST_F(OffscreenHost, DumpsBothTrees) {
    const std::string trees = runWell({"--offscreen", "--dump-tree", probe});
    EXPECT_NE(trees.find("objects\n"
                         "  QuartzRect #0 frame 10,10 100x100 visible layer 1\n"
                         "  QuartzRect #1 frame 300,10 100x100 visible layer 2\n"
                         "layers\n"
                         "  BitmapLayer 1 frame 10,10 100x100 visible view 10,10 100x100 z 0\n"
                         "  BitmapLayer 2 frame 300,10 100x100 visible view 300,10 100x100 z 0\n"),
              std::string::npos)
        << trees;
}

TEST_F(OffscreenHost, WritesTheFramesOfAnAnimation) {
    const std::string events = write("events", "0.25 down 20 20\n0.25 up 20 120\n");
    runWell({"--offscreen", "--frames", file(""), "--fps", "10", "--seconds", "0.5", "--size",
             "450x220", "--events", events, probe},
            {"PROBE_MOVE=1"});
    for (int i = 0; i < 5; ++i) {
        const std::string name = "frame-00000" + std::to_string(i) + ".png";
        const Picture frame = readPicture(file(name));
        ASSERT_EQ(frame.width, 450) << name;
        EXPECT_EQ(frame.at(300 + 10 * i - 1, 20), kBlack) << name;
        EXPECT_EQ(frame.at(300 + 10 * i, 20), kBlue) << name;
        EXPECT_EQ(frame.at(20, 200), i < 3 ? kBlack : kRed) << name;
    }
    EXPECT_FALSE(std::filesystem::exists(file("frame-000005.png")));
}

TEST_F(OffscreenHost, ResourcesAreNextToTheApplicationUnlessTheRunHasAFolder) {
    const std::string folder = ORVANE_TEST_APPLICATIONS;
    const std::string start = "started 1280x800 with ";
    EXPECT_TRUE(runWell({"--offscreen", "--dump-tree", "--resources", folder, probe})
                    .starts_with(start + folder + "\n"));
    EXPECT_TRUE(runWell({"--offscreen", "--dump-tree", probe}).starts_with(start + probe + "\n"));
}

TEST_F(OffscreenHost, IsChosenWhenThereIsNoDisplay) {
    const auto result = run({probe}, {"-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-C", file("")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.errors.find("rendering off-screen"), std::string::npos) << result.errors;
    EXPECT_NE(result.output.find("wrote " + file("orvane.png") + "\n"), std::string::npos)
        << result.output;
    EXPECT_EQ(readPicture(file("orvane.png")).width, 1280);
}

TEST_F(OffscreenHost, EndsCleanlyOnASignal) {
    for (const int signal : {SIGINT, SIGTERM}) {
        HostProcess host({"--offscreen", probe});
        ASSERT_TRUE(host.awaitOutput("started "));
        host.sendSignal(signal);
        const auto result = host.finish();
        EXPECT_EQ(result.exitCode, 0) << result.errors;
    }
}

}  // namespace orvane::tests
