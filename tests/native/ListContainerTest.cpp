#include "orvane/display/graphics/ListContainer.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

#include "platform/appkit/NSScrollView.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "tests/native/Stage.h"

namespace orvane::display {

namespace {

using graphics::ListContainer;

// What the rows show: each has a color of its own and a height.
struct Item {
    unsigned rgb;
    double height;
};

// A list of 120 x 100 points at (40, 30).
class ListContainerTest : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        list_->setBounds({10, 5, 120, 100});
        place_->translate(30, 25);
        place_->add(list_);
        display_->add(place_);
        list_->setRowFunction([this](std::size_t row, const auto& recycled) {
            ++made_;
            return show(items_.at(row), recycled);
        });
    }
    void TearDown() override {
        list_->setRowFunction({});
        Stage::TearDown();
    }

    static std::shared_ptr<DisplayObject> show(const Item& item,
                                               const std::shared_ptr<DisplayObject>& recycled) {
        auto row = std::dynamic_pointer_cast<graphics::Rect>(recycled);
        if (!row) {
            row = rect(0, 0, 0, 0, 0);
        }
        row->set(0, 0, 120, static_cast<float>(item.height));
        row->setFillColor(0xFF000000 | item.rgb);
        row->getOrCreateAccessibilityElement()->setLabel(std::to_string(item.rgb));
        return row;
    }
    void setItems(std::size_t count, double height) {
        items_.clear();
        for (std::size_t i = 0; i < count; ++i) {
            items_.push_back({nextColor(), height});
        }
    }
    unsigned nextColor() {
        color_ = (color_ + 0x3A71C5) & 0xFFFFFF;
        return color_;
    }
    void run(double seconds) {
        for (int i = 0; i < std::lround(seconds * 60); ++i) {
            clock_.advanceBy(1.0 / 60);
            window_.display();
        }
    }
    void fling(double velocity) {
        using enum platform::NSEventPhase;
        platform::NSEvent event;
        event.type = platform::NSEventType::ScrollWheel;
        event.locationInWindow = {100, 80};
        event.hasPreciseScrollingDeltas = true;
        for (int i = 0; i < 5; ++i) {
            event.timestamp = platform::CACurrentMediaTime();
            event.phase = i == 0 ? Began : i < 4 ? Changed : Ended;
            event.scrollingDelta = {0, i == 4 ? 0 : velocity / 100};
            window_.sendEvent(event);
            clock_.advanceBy(i < 3 ? 0.01 : 0);
        }
    }
    // Compares the list with the items.
    void check(const std::string& when) {
        window_.display();
        const double offset = list_->getContentOffset().y;
        ASSERT_EQ(list_->getRowCount(), items_.size()) << when;
        ASSERT_LE(offset, std::max(list_->getContentSize().height - 100, 0.0)) << when;
        double top = 0;
        std::size_t inView = 0;
        for (std::size_t row = 0; row < items_.size(); ++row) {
            const double bottom = top + items_[row].height;
            const std::shared_ptr<DisplayObject> object = list_->getRow(row);
            if (top < offset + 100 && bottom > offset) {
                ASSERT_TRUE(object) << when << ", row " << row;
                const double shown = std::min(bottom, offset + 100) - std::max(top, offset);
                ASSERT_TRUE(shown < 1 || !object->getFrameOnScreen().isEmpty()) << when;
            }
            if (object) {
                ++inView;
                const auto frame = object->getFrameOnScreen();
                ASSERT_EQ(object->getAccessibilityElement()->getLabel(),
                          std::to_string(items_[row].rgb))
                    << when;
                if (!frame.isEmpty()) {
                    ASSERT_NEAR(frame.y, std::max(30 + top - offset, 30.0), 0.01) << when;
                }
            }
            top = bottom;
        }
        ASSERT_EQ(list_->getContentSize().height, top) << when;
        ASSERT_LE(list_->getChildren().size(), 2 * inView) << when;
    }
    // The color of the row at the top, and how far its top is from that of the list.
    std::pair<unsigned, double> topRow() {
        const double offset = list_->getContentOffset().y;
        const std::size_t row = list_->getRowAt(offset);
        return {items_.at(row).rgb, list_->getRowOffset(row) - offset};
    }

