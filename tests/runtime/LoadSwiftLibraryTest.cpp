#include <dlfcn.h>
#include <gtest/gtest.h>

#include <regex>

#include "orvane/runtime/Runtime.h"
#include "tests/support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using orvane::tests::TemporaryFolder;
using orvane::tests::TemporaryUser;

// A folder of application libraries, which a runtime of its own starts.
class Applications {
public:
    ~Applications() { orvane::Runtime::DeleteInstance(); }

    [[nodiscard]] std::string directory() const { return folder_.path(); }
    [[nodiscard]] std::string pathOf(const std::string& file) const {
        return folder_.path() / file;
    }

    // Copies one of the built libraries into the folder, under the given file name.
    void put(const std::string& library, const std::string& file) const {
        fs::copy_file(fs::path(ORVANE_TEST_APPLICATIONS) / ("lib" + library + ".dylib"),
                      pathOf(file));
    }

    // Starts the applications and returns the output on standard error, without the prefixes of log
    // lines.
    [[nodiscard]] std::string start() const {
        testing::internal::CaptureStderr();
        orvane::Runtime::GetInstance()->initSwift(directory());
        const std::string output = testing::internal::GetCapturedStderr();
        return std::regex_replace(output, std::regex(R"(\d{4}-[^\]]*\] )"), "");
    }
    [[nodiscard]] std::string cannotLoad(const std::string& error) const {
        return "Can't load swift library: '" + directory() + "' " + error + "\n";
    }

private:
    TemporaryUser user_;
    TemporaryFolder folder_;
};

TEST(LoadSwiftLibrary, StartsEveryApplicationAndReportsTheLastFailureAtTheEnd) {
    const struct {
        std::vector<std::string> libraries;
        const char* output;
    } cases[] = {
        {{"Plain"}, "main of Plain\n"},
        {{"ThrowsException"}, "main of ThrowsException\nRuntime error: a standard exception\n"},
        {{"ThrowsCString"}, "main of ThrowsCString\nRuntime error: a C string\n"},
        {{"ThrowsString"}, "main of ThrowsString\nRuntime error: a string\n"},
        {{"ThrowsOther"}, "main of ThrowsOther\nRuntime error: unknown exception\n"},
        // A later success does not clear an earlier failure.
        {{"ThrowsCString", "ThrowsString", "WrittenInC"},
         "main of ThrowsCString\nmain of ThrowsString\nmain in C\nRuntime error: a string\n"},
    };
    for (const auto& each : cases) {
        const Applications applications;
        for (const std::string& library : each.libraries) {
            applications.put(library, "lib" + library + ".dylib");
        }
        EXPECT_EQ(applications.start(), each.output);
        EXPECT_EQ(dlsym(RTLD_DEFAULT, "_TtC5Plain4Main"), nullptr) << "symbols are private";
        const std::string path = applications.pathOf("lib" + each.libraries.front() + ".dylib");
        for (int i = 0; i < 2; ++i) {  // the code stays, no matter who closes it
            void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
            ASSERT_NE(library, nullptr);
            dlclose(library);
            dlclose(library);
        }
    }
}

TEST(LoadSwiftLibrary, NamesTheMissingClassOfALibraryOnlyIfThereIsNoApplication) {
    const struct {
        const char* module;
        const char* symbol;
    } cases[] = {
        {"Other", "_TtC5Other4Main"},
        {"Ähnlich", "_TtC7Ähnlich4Main"},  // The length counts characters.
        {"Newer", "_TtC5Newer4Main"},      // a record of a newer version
        {"Hollow", "_TtC6Hollow4Main"},    // a record without its second function
    };
    for (const auto& each : cases) {
        const Applications applications;
        const std::string file = "lib" + std::string(each.module) + ".dylib";
        applications.put("WrittenInC", file);
        EXPECT_EQ(applications.start(), applications.cannotLoad("") + "'" + file +
                                            "' exports no usable symbol '" + each.symbol + "'\n");
        applications.put("Plain", "libPlain.dylib");
        EXPECT_EQ(applications.start(), "main of Plain\n");
    }
}

TEST(LoadSwiftLibrary, ReportsAFileThatTheLoaderRefusesEvenIfAnotherStarts) {
    const Applications applications;
    fs::create_directory(applications.pathOf("libx.dylib"));
    EXPECT_EQ(dlopen(applications.pathOf("libx.dylib").c_str(), RTLD_NOW | RTLD_LOCAL), nullptr);
    const std::string error = dlerror();
    EXPECT_EQ(applications.start(), applications.cannotLoad(error));
    applications.put("Plain", "libPlain.dylib");
    EXPECT_EQ(applications.start(), "main of Plain\nRuntime error: " + error + "\n");
}

}  // namespace
