#include <glib.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <sstream>
#include <thread>

#include "orvane/commons/ByteArray.h"
#include "orvane/system/system.h"
#include "platform/foundation/NSData.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/foundation/NSUserDefaults.h"
#include "tests/runtime/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using namespace orvane::platform;
using orvane::system::getResourceDirectoryOfFramework;
using orvane::tests::TemporaryFolder;
using orvane::tests::TemporaryUser;

using Names = std::vector<std::string>;

void write(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

TEST(NSLog, LinesOfSeveralThreadsDoNotMix) {
    testing::internal::CaptureStderr();
    const std::string longText(5000, 'x');
    {
        std::vector<std::jthread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&, t] {
                for (int i = 0; i < 50; ++i) {
                    NSLog("%d.%d %s", t, i, longText.c_str());
                }
            });
        }
    }
    std::istringstream lines(testing::internal::GetCapturedStderr());
    const std::string format =
        R"(^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} \[\d+:\d+\] \d\.\d+ x{5000}$)";
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        EXPECT_TRUE(g_regex_match_simple(format.c_str(), line.c_str(), GRegexCompileFlags{},
                                         GRegexMatchFlags{}))
            << line;
    }
    EXPECT_EQ(count, 200);
}

TEST(NSPathUtilities, PartsOfAPath) {
    const struct {
        const char* path;
        const char* last;
        const char* extension;
        const char* stem;
    } cases[] = {
        {"/a/libx.dylib", "libx.dylib", "dylib", "/a/libx"},
        {"libx.y.dylib", "libx.y.dylib", "dylib", "libx.y"},
        {"/a.b/name", "name", "", "/a.b/name"},
        {".dylib", ".dylib", "", ".dylib"},
        {"x.DYLIB", "x.DYLIB", "DYLIB", "x"},
        {"", "", "", ""},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(lastPathComponent(each.path), each.last) << each.path;
        EXPECT_EQ(pathExtension(each.path), each.extension) << each.path;
        EXPECT_EQ(stringByDeletingPathExtension(each.path), each.stem) << each.path;
    }
    EXPECT_EQ(pathWithComponents({"/a/", "b", "c"}), "/a/b/c");
}

TEST(NSPathUtilities, TheEnvironmentCountsOnlyWhenItNamesAnAbsoluteFolder) {
    const TemporaryUser user;
    EXPECT_EQ(applicationSupportDirectory(), user.data());
    EXPECT_EQ(dataDirectories(), (Names{user.data(), user.system()}));
    const std::string home = std::getenv("HOME") ? std::getenv("HOME") : "";
    setenv("HOME", "/home/somebody", 1);
    for (const char* useless : {"", "relative/folder"}) {
        setenv("XDG_DATA_HOME", useless, 1);
        setenv("XDG_CONFIG_HOME", useless, 1);
        EXPECT_EQ(applicationSupportDirectory(), "/home/somebody/.local/share");
        EXPECT_EQ(configurationDirectory(), "/home/somebody/.config");
    }
    setenv("XDG_DATA_DIRS", "/x:relative:/y", 1);
    EXPECT_EQ(dataDirectories(), (Names{"/home/somebody/.local/share", "/x", "/y"}));
    setenv("HOME", home.c_str(), 1);
}

TEST(NSFileManager, ListsSortedAndWalksWithoutFollowingLinks) {
    const TemporaryFolder folder;
    write(folder.path() / "b/inner.ttf", "");
    write(folder.path() / "a.ttf", "");
    fs::create_directory_symlink(folder.path(), folder.path() / "b/cycle");
    fs::create_directories(folder.path() / "c");
    const auto& files = NSFileManager::defaultManager();
    EXPECT_EQ(files.contentsOfDirectoryAtPath(folder.path()), (Names{"a.ttf", "b", "c"}));
    EXPECT_EQ(files.enumeratorAtPath(folder.path()),
              (Names{"a.ttf", "b", "b/cycle", "b/inner.ttf", "c"}));
    for (const fs::path& none : {folder.path() / "a.ttf", folder.path() / "missing", fs::path()}) {
        EXPECT_EQ(files.contentsOfDirectoryAtPath(none), Names{}) << none;
        EXPECT_EQ(files.enumeratorAtPath(none), Names{}) << none;
    }
}

TEST(NSFileManager, ReadsRegularFilesOnly) {
    const TemporaryFolder folder;
    const std::string bytes("\0a\xff", 3);
    write(folder.path() / "file", bytes);
    mkfifo((folder.path() / "pipe").c_str(), 0600);
    const auto& files = NSFileManager::defaultManager();
    const auto data = files.contentsAtPath(folder.path() / "file");
    ASSERT_TRUE(data);
    EXPECT_EQ(std::string(data->bytes(), data->bytes() + data->length()), bytes);
    for (const char* name : {"pipe", ".", "missing"}) {
        EXPECT_FALSE(files.contentsAtPath(folder.path() / name)) << name;
    }
}