    platform::CAVirtualClock clock_;
    std::vector<Item> items_;
    unsigned color_ = 0;
    int made_ = 0;
    std::shared_ptr<graphics::Container> place_ = DisplayFactory::createContainer();
    std::shared_ptr<ListContainer> list_ = DisplayFactory::createListContainer();
};

}  // namespace

TEST_F(ListContainerTest, ShowsItsItemsAfterAnyChanges) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&random](std::size_t end) {
            return static_cast<std::size_t>(random() % end);
        };
        const auto height = [&] { return static_cast<double>(5 + below(60)); };
        list_->setRowCount(0);
        setItems(below(400), 20);
        list_->setRowHeights([this](std::size_t row) { return items_.at(row).height; });
        list_->setRowCount(items_.size());
        for (int step = 0; step < 40; ++step) {
            const std::string when =
                "seed " + std::to_string(seed) + " step " + std::to_string(step);
            const std::size_t row = below(items_.size() + 1);
            const std::size_t count = below(std::min<std::size_t>(items_.size() - row, 90) + 1);
            const auto at = items_.begin() + static_cast<std::ptrdiff_t>(row);
            const bool wasAtTop = items_.empty();
            const auto before = wasAtTop ? std::pair<unsigned, double>() : topRow();
            const std::size_t top = list_->getRowAt(list_->getContentOffset().y);
            const std::size_t action = below(5);
            switch (action) {
                case 0: {
                    std::vector<Item> added(below(70));
                    for (Item& item : added) {
                        item = {nextColor(), height()};
                    }
                    items_.insert(at, added.begin(), added.end());
                    list_->insertRows(row, added.size());
                    break;
                }
                case 1:
                    items_.erase(at, at + static_cast<std::ptrdiff_t>(count));
                    list_->removeRows(row, count);
                    break;
                case 2:
                    for (std::size_t i = row; i < row + count; ++i) {
                        items_[i] = {i == top ? items_[i].rgb : nextColor(), height()};
                    }
                    list_->reloadRows(row, count);
                    break;
                case 3:
                    fling(static_cast<double>(below(8000)) - 4000);
                    break;
                default:
                    list_->setContentOffset({0, static_cast<double>(below(12000))});
            }
            check(when);
            const bool isKept = action == 0 || row > top || row + count <= top;
            const bool isAtEnd =
                list_->getContentOffset().y >= list_->getContentSize().height - 100;
            if (action < 3 && isKept && !wasAtTop && !isAtEnd && !items_.empty() &&
                before.second > -20) {
                EXPECT_EQ(topRow().first, before.first) << when;
                EXPECT_NEAR(topRow().second, before.second, 1e-6) << when;
            }
            run(0.05);
            check(when + ", later");
        }
        EXPECT_EQ(picture(), pictureFromScratch()) << seed;
    }
}

