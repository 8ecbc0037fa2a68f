#include "tests/host/HostTest.h"

namespace orvane::tests {

class DashboardExample : public HostTest {
protected:
    // What the example shows after the events of a script, at a time in seconds.
    std::string shown(const std::string& events, const std::string& time,
                      const std::string& size = "1280x800") const {
        return runWell({"--offscreen", "--size", size, "--events", write("events", events),
                        "--dump-tree", "--at", time, ORVANE_DASHBOARD_EXAMPLE});
    }
    // The number that is shown first, in large letters.
    static std::string firstNumber(const std::string& tree) {
        const auto end = tree.find(" kWh\"");
        const auto begin = tree.rfind('"', end);
        return end == std::string::npos ? "" : tree.substr(begin + 1, end - begin - 1);
    }
};

TEST_F(DashboardExample, ShowsTheRangeThatIsTouched) {
    const std::string touchMonth = "0.1 down 1214 53\n0.2 up 1214 53\n";
    const struct {
        std::string events;
        std::string time;
        std::string number;
    } cases[] = {
        {"", "0.5", "46.8"},
        {touchMonth, "1.2", "1124"},
        {touchMonth + "0.3 down 1138 53\n0.4 up 1138 53\n", "1.4", "284.6"},
    };
    for (const auto& [events, time, number] : cases) {
        EXPECT_EQ(firstNumber(shown(events, time)), number) << events << " at " << time;
    }
    const double between = std::stod(firstNumber(shown(touchMonth, "0.3")));
    EXPECT_GT(between, 400) << "in motion";
    EXPECT_LT(between, 1100);
}

TEST_F(DashboardExample, ItsCardsWrapInANarrowWindow) {
    const std::string wide = shown("", "0.5");
    const std::string narrow = shown("", "0.5", "620x900");
    EXPECT_NE(wide.find("frame 670,119 "), std::string::npos) << wide;
    EXPECT_NE(narrow.find("frame 48,268 "), std::string::npos) << narrow;
}

}  // namespace orvane::tests
