#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "orvane/system/system.h"
#include "tests/support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
namespace system = orvane::system;
using orvane::tests::TemporaryFolder;
using orvane::tests::TemporaryUser;

// Runs in a process of its own, because the logging library would create its file before main().
TEST(Logging, NeverCreatesAFile) {
    const TemporaryFolder folder;
    const std::string self = fs::read_symlink("/proc/self/exe");
    const std::string command =
        "cd '" + folder.path().string() + "' && '" + self + "' --gtest_list_tests > /dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST(System, ASecondStartKeepsTheFolders) {
    const TemporaryUser user;
    const fs::path base = user.data() / "Orvane/AppData";
    system::initSystem();
    std::ofstream(base / "caches/kept") << "kept";
    testing::internal::CaptureStdout();
    system::initSystem();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_TRUE(fs::exists(base / "caches/kept"));
    EXPECT_TRUE(fs::is_directory(base / "tmp"));
    EXPECT_EQ(system::getBasePath(), base);
    EXPECT_EQ(system::getDocumentsDirectory(), base);
    EXPECT_EQ(system::getCachesDirectory(), base / "caches");
    EXPECT_EQ(system::getTemporaryDirectory(), base / "tmp");
}

}  // namespace
