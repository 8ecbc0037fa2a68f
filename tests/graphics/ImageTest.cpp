#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <span>

#include "orvane/display/graphics/quartz/QuartzUtils.h"
#include "orvane/orvane.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSData.h"
#include "tests/graphics/painted.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/urlsession/TestServer.h"

namespace orvane::display::graphics {
namespace {

using quartz::QuartzUtils;
using Box = geometry::Rect<double>;
using std::string;

// A gray picture of 3 by 2 pixels.
const string kJpeg =
    "/9j/4AAQSkZJRgABAQAAAQABAAD/2wBDABALDA4MChAODQ4SERATGCgaGBYWGDEjJR0oOjM9PDkzODdASFxOQERXRTc4"
    "UG1RV19iZ2hnPk1xeXBkeFxlZ2P/wAALCAACAAMBAREA/8QAFAABAAAAAAAAAAAAAAAAAAAABv/EABQQAQAAAAAAAAAA"
    "AAAAAAAAAAD/2gAIAQEAAD8ASP/Z";

class ImageTest : public testing::Test {
protected:
    void SetUp() override {
        image_ = DisplayFactory::createImage();
        ASSERT_TRUE(platform::CGImage::createWithPixels(4, 3, pixels_)->writePNG(file_));
        std::ifstream in(file_, std::ios::binary);
        png_.assign(std::istreambuf_iterator<char>(in), {});
    }
    void TearDown() override { std::filesystem::remove(file_); }

    static string base64(const string& bytes) {
        return platform::NSData::dataWithBytes(bytes.data(), bytes.size()).base64EncodedString();
    }

    // Returns what a loader prints.
    template <typename Load>
    static string printedBy(Load load) {
        std::fflush(stdout);
        testing::internal::CaptureStdout();
        load();
        std::fflush(stdout);
        return testing::internal::GetCapturedStdout();
    }

    bool isEmpty() const { return painted(*image_).find("drawImage") == string::npos; }

