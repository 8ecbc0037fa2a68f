#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "tests/tree/FakeLayer.h"

namespace orvane::display {
namespace {

using R = DisplayObject::Rect;

// A container that is large enough for the grid must give what a walk over its children gives.
class ChildFramesTest : public testing::Test {
protected:
    // In whole numbers, so that sums are exact. Some are empty.
    R anyRect() {
        const double side = std::floor(std::exponential_distribution<double>(0.05)(random_));
        return {std::floor(std::uniform_real_distribution<double>(-200, 1000)(random_)),
                std::floor(std::uniform_real_distribution<double>(-200, 600)(random_)), side,
                random_() % 4 == 0 ? 0 : side * 2};
    }
    std::size_t anyIndex() { return random_() % spots_.size(); }

    void expectSameAsWalking() {
        R walked;
        for (const auto& spot : spots_) {
            if (spot->isVisible()) {
                walked.unite(spot->getFrame());
            }
        }
        EXPECT_EQ(root_->getFrame(), walked);

        const R dirty = anyRect();
        for (const auto& spot : spots_) {
            spot->validations = 0;
        }
        root_->validate(dirty);
        for (const auto& spot : spots_) {
            EXPECT_EQ(spot->validations, spot->getFrame().touches(dirty) ? 1 : 0);
        }
    }

    std::mt19937 random_{7};
    std::shared_ptr<Group> hidden_ = std::make_shared<Group>();
    std::shared_ptr<Group> root_ = std::make_shared<Group>();
    std::vector<std::shared_ptr<Spot>> spots_;
};

TEST_F(ChildFramesTest, EqualsAWalkAfterAnyChanges) {
    for (int step = 0; step < 3000; ++step) {
        switch (random_() % 6) {
            case 0:
            case 1: {
                spots_.push_back(std::make_shared<Spot>(anyRect()));
                const auto at = static_cast<std::ptrdiff_t>(random_() % (spots_.size()));
                root_->store(root_->getChildren().begin() + at, spots_.back());
                break;
            }
            case 2:
                if (spots_.size() > 80) {
                    const auto victim = spots_.begin() + static_cast<std::ptrdiff_t>(anyIndex());
                    root_->remove(*victim);
                    spots_.erase(victim);
                }
                break;
            case 3:
                if (!spots_.empty()) {
                    spots_[anyIndex()]->setVisible(random_() % 2 == 0);
                }
                break;
            case 4:
                if (step % 50 == 0) {
                    // The container, or one around it, is hidden or shown, or it moves.
                    (random_() % 2 == 0 ? root_ : hidden_)->setVisible(random_() % 3 != 0);
                    root_->removeFromParent();
                    if (random_() % 2 == 0) {
                        hidden_->setTranslate(static_cast<float>(random_() % 9), 0);
                        hidden_->add(root_);
                    }
                }
                break;
            default:
                if (!spots_.empty()) {
                    spots_[anyIndex()]->setArea(anyRect());
                }
        }
        if (step % 7 == 0) {
            expectSameAsWalking();
        }
        if (HasFailure()) {
            FAIL() << "at step " << step;
        }
    }
    EXPECT_GT(spots_.size(), 300U);
}

TEST_F(ChildFramesTest, VisitsChildrenInDrawingOrder) {
    class Recorder : public Spot {
    public:
        Recorder(const R& area, std::vector<std::uint64_t>& order) : Spot(area), order_(order) {}
        void validate(const R&) override { order_.push_back(getIndex()); }

    private:
        std::vector<std::uint64_t>& order_;
    };
    std::vector<std::uint64_t> order;
    for (int i = 0; i < 200; ++i) {
        // Neighbors in the order are far apart, so that the grid finds them out of order.
        const double x = (i * 37) % 200 * 10.0;
        root_->store(root_->getChildren().begin() + i / 2,
                     std::make_shared<Recorder>(R(x, i % 3 * 10, 50, 50), order));
    }
    root_->validate({300, 0, 100, 40});
    EXPECT_GT(order.size(), 5U);
    EXPECT_LT(order.size(), 60U);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST_F(ChildFramesTest, IgnoresFramesThatAreNotNumbers) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (int i = 0; i < 100; ++i) {
        spots_.push_back(std::make_shared<Spot>(R(i * 10.0, 0, 5, 5)));
        root_->add(spots_.back());
    }
    spots_[50]->setArea({nan, nan, nan, nan});
    EXPECT_EQ(root_->getFrame(), R(0, 0, 995, 5));
    root_->validate({500, 0, 10, 5});
    EXPECT_EQ(spots_[51]->validations, 1);
}

TEST_F(ChildFramesTest, OfHiddenOrEmptyChildrenTheLastEmptyFrameIsTheUnion) {
    for (int i = 0; i < 100; ++i) {
        spots_.push_back(std::make_shared<Spot>(R(i, i, 0, 0)));
        root_->add(spots_.back());
    }
    spots_[99]->setVisible(false);
    EXPECT_EQ(root_->getFrame(), R(98, 98, 0, 0));
    spots_[3]->setArea({0.1, 0.2, 0.3, 0.4});
    EXPECT_EQ(root_->getFrame(), spots_[3]->getFrame());
}

}  // namespace
}  // namespace orvane::display
