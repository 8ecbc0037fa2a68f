#include <gtest/gtest.h>

#include <fstream>

#include "orvane/system/system.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/foundation/NSUserDefaults.h"
#include "tests/support/TemporaryFolder.h"

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

TEST(NSPathUtilities, IgnoresVariablesThatAreNotAbsolutePaths) {
    const TemporaryUser user;
    EXPECT_EQ(applicationSupportDirectory(), user.data());
    const std::string home = std::getenv("HOME") ? std::getenv("HOME") : "";
    setenv("HOME", "/home/somebody", 1);
    for (const char* useless : {"", "relative/folder"}) {
        setenv("XDG_DATA_HOME", useless, 1);
        setenv("XDG_CONFIG_HOME", useless, 1);
        EXPECT_EQ(applicationSupportDirectory(), "/home/somebody/.local/share");
        EXPECT_EQ(configurationDirectory(), "/home/somebody/.config");
    }
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

TEST(NSUserDefaults, ReturnsStoredValuesUnchanged) {
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
    // The file was replaced atomically, and no temporary file is left.
    EXPECT_EQ(NSFileManager::defaultManager().enumeratorAtPath(user.configuration()),
              (Names{"Orvane", "Orvane/defaults.conf"}));
}

TEST(NSUserDefaults, ReplacesADamagedFile) {
    const TemporaryUser user;
    write(user.configuration() / "Orvane/defaults.conf", "[Defaults]\nKey=1\nno sense");
    auto& defaults = NSUserDefaults::standardUserDefaults();
    EXPECT_EQ(defaults.objectForKey("Key"), std::nullopt);
    EXPECT_TRUE(defaults.setObjectForKey("2", "Key"));
    EXPECT_EQ(defaults.objectForKey("Key"), "2");
}

TEST(NSBundle, FindsNothingOutsideTheFolderOfBundles) {
    const TemporaryUser user;
    for (const char* folder : {"bundles/a/Resources", "bundles/Resources", "Resources"}) {
        fs::create_directories(user.data() / "orvane" / folder);
    }
    for (const char* identifier :
         {"unknown", "", ".", "..", "../bundles/a", "a/../a", "/", "a/", "a\n"}) {
        EXPECT_EQ(getResourceDirectoryOfFramework(identifier), "") << identifier;
    }
    EXPECT_EQ(getResourceDirectoryOfFramework("a"), user.data() / "orvane/bundles/a/Resources");
}

}  // namespace
