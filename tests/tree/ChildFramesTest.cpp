#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "tests/tree/FakeLayer.h"

namespace orvane::display {
namespace {

using R = DisplayObject::Rect;

// Records its index whenever painting reaches it.
class Recorder : public Spot {
public:
    Recorder(const R& area, std::vector<std::uint64_t>& visited) : Spot(area), visited_(visited) {}
    void validate(const R&) override { visited_.push_back(getIndex()); }

private:
    std::vector<std::uint64_t>& visited_;
};

// A container that is large enough for the grid must give what a walk over its children gives.
class ChildFramesTest : public testing::Test {
protected:
    // In whole numbers, so that sums are exact. Some are empty, and some are too large for a grid.
    R anyRect() {
        const double side = std::floor(std::exponential_distribution<double>(0.05)(random_)) *
                            (random_() % 20 == 0 ? 25 : 1);
        return {std::floor(std::uniform_real_distribution<double>(-200, 1000)(random_)),
                std::floor(std::uniform_real_distribution<double>(-200, 600)(random_)), side,
                random_() % 4 == 0 ? 0 : side * 2};
    }
    std::size_t anyIndex() { return random_() % spots_.size(); }

    void expectSameAsWalking() {
        const R dirty = anyRect();
        visited_.clear();
        root_->validate(dirty);
        visits_ += visited_.size();
        children_ += spots_.size();
        std::erase_if(visited_, [&](std::uint64_t index) {
            return !root_->getChildren()[index]->getFrame().touches(dirty);
        });
        R walked;
        std::vector<std::uint64_t> touched;
        for (const auto& child : root_->getChildren()) {
            if (child->isVisible()) {
                walked.unite(child->getFrame());
            }
            if (child->getFrame().touches(dirty)) {
                touched.push_back(child->getIndex());
            }
        }
        EXPECT_EQ(root_->getFrame(), walked);
        EXPECT_EQ(visited_, touched) << "in drawing order";
    }

    std::mt19937 random_{7};
    std::shared_ptr<Group> hidden_ = std::make_shared<Group>();
    std::shared_ptr<Group> root_ = std::make_shared<Group>();
    std::vector<std::shared_ptr<Spot>> spots_;
    std::vector<std::uint64_t> visited_;
    std::size_t visits_ = 0;
    std::size_t children_ = 0;
};

TEST_F(ChildFramesTest, EqualsAWalkAfterAnyChanges) {
    for (int step = 0; step < 3000; ++step) {
        switch (random_() % 6) {
            case 0:
            case 1: {
                spots_.push_back(std::make_shared<Recorder>(anyRect(), visited_));
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
                if (step % 5 == 0) {
                    // The container, or one around it, is hidden or shown, or it moves.
                    (random_() % 2 == 0 ? root_ : hidden_)->setVisible(random_() % 4 != 0);
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
    EXPECT_LT(visits_, children_ / 2) << "the grid spares most children";
}

TEST_F(ChildFramesTest, IgnoresFramesThatAreNotNumbersOrAreEmpty) {
    for (int i = 0; i < 100; ++i) {
        spots_.push_back(std::make_shared<Spot>(R(i, i, 0, 0)));
        root_->add(spots_.back());
    }
    spots_[99]->setVisible(false);
    EXPECT_EQ(root_->getFrame(), R(98, 98, 0, 0)) << "the last empty frame, if all are empty";
    spots_[3]->setArea({0.1, 0.2, 0.3, 0.4});
    const double nan = std::numeric_limits<double>::quiet_NaN();
    spots_[50]->setArea({nan, nan, nan, nan});
    EXPECT_EQ(root_->getFrame(), spots_[3]->getFrame());
    root_->validate(spots_[3]->getFrame());
    EXPECT_EQ(spots_[3]->validations, 1);
}

}  // namespace
}  // namespace orvane::display
