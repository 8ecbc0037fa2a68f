#include "orvane/commons/Trace.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <thread>

#include "tests/support/TemporaryFolder.h"

namespace {

using orvane::commons::Trace;
using orvane::commons::TraceScope;

// Returns the file with the times and the durations replaced by T.
std::string read(const std::string& path) {
    std::stringstream text;
    text << std::ifstream(path).rdbuf();
    return std::regex_replace(text.str(), std::regex("[0-9]+\\.[0-9]{3}"), "T");
}

TEST(Trace, WritesTheEventsThatBeganWhileItRan) {
    const orvane::tests::TemporaryFolder folder;
    const std::string path = folder.path() / "trace.json";
    EXPECT_FALSE(Trace::isRunning());
    std::uint64_t interval = Trace::begin("request", "too early");
    EXPECT_EQ(interval, 0U);
    Trace::end("request", interval);
    {
        const TraceScope early("early");
        ASSERT_TRUE(Trace::start(path));
        EXPECT_FALSE(Trace::start(path)) << "one is running";
        const TraceScope late("late");
        { const TraceScope inner("inner"); }
        interval = Trace::begin("request", "a \"b\"\n\\\xC3\xA9");
        std::thread([&] { Trace::end("request", interval); }).join();
        ASSERT_TRUE(Trace::stop());
        EXPECT_FALSE(Trace::stop());
    }
    const std::string cat = R"("cat":"orvane",)";
    EXPECT_EQ(read(path), "[\n{\"ph\":\"M\"," + cat +
                              R"("name":"thread_name","pid":1,"tid":1,"args":{"name":"main"}},
{"ph":"X",)" + cat + R"("name":"inner","pid":1,"tid":1,"ts":T,"dur":T},
{"ph":"b",)" + cat +
                              R"("name":"request","pid":1,"tid":1,"ts":T,"id":1,)"
                              R"("args":{"detail":"a %22b%22%0A%5C%C3%A9"}},
{"ph":"e",)" + cat + R"("name":"request","pid":1,"tid":2,"ts":T,"id":1}
]
)");
}

TEST(Trace, AnEventOfAnEarlierTraceIsNotWritten) {
    const orvane::tests::TemporaryFolder folder;
    const std::string path = folder.path() / "trace.json";
    ASSERT_TRUE(Trace::start(folder.path() / "earlier.json"));
    auto across = std::make_unique<TraceScope>("across");
    ASSERT_TRUE(Trace::stop());
    ASSERT_TRUE(Trace::start(path));
    across.reset();
    ASSERT_TRUE(Trace::stop());
    EXPECT_EQ(read(path).find("across"), std::string::npos);
}

TEST(Trace, AFileThatCannotBeWrittenIsReported) {
    EXPECT_FALSE(Trace::start("/no/such/folder/trace.json"));
    EXPECT_FALSE(Trace::isRunning());
    ASSERT_TRUE(Trace::start("/dev/full"));
    EXPECT_FALSE(Trace::stop());
}

}  // namespace
