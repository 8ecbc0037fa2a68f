#include <dlfcn.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>

#include "orvane/runtime/Runtime.h"
#include "tests/support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using orvane::tests::TemporaryFolder;
using orvane::tests::TemporaryUser;

// A folder of application libraries, started by a runtime of its own.
class Applications {
public:
    Applications() = default;
    ~Applications() { orvane::Runtime::DeleteInstance(); }
    Applications(const Applications&) = delete;
    Applications& operator=(const Applications&) = delete;

    [[nodiscard]] std::string directory() const { return folder_.path(); }
    [[nodiscard]] std::string pathOf(const std::string& file) const {
        return folder_.path() / file;
    }

    // Puts one of the built libraries in, under a file name.
    void put(const std::string& library, const std::string& file) const {
        fs::copy_file(fs::path(ORVANE_TEST_APPLICATIONS) / ("lib" + library + ".dylib"),
                      pathOf(file));
    }

    // What comes out on standard error; log lines without what stands before their text.
    [[nodiscard]] std::string start() const {
        testing::internal::CaptureStderr();
        orvane::Runtime::GetInstance()->initSwift(directory());
        const std::string output = testing::internal::GetCapturedStderr();
        return std::regex_replace(output, std::regex(R"(\d{4}-[^\]]*\] )"), "");
    }
    [[nodiscard]] std::string cannotLoad(const std::string& error) const {
        return "Can't load swift library: '" + directory() + "' " + error + "\n";
    }
    // What the loader says of a file that it refuses.
    [[nodiscard]] std::string loaderError(const std::string& file) const {
        EXPECT_EQ(dlopen(pathOf(file).c_str(), RTLD_NOW | RTLD_LOCAL), nullptr);
        return dlerror();
    }

private:
    TemporaryUser user_;
    TemporaryFolder folder_;
};

TEST(LoadSwiftLibrary, StartsEveryApplicationAndReportsTheLastFailureAfterTheWalk) {
    const struct {
        std::vector<std::string> libraries;
        const char* output;
    } cases[] = {
        {{"Plain"}, "main of Plain\n"},
        {{"ThrowsException"}, "main of ThrowsException\nRuntime error: a standard exception\n"},
        {{"ThrowsCString"}, "main of ThrowsCString\nRuntime error: a C string\n"},
        {{"ThrowsString"}, "main of ThrowsString\nRuntime error: a string\n"},
        {{"ThrowsOther"}, "main of ThrowsOther\nRuntime error: unknown exception\n"},
        // The success of a later one does not take the failure back.
        {{"ThrowsCString", "ThrowsString", "WrittenInC"},
         "main of ThrowsCString\nmain of ThrowsString\nmain in C\nRuntime error: a string\n"},
    };
    for (const auto& each : cases) {
        const Applications applications;
        for (const std::string& library : each.libraries) {
            applications.put(library, "lib" + library + ".dylib");
        }
        EXPECT_EQ(applications.start(), each.output);
    }
}

TEST(LoadSwiftLibrary, ALibraryWithoutTheClassIsNoError) {
    // No record of that name; one of a newer version; one without its second operation.
    for (const char* file : {"libOther.dylib", "libNewer.dylib", "libHollow.dylib"}) {
        const Applications applications;
        applications.put("WrittenInC", file);
        EXPECT_EQ(applications.start(), applications.cannotLoad("")) << file;
    }
}

TEST(LoadSwiftLibrary, AFileThatTheLoaderRefusesIsReportedWhateverElseStarts) {
    const Applications applications;
    std::ofstream(applications.pathOf("libNoElf.dylib")) << "no library at all";
    EXPECT_EQ(applications.start(),
              applications.cannotLoad(applications.loaderError("libNoElf.dylib")));
    fs::create_directory(applications.pathOf("libx.dylib"));
    const std::string error = applications.loaderError("libx.dylib");
    EXPECT_EQ(applications.start(), applications.cannotLoad(error));
    applications.put("Plain", "libPlain.dylib");
    EXPECT_EQ(applications.start(), "main of Plain\nRuntime error: " + error + "\n");
}

}  // namespace