TEST(NSFileManager, CreatesFoldersAboveAndReportsWhatIsInTheWay) {
    const TemporaryFolder folder;
    write(folder.path() / "file", "");
    for (const auto& [path, isMade] :
         {std::pair("a/b/c", true), {"a/b/c", true}, {"file/below", false}, {"file", false}}) {
        const fs::path made = folder.path() / path;
        EXPECT_EQ(NSFileManager::defaultManager().createDirectoryWithIntermediates(made), isMade);
        EXPECT_EQ(fs::is_directory(made), isMade) << path;
    }
}

TEST(NSUserDefaults, StoredValuesComeBackAsTheyWere) {
    const TemporaryUser user;
    auto& defaults = NSUserDefaults::standardUserDefaults();
    EXPECT_EQ(defaults.objectForKey("Folder"), std::nullopt);
    for (const char* value : {"/plain", " blanks ", "", "a\nb;c\\d=e", "gr\u00fc\u00df", "[x]"}) {
        EXPECT_TRUE(defaults.setObjectForKey(value, "Folder"));
        EXPECT_EQ(defaults.objectForKey("Folder"), value);
    }
    EXPECT_TRUE(defaults.setObjectForKey("2", "Other One"));
    EXPECT_EQ(defaults.objectForKey("Folder"), "[x]");
    EXPECT_EQ(defaults.objectForKey("Other One"), "2");
    // Replaced as a whole: nothing else lies beside it.
    EXPECT_EQ(NSFileManager::defaultManager().enumeratorAtPath(user.configuration()),
              (Names{"Orvane", "Orvane/defaults.conf"}));
}

TEST(NSUserDefaults, AValueOfThisRunHidesTheStoredOneAndIsNotStored) {
    const TemporaryUser user;
    auto& defaults = NSUserDefaults::standardUserDefaults();
    defaults.setVolatileObjectForKey("\xff any bytes", "Of This Run");
    EXPECT_FALSE(fs::exists(user.configuration()));
    EXPECT_TRUE(defaults.setObjectForKey("stored", "Of This Run"));
    EXPECT_EQ(defaults.objectForKey("Of This Run"), "\xff any bytes");
}

TEST(NSUserDefaults, WhatCannotBeStoredIsLoggedAndChangesNothing) {
    const TemporaryUser user;
    auto& defaults = NSUserDefaults::standardUserDefaults();
    defaults.setObjectForKey("kept", "Key");
    testing::internal::CaptureStderr();
    for (const char* key : {"", "a=b", "[a", " a", "a\nb", "\xff"}) {
        EXPECT_FALSE(defaults.setObjectForKey("x", key)) << key;
    }
    EXPECT_FALSE(defaults.setObjectForKey("\xff", "Key"));
    fs::remove_all(user.configuration());
    write(user.configuration(), "a file in the folder's place");
    EXPECT_FALSE(defaults.setObjectForKey("x", "Key"));
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 9) << log;
    EXPECT_EQ(defaults.objectForKey("Key"), std::nullopt);
}

TEST(NSUserDefaults, ADamagedFileHoldsNothingAndIsReplaced) {
    const TemporaryUser user;
    write(user.configuration() / "Orvane/defaults.conf", "[Defaults]\nKey=1\nno sense");
    auto& defaults = NSUserDefaults::standardUserDefaults();
    EXPECT_EQ(defaults.objectForKey("Key"), std::nullopt);
    EXPECT_TRUE(defaults.setObjectForKey("2", "Key"));
    EXPECT_EQ(defaults.objectForKey("Key"), "2");
}

TEST(NSBundle, IsFoundInTheUsersFolderBeforeTheSystems) {
    const TemporaryUser user;
    const std::string place = "orvane/bundles/org.example.charts/Resources";
    for (const fs::path& folder : {user.system(), user.data()}) {
        fs::create_directories(folder / place);
        EXPECT_EQ(getResourceDirectoryOfFramework("org.example.charts"), folder / place);
    }
}

TEST(NSBundle, NoIdentifierLeadsOutOfTheFolderOfBundles) {
    const TemporaryUser user;
    for (const char* folder : {"bundles/a/Resources", "bundles/Resources", "Resources"}) {
        fs::create_directories(user.data() / "orvane" / folder);
    }
    for (const char* identifier :
         {"unknown", "", ".", "..", "../bundles/a", "a/../a", "/", "a/", "a\n"}) {
        EXPECT_EQ(getResourceDirectoryOfFramework(identifier), "") << identifier;
    }
    EXPECT_NE(getResourceDirectoryOfFramework("a"), "");
}

TEST(NSData, AByteArrayOfItSharesTheBytes) {
    const NSData data = NSData::dataWithBytes("bytes", 5);
    const auto view = orvane::commons::ByteArray::createFromNativeObject(&data);
    EXPECT_EQ(view.data(), data.bytes());
    EXPECT_EQ(view.size(), 5U);
}

}  // namespace
