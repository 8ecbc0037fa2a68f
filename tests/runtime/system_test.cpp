#include <easylogging++.h>
#include <glib.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "orvane/runtime/init_orvane.h"
#include "orvane/system/system.h"
#include "platform/foundation/NSUserDefaults.h"
#include "tests/runtime/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
namespace system = orvane::system;
using orvane::tests::TemporaryFolder;
using orvane::tests::TemporaryUser;

std::string logOf(const std::function<void()>& work) {
    init_orvane();  // sets the format
    testing::internal::CaptureStdout();
    work();
    return testing::internal::GetCapturedStdout();
}

TEST(Logging, LinesHaveTheirFormatAndTheDebugLevelNamesTheFunction) {
    init_orvane();
    const std::string lines = logOf([] {
        CLOG(ERROR, "default") << "an error";
        // What CLOG(DEBUG) becomes where it is compiled in.
        el::base::Writer(el::Level::Debug, "file", 1, "the_function").construct(1, "default")
            << "a detail";
    });
    for (const char* pattern :
         {R"(\d\d:\d\d:\d\d,\d{3} ERROR \[default\] : an error\n)",
          R"(\d\d:\d\d:\d\d,\d{3} DEBUG \[default\] \[the_function\] : a detail\n)"}) {
        EXPECT_TRUE(
            g_regex_match_simple(pattern, lines.c_str(), GRegexCompileFlags{}, GRegexMatchFlags{}))
            << lines;
    }
    EXPECT_NE(lines.find("\x1b["), std::string::npos) << "the error is not coloured: " << lines;
}

// In a process of its own: a log file would appear in its folder before any code of ours runs.
TEST(Logging, NeverCreatesAFile) {
    const TemporaryFolder folder;
    const std::string self = fs::read_symlink("/proc/self/exe");
    const std::string command = "cd '" + folder.path().string() + "' && '" + self +
                                "' --gtest_filter=Logging.LinesHaveTheirFormat* > /dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST(System, StartingTwiceLeavesTheFoldersAsTheyWereAndLogsNothing) {
    const TemporaryUser user;
    const fs::path base = user.data() / "Orvane/AppData";
    EXPECT_EQ(logOf([] { system::initSystem(); }), "");
    std::ofstream(base / "caches/kept") << "kept";
    EXPECT_EQ(logOf([] { system::initSystem(); }), "");
    EXPECT_TRUE(fs::exists(base / "caches/kept"));
    EXPECT_TRUE(fs::is_directory(base / "tmp"));
    EXPECT_EQ(system::getBasePath(), base);
    EXPECT_EQ(system::getDocumentsDirectory(), base);
    EXPECT_EQ(system::getCachesDirectory(), base / "caches");
    EXPECT_EQ(system::getTemporaryDirectory(), base / "tmp");
}

TEST(System, AFolderThatCannotBeMadeIsLoggedAndItsPathStillComesBack) {
    const TemporaryUser user;
    std::ofstream(user.data()) << "a file in the folder's place";
    const std::string base = user.data() / "Orvane/AppData";
    std::string path;
    const std::string log = logOf([&] { path = system::getBasePath(); });
    EXPECT_EQ(path, base);
    EXPECT_NE(log.find("[default] : Can't create document folder '" + base + "'"),
              std::string::npos)
        << log;
    EXPECT_TRUE(system::createDirectory(base));
}

TEST(System, ResourceDirectoryIsTheUserDefault) {
    const TemporaryUser user;
    std::string folder = "?";
    const std::string log = logOf([&] { folder = system::getResourceDirectory(); });
    EXPECT_EQ(folder, "");
    EXPECT_NE(log.find("ERROR [default] : Resource folder cannot be found"), std::string::npos);
    orvane::platform::NSUserDefaults::standardUserDefaults().setObjectForKey("/somewhere",
                                                                             "Resource Folder");
    EXPECT_EQ(logOf([&] { folder = system::getResourceDirectory(); }), "");
    EXPECT_EQ(folder, "/somewhere");
}

TEST(System, PathToFileOverlaysTheSecondTextWithTheFirst) {
    const struct {
        const char* first;
        const char* second;
        const char* result;
    } cases[] = {{"ab", "xyz", "abz"}, {"abcd", "xy", "abcd"}, {"", "xy", "xy"}, {"ab", "", "ab"}};
    for (const auto& each : cases) {
        EXPECT_EQ(system::pathToFile(each.first, each.second), each.result);
    }
}

TEST(System, WhatADesktopDoesNotHave) {
    EXPECT_TRUE(system::listFiles("/").empty());
    EXPECT_FALSE(system::isStatusBarVisible());
    EXPECT_FALSE(system::openUrl("no address"));
    const auto captured = std::make_shared<int>();
    system::setOnEnterBackground([captured] {});
    system::setOnEnterForeground([captured] {});
    EXPECT_EQ(captured.use_count(), 1);
}

}  // namespace