    const string file_ = testing::TempDir() + "orvane-image-test.png";
    const std::vector<std::uint32_t> pixels_ = {0xff102030, 0xffffffff, 0xff000000, 0x80402010,
                                                0x00000000, 0xff00ff00, 0xffff0000, 0xff0000ff,
                                                0x01010101, 0xffabcdef, 0xff123456, 0x7f7f7f7f};
    string png_;
    std::shared_ptr<Image> image_;
};

TEST_F(ImageTest, LoadsFromEachSource) {
    const string raw(4 * 3 * 4, '\x7f');
    const string png = "data:image/png;base64," + base64(png_);
    const string jpeg = "data:what;x=y;base64," + kJpeg;  // the type is ignored
    const string broken = "data:;base64,\n" + kJpeg + "\n";
    const std::tuple<const char*, std::function<void()>, Box> cases[] = {
        {"a data address", [&] { image_->setPath(png); }, {0, 0, 4, 3}},
        {"an unknown type", [&] { image_->setPath(jpeg); }, {0, 0, 3, 2}},
        {"line breaks", [&] { image_->setPath(broken); }, {0, 0, 3, 2}},
        {"bytes", [&] { image_->setContent(png_); }, {0, 0, 4, 3}},
        {"raw pixels", [&] { image_->setRawData(raw, 4, 3); }, {0, 0, 4, 3}},
        {"too few raw pixels", [&] { image_->setRawData(raw, 100, 50); }, {0, 0, 100, 50}},
    };
    for (const auto& [what, load, bounds] : cases) {
        image_ = DisplayFactory::createImage();
        EXPECT_EQ(printedBy(load), "") << what;
        EXPECT_EQ(image_->getBounds(), bounds) << what;
        EXPECT_FALSE(isEmpty()) << what;
    }
}

TEST_F(ImageTest, AFailureSaysWhyAndKeepsOnlyTheBounds) {
    const auto bytes = [](const string& loader, int length) {
        return "ERROR: QuartzImage::" + loader + " image is not created with content of " +
               std::to_string(length) + " bytes\n";
    };
    const string unknown = "There is no picture of a known kind in ";
    const string damaged = " picture in the content is damaged or too large";
    const string text = testing::TempDir() + "orvane-image-test.txt";
    std::ofstream(text) << "neither PNG nor JPEG";
    const string half = base64(png_.substr(0, png_.size() / 2));
    const std::tuple<std::function<void()>, string, string> cases[] = {
        {[&] { image_->setContent(""); }, bytes("setContent", 0), ""},
        {[&] { image_->setContent("no picture"); }, bytes("setContent", 10), unknown},
        {[&] { image_->setContent("\xff\xd8\xff"); }, bytes("setContent", 3), "JPEG" + damaged},
        {[&] { image_->setContent("GIF89a"); }, bytes("setContent", 6), "GIF" + damaged},
        {[&] { image_->setRawData("", 4, 4); }, bytes("setRawData", 0), ""},
        {[&] { image_->setRawData("abcd", -1, -1); }, bytes("setRawData", 4), ""},
        {[&] { image_->setRawData("abcd", 2000000000, 2000000000); }, bytes("setRawData", 4), ""},
    };
    const auto expectFailure = [&](const std::function<void()>& load, const string& message,
                                   const string& reason) {
        image_->setContent(png_);
        ASSERT_FALSE(isEmpty());
        testing::internal::CaptureStderr();
        EXPECT_EQ(printedBy(load), message);
        const string log = testing::internal::GetCapturedStderr();
        EXPECT_TRUE(reason.empty() ? log.empty() : log.find(reason) != string::npos) << log;
        EXPECT_TRUE(isEmpty()) << message;
        EXPECT_EQ(image_->getBounds(), Box(0, 0, 4, 3));
    };
    for (const auto& [load, message, reason] : cases) {
        expectFailure(load, message, reason);
    }
    const string incomplete = "needs \";base64,\" and complete base64 data";
    const std::pair<string, string> addresses[] = {
        {"", ""},
        {"/dev/zero", ""},
        {"xdata:;base64," + kJpeg, ""},  // "data:" is part of a file name unless it comes first
        {text, unknown + "'" + text + "'"},
        {"data:", incomplete},
        {"data:;base64,AAA", incomplete},
        {"data:image/png,%89PNG", incomplete},
        {"data:;base64,", unknown + "a data address"},
        {"data:;base64," + half, "PNG picture in a data address is damaged"},
    };
    for (const auto& [address, reason] : addresses) {
        expectFailure([&, path = address] { image_->setPath(path); },
                      "ERROR: QuartzImage::setPath '" + address + "'. file not found\n", reason);
    }
    std::filesystem::remove(text);
}

// In the background; what is shown stays until the picture of the last call has arrived.
TEST_F(ImageTest, LoadsWhatWasRequestedLast) {
    const auto finish = [&] {
        while (image_->getState() == ImageState::Pending) {
            platform::drainMainQueue(std::chrono::milliseconds(100));
        }
        return image_->getState();
    };
    image_->setContent(png_);
    image_->load("/nonexistent");
    EXPECT_EQ(image_->getState(), ImageState::Pending);
    EXPECT_EQ(finish(), ImageState::Failed);
    EXPECT_EQ(image_->getBounds(), Box(0, 0, 4, 3));
    EXPECT_FALSE(isEmpty());
    image_->load("file://" + file_);
    image_->load("data:;base64," + kJpeg);
    image_->load(ORVANE_TEST_CORPUS "/svg/square.svg");
    EXPECT_EQ(finish(), ImageState::Loaded);
    while (platform::drainMainQueue(std::chrono::milliseconds(50))) {
    }
    EXPECT_EQ(image_->getBounds(), Box(0, 0, 8, 4));
    image_->load("file://" + file_);
    image_->setContent("");
    while (platform::drainMainQueue(std::chrono::milliseconds(50))) {
    }
    EXPECT_EQ(image_->getState(), ImageState::Failed);
    EXPECT_TRUE(isEmpty());
}

// What a server allows to keep is asked for again when it is too old, and shown if nobody answers.
TEST_F(ImageTest, KeepsPicturesOfServers) {
    const tests::TemporaryFolder folder;
    setenv("XDG_CACHE_HOME", folder.path().c_str(), 1);
    string log;
    auto server = std::make_unique<TestServer>(
        [&](const TestServer::Request& request, TestServer::Connection& connection) {
            const string tag = request.header("If-None-Match");
            log += request.target + " " + tag;
            if (tag.empty()) {
                connection.answer(200, png_, "ETag: 1\r\nCache-Control: no-cache\r\n");
            } else {
                connection.answer(304, "", "Cache-Control: max-age=60\r\n");
            }
        });
    const auto load = [&](const string& address) {
        image_ = DisplayFactory::createImage();
        image_->load(address);
        while (image_->getState() == ImageState::Pending) {
            platform::drainMainQueue(std::chrono::milliseconds(100));
        }
        EXPECT_EQ(isEmpty(), image_->getState() != ImageState::Loaded);
        return std::exchange(log, {}) + (isEmpty() ? " failed" : " loaded");
    };
    const string address = server->url("/picture#part?d=e");
    const string stale = server->url("/stale?a=%C3%A9%2b1+2&b=%&c#part");
    EXPECT_EQ(load(address), "/picture  loaded");
    EXPECT_EQ(load(address), "/picture 1 loaded");
    EXPECT_EQ(load(address), " loaded") << "it is fresh";
    EXPECT_EQ(load(stale), "/stale?a=%C3%A9%2B1+2&b=%25&c  loaded");
    const string unknown = server->url("/unknown");
    server.reset();
    testing::internal::CaptureStderr();
    EXPECT_EQ(load(stale), " loaded");
    EXPECT_EQ(load(unknown), " failed");
    const string lines = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(lines, '\n'), 2) << lines;
    unsetenv("XDG_CACHE_HOME");
}

TEST(QuartzUtilsTest, DecodesBase64FromAnOffset) {
    const std::pair<const char*, std::optional<string>> cases[] = {
        {"xx", ""},      {"xxQUJD", "ABC"},     {"xxQUI=", "AB"},
        {"xxQQ==", "A"}, {"xxQ U\nJD%", "ABC"}, {"xxQUJDQ", {}},
        {"xxQQ", {}},    {"xxQQ=", {}},         {"x", {}},
    };
    for (const auto& [text, expected] : cases) {
        const auto data = QuartzUtils::decodeBase64(text, 2);
        ASSERT_EQ(data.has_value(), expected.has_value()) << text;
        EXPECT_TRUE(!data ||
                    std::ranges::equal(std::span(data->bytes(), data->length()), *expected))
            << text;
    }
}

TEST(QuartzUtilsTest, SplitsAndTrims) {
    using Pieces = std::vector<string>;
    EXPECT_EQ(QuartzUtils::split("a,b,,c,", ','), (Pieces{"a", "b", "", "c", ""}));
    EXPECT_EQ(QuartzUtils::trim(" \t a b\r\n"), "a b");
    EXPECT_EQ(QuartzUtils::trim(" \n "), "");
}

}  // namespace
}  // namespace orvane::display::graphics
