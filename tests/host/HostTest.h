#pragma once

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "tests/host/HostProcess.h"
#include "tests/support/Picture.h"
#include "tests/support/TemporaryFolder.h"

namespace orvane::tests {

// Runs the host with the probe application, and provides a folder for files.
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
    // Runs the host, expects that it succeeds, and returns its output.
    static std::string runWell(const std::vector<std::string>& arguments,
                               const std::vector<std::string>& changes = {}) {
        const auto result = run(arguments, changes);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return result.output;
    }
    // Returns the pixels of a PNG file as 0xRRGGBBAA; nothing if the file cannot be read.
    static Picture readPicture(const std::string& path) {
        png_image image = {};
        image.version = PNG_IMAGE_VERSION;
        if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
            return {};
        }
        // This order of bytes makes 0xRRGGBBAA on a little-endian machine.
        image.format = PNG_FORMAT_ABGR;
        Picture picture{static_cast<int>(image.width), static_cast<int>(image.height), {}};
        picture.pixels.resize(PNG_IMAGE_SIZE(image) / sizeof picture.pixels[0]);
        png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr);
        return picture;
    }
    // Returns the snapshot of a run.
    Picture snapshot(std::vector<std::string> arguments,
                     const std::vector<std::string>& changes = {},
                     const std::string& application = probe) const {
        const std::string path = file("snapshot.png");
        arguments.insert(arguments.end(), {"--snapshot", path, application});
        runWell(arguments, changes);
        return readPicture(path);
    }

private:
    TemporaryUser user_;
    TemporaryFolder folder_;
};

}  // namespace orvane::tests
