#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "tests/host/HostProcess.h"
#include "tests/host/Picture.h"
#include "tests/runtime/TemporaryFolder.h"

namespace orvane::tests {

// The folder of the application that the tests start, and a place for what they write.
class HostTest : public ::testing::Test {
protected:
    static constexpr const char* probe = ORVANE_TEST_APPLICATIONS "/probe";

    std::string file(const std::string& name) const { return folder_.path() / name; }
    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(file(name)) << text;
        return file(name);
    }

    static HostProcess::Result run(const std::vector<std::string>& arguments) {
        return HostProcess::run(arguments);
    }
    // Runs the host to its good end.
    static void runWell(const std::vector<std::string>& arguments) {
        const auto result = run(arguments);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
    }
    // What a run with a snapshot shows.
    Picture snapshot(std::vector<std::string> arguments) const {
        const std::string path = file("snapshot.png");
        arguments.insert(arguments.end(), {"--snapshot", path, probe});
        runWell(arguments);
        return Picture::read(path);
    }

private:
    TemporaryUser user_;
    TemporaryFolder folder_;
};

}  // namespace orvane::tests
