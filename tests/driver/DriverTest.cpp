#include "orvane/driver/Driver.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "orvane/display/tree/DisplayObject.h"
#include "orvane/driver/comparePictures.h"
#include "orvane/system/system.h"
#include "platform/coregraphics/CGImage.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using orvane::driver::Driver;
using orvane::driver::Failure;
using orvane::driver::Query;
using orvane::platform::CGImage;

constexpr const char* kForm = ORVANE_TEST_APPLICATIONS;
constexpr const char* kGolden = ORVANE_GOLDEN_FOLDER "/squares.png";

class DriverTest : public ::testing::Test {
protected:
    double xOf(const Query& query) { return driver_.find(query)->getFrame().x; }
    // Returns why something fails; empty if it does not.
    template <typename Action>
    static std::string faultOf(Action action) {
        try {
            action();
        } catch (const Failure& failure) {
            return failure.what();
        }
        return {};
    }

    Driver driver_{kForm, {.size = {200, 120}}};
};

TEST_F(DriverTest, FindsVisibleObjectsByEachProperty) {
    const struct {
        Query query;
        std::vector<double> expected;  // the x of what is found
    } cases[] = {
        {{.kind = "Rect"}, {10, 110, 160}},
        {{.label = "Handle"}, {10}},
        {{.kind = "Text", .label = "Handle"}, {}},
        {{.text = "no press"}, {0}},
        {{.kind = "InputText", .text = "typed"}, {10}},
        {{.path = "Container/Rect"}, {10}},
        {{.path = "Container[0]/Rect[1]"}, {110}},
        {{.path = "Container/Rect[2]"}, {}},
        {{.path = "Container/Container/Rect"}, {160}},
        {{.path = "*/*[2]/*"}, {160}},
        {{.path = "Container/Container[1]/Line"}, {30}},
        {{.path = "Container[1]/Rect"}, {}},
        {{.path = "InputText"}, {10}},
        {{.path = "Rect"}, {}},
    };
    for (const auto& [query, expected] : cases) {
        std::vector<double> found;
        for (const auto& object : driver_.findAll(query)) {
            found.push_back(object->getFrame().x);
        }
        EXPECT_EQ(found, expected) << query.kind << query.label << query.text << query.path;
    }
}

TEST_F(DriverTest, SaysWhatItDidNotFind) {
    const std::string none = faultOf([&] { driver_.find({.kind = "Circle", .label = "Sun"}); });
    EXPECT_TRUE(none.starts_with("no visible object has kind \"Circle\", label \"Sun\"; ")) << none;
    EXPECT_NE(none.find("\n    Rect label \"Handle\"\n    Rect[1]\n    Container\n      Rect\n"),
              std::string::npos)
        << none;
    EXPECT_NE(none.find("Text[1] text \"no press\" hidden"), std::string::npos) << none;
    const std::string several = faultOf([&] { driver_.press({.kind = "Rect"}); });
    EXPECT_TRUE(several.starts_with("3 visible objects have kind \"Rect\"; ")) << several;
}

TEST(DriverStart, FailsWithoutAnApplication) {
    EXPECT_THROW(Driver("/no/such/folder"), Failure);
}

TEST_F(DriverTest, PressesAndDragsAtTheVisiblePartOfAnObject) {
    driver_.press({.label = "Handle"});
    driver_.find({.text = "1 presses"});
    driver_.drag({.label = "Handle"}, {170, 20}, 0.5);
    EXPECT_NEAR(driver_.time(), 0.5 + 1.0 / 60, 1e-9);
    EXPECT_NEAR(xOf({.label = "Handle"}), 180, 1e-3);
    driver_.drag({.label = "Handle"}, {40, 0});
    const std::string fault = faultOf([&] { driver_.press({.label = "Handle"}); });
    EXPECT_TRUE(fault.ends_with(" is empty or outside the window")) << fault;
}

TEST_F(DriverTest, StepsThroughAnAnimationAndTheWorkAfterIt) {
    for (int i = 0; i < 3; ++i) {
        driver_.press({.label = "Handle"});
    }
    const auto x = [&] {
        // What the compositor shows: the frame of an animated object does not move.
        const auto picture = driver_.picture();
        int column = 0;
        const auto row = picture->pixels().subspan(static_cast<std::size_t>(30 * picture->width()));
        while (row[static_cast<std::size_t>(column)] == row[0]) {
            ++column;
        }
        return column;
    };
    driver_.step(0.5);
    EXPECT_NEAR(x(), 10 + 30, 1);
    EXPECT_FALSE(faultOf([&] { driver_.waitForIdle(0.1); }).empty());
    driver_.waitForIdle();
    driver_.find({.text = "moved"});
    EXPECT_NEAR(driver_.time(), 1 + 3.0 / 60, 2.0 / 60);
}

TEST_F(DriverTest, WaitsForTimedTasks) {
    driver_.step(5);
    EXPECT_TRUE(driver_.findAll({.text = "task"}).empty()) << "5 s have not passed in reality";
    driver_.waitUntil([&] { return !driver_.findAll({.text = "task"}).empty(); });
    EXPECT_FALSE(faultOf([&] { driver_.waitUntil([] { return false; }, 0.01); }).empty());
}

TEST_F(DriverTest, TheApplicationHasAUserWithoutFiles) {
    const std::string base = orvane::system::getBasePath();
    EXPECT_TRUE(base.starts_with(std::filesystem::temp_directory_path().string())) << base;
}

TEST_F(DriverTest, ComparesPictures) {
    const orvane::tests::TemporaryFolder folder;
    const auto old = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    // Texts and controls depend on the fonts of the machine.
    const auto squares = [&] {
        for (const auto& object : driver_.findAll({})) {
            const std::string kind = object->getDescription();
            if (kind == "QuartzText" || kind == "UIInputText") {
                object->setVisible(false);
            }
        }
        driver_.step(0);
    };
    squares();
    EXPECT_EQ(faultOf([&] { driver_.expectPicture(kGolden); }), "");
    if (std::getenv("ORVANE_WRITE_GOLDEN") != nullptr) {
        GTEST_SKIP() << "the rest compares other pictures";
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    driver_.drag({.label = "Handle"}, {5, 0});
    squares();
    EXPECT_EQ(faultOf([&] { driver_.expectPicture(kGolden); }),
              std::string("400 pixels differ from ") + kGolden +
                  "; see squares-actual.png and squares-difference.png");
    const auto difference = CGImage::createWithPNGFile("squares-difference.png");
    ASSERT_TRUE(difference);
    const auto at = [&](int x) {
        return difference->pixels()[static_cast<std::size_t>(30 * 200 + x)];
    };
    EXPECT_EQ(at(9), 0U);
    EXPECT_NE(at(10), 0U);
    EXPECT_EQ(at(15), 0U);
    EXPECT_NE(
        faultOf([&] { driver_.expectPicture("missing.png"); }).find("cannot read missing.png"),
        std::string::npos);
    std::filesystem::current_path(old);
}

}  // namespace