TEST_F(ListContainerTest, AMillionRowsCostAsMuchAsThoseInView) {
    constexpr std::size_t kRows = 1000000;
    setItems(kRows, 30);
    list_->setRowHeight(30);
    list_->setRowCount(kRows);
    run(0.1);
    EXPECT_LT(made_, 12);
    made_ = 0;
    fling(3000);
    run(3);
    // Each row was made once on its way through the view.
    const auto passed = static_cast<int>(list_->getContentOffset().y / 30);
    EXPECT_GT(passed, 15);
    EXPECT_LE(made_, passed + 5);
    list_->scrollToRow(kRows - 1, ListContainer::Motion::Immediate);
    EXPECT_EQ(list_->getContentOffset().y, 30.0 * kRows - 100);
    EXPECT_EQ(pixel(100, 128), shown(items_.back().rgb));
    EXPECT_EQ(pixel(100, 99), shown(items_[kRows - 2].rgb));
    EXPECT_LT(list_->getChildren().size(), 16U);
    EXPECT_EQ(picture(), pictureFromScratch());
    list_->scrollToRow(500000, ListContainer::Motion::Animated);
    run(2);
    EXPECT_EQ(list_->getContentOffset().y, 30.0 * 500000);
    EXPECT_EQ(pixel(100, 31), shown(items_[500000].rgb));
    check("in the middle");
    // All of them leave while the list is in motion.
    fling(4000);
    run(0.1);
    items_.clear();
    list_->removeRows(0, kRows);
    run(1);
    check("empty");
    EXPECT_FALSE(list_->isScrolling());
    EXPECT_EQ(pixel(100, 80), 0U);
}

TEST_F(ListContainerTest, AGroupAroundTheListScalesItsRows) {
    setItems(1000000, 20);
    list_->setRowHeight(20);
    list_->setRowCount(items_.size());
    list_->setContentOffset({0, 20.0 * 900000 + 5});
    place_->setMatrix(2, 0, 20, 0, 2, 20);  // the bounds end below the window
    EXPECT_EQ(list_->getContentOffset().y, 40.0 * 900000 + 10);
    EXPECT_EQ(list_->getRowOffset(3), 120);
    EXPECT_EQ(pixel(100, 59), shown(items_[900000].rgb));
    EXPECT_EQ(pixel(100, 61), shown(items_[900001].rgb));
    list_->scrollToRow(20, ListContainer::Motion::Immediate);
    EXPECT_EQ(pixel(100, 31), shown(items_[20].rgb));
    EXPECT_EQ(picture(), pictureFromScratch());
}

TEST_F(ListContainerTest, MistakesOfTheApplicationAreReported) {
    const auto lines = [](const auto& call) {
        testing::internal::CaptureStderr();
        call();
        const std::string text = testing::internal::GetCapturedStderr();
        return std::count(text.begin(), text.end(), '\n');
    };
    setItems(5, 20);
    list_->setRowCount(5);
    EXPECT_EQ(lines([this] { list_->removeRows(3, 3); }), 1);
    EXPECT_EQ(lines([this] { list_->removeRows(1, static_cast<std::size_t>(-1)); }), 1);
    EXPECT_EQ(lines([this] { list_->insertRows(6, 1); }), 1);
    EXPECT_EQ(lines([this] { list_->scrollToRow(5); }), 1);
    EXPECT_EQ(lines([this] { list_->setRowHeight(NAN); }), 1);
    EXPECT_EQ(lines([this] { list_->setRowHeight(1); }), 0);
    EXPECT_EQ(lines([this] { list_->setRowHeights({}); }), 1);
    list_->setRowHeight(40);
    // Rows that throw, that are the same object, and that do not exist.
    const auto same = rect(0, 0, 10, 10, 0xFFFFFFFF);
    EXPECT_EQ(lines([&] {
                  list_->setRowFunction(
                      [&](std::size_t row, const auto&) -> std::shared_ptr<DisplayObject> {
                          if (row == 0) {
                              throw std::runtime_error("no row");
                          }
                          return row < 3 ? same : nullptr;
                      });
              }),
              2);
    EXPECT_EQ(list_->getRow(1), same);
    EXPECT_EQ(list_->getRow(2), nullptr);
    // A function that changes the list while it makes a row.
    list_->setRowFunction([this](std::size_t, const auto&) {
        if (list_->getRowCount() < 8) {
            list_->insertRows(0, 1);
        }
        return rect(0, 0, 10, 10, 0xFFFFFFFF);
    });
    EXPECT_EQ(list_->getRowCount(), 8U);
    EXPECT_NE(list_->getRow(0), nullptr);
}

}  // namespace orvane::display
