#include "tests/host/HostTest.h"

namespace orvane::tests {

using HostOptions = HostTest;

TEST_F(HostOptions, InvalidOptionsAreNamedInOneLine) {
    const std::string unreadable = write("file", "");
    const struct {
        std::vector<std::string> arguments;
        std::string named;
    } cases[] = {
        {{}, "DIRECTORY"},
        {{probe, "other"}, "'other'"},
        {{"--nonsense", probe}, "--nonsense"},
        {{"-xy", probe}, "-x"},
        {{"--offscreen=1", probe}, "--offscreen=1"},
        {{"--snapshot"}, "--snapshot needs a value"},
        {{"--snapshot=", probe}, "--snapshot= needs a value"},
        {{"--size", "1280", probe}, "'1280'"},
        {{"--size", "0x10", probe}, "'0x10'"},
        {{"--size", "10x1e9", probe}, "'10x1e9'"},
        {{"--size", "1.5x2", probe}, "'1.5x2'"},
        {{"--size", "20000x10", "--scale", "2", probe}, "--scale"},
        {{"--scale", "0", probe}, "'0'"},
        {{"--at", "-1", probe}, "'-1'"},
        {{"--at", "1s", probe}, "'1s'"},
        {{"--deny", "geolocation,weather", probe}, "'geolocation,weather'"},
        {{"--frames", file("frames"), "--snapshot", file("a.png"), probe}, "--frames"},
        {{"--watch", "--offscreen", probe}, "--watch"},
        {{"--offscreen", "/no/such/folder"}, "/no/such/folder"},
        {{"--offscreen", unreadable}, unreadable},
        {{"--offscreen", "--resources", "/no/such/folder", probe}, "/no/such/folder"},
        {{"--offscreen", "--frames", unreadable + "/frames", probe}, unreadable},
        {{"--offscreen", "--events", "/no/such/file", probe}, "/no/such/file"},
        {{"--offscreen", "--events", probe, probe}, probe},
        {{"--offscreen", "--snapshot", "/no/such/folder/a.png", probe}, "/no/such/folder/a.png"},
    };
    for (const auto& [arguments, named] : cases) {
        const auto result = run(arguments);
        EXPECT_EQ(result.exitCode, 2) << named;
        EXPECT_NE(result.errors.find(named), std::string::npos) << named << ": " << result.errors;
        EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << result.errors;
    }
}

TEST_F(HostOptions, AnInvalidEventIsReportedWithItsLine) {
    for (const std::string line : {"0 down 1",
                                   "0 click 1 2",
                                   "x down 1 2",
                                   "-1 up 1 2",
                                   "0 down 1 2 3",
                                   "0 down 1 inf",
                                   "0 key",
                                   "0 key a meta",
                                   "0 key a shift ctrl",
                                   "0 text",
                                   "0",
                                   "0 scroll 1 2 3",
                                   "0 scroll 1 2 3 4 5",
                                   "0 scroll 1 2 3 4 began 6",
                                   "0 drop 1 2",
                                   "0 drop 1 2 image x",
                                   "0 close now",
                                   "0 appearance",
                                   "0 appearance dark 1",
                                   "0 appearance accent red",
                                   "0 appearance text-scale 0",
                                   "0 clipboard",
                                   "0 notification x"}) {
        const std::string events = write("events", "# a comment\n\n0 down 1 2  # fine\n" + line);
        const auto result = run({"--offscreen", "--events", events, probe});
        EXPECT_EQ(result.exitCode, 2) << line;
        EXPECT_NE(result.errors.find(events + ":4: "), std::string::npos) << result.errors;
    }
}

TEST_F(HostOptions, PrintsHelpAndVersionWithoutADirectory) {
    EXPECT_NE(runWell({"--help"}).find("--offscreen"), std::string::npos);
    EXPECT_EQ(runWell({"--version"}), "orvane-host " ORVANE_TEST_VERSION "\n");
}

TEST_F(HostOptions, ADirectoryWithoutApplicationsIsReported) {
    const auto result = run({"--offscreen", file("")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("Can't load swift library: '" + file("") + "' "),
              std::string::npos)
        << result.errors;
}

}  // namespace orvane::tests
