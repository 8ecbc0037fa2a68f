#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "tests/host/HostProcess.h"
#include "tests/host/Picture.h"
#include "tests/support/TemporaryFolder.h"

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

    static HostProcess::Result run(const std::vector<std::string>& arguments,
                                   const std::vector<std::string>& changes = {}) {
        return HostProcess(arguments, changes).finish();
    }
    // Runs the host to its good end, and gives what it said.
    static std::string runWell(const std::vector<std::string>& arguments,
                               const std::vector<std::string>& changes = {}) {
        const auto result = run(arguments, changes);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return result.output;
    }
    // What a run with a snapshot shows.
    Picture snapshot(std::vector<std::string> arguments,
                     const std::vector<std::string>& changes = {},
                     const std::string& application = probe) const {
        const std::string path = file("snapshot.png");
        arguments.insert(arguments.end(), {"--snapshot", path, application});
        runWell(arguments, changes);
        return Picture::read(path);
    }

private:
    TemporaryUser user_;
    TemporaryFolder folder_;
};

}  // namespace orvane::tests
