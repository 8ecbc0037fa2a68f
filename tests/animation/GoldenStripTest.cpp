#include <algorithm>
#include <numbers>

#include "orvane/display/animation/FrameAnimation.h"
#include "orvane/display/animation/GroupAnimation.h"
#include "orvane/display/animation/Transition.h"
#include "platform/coregraphics/CGImage.h"
#include "tests/animation/SceneFixture.h"
#include "tests/support/GoldenImage.h"

namespace orvane::display::animation {

namespace {

constexpr std::uint32_t paper = 0xFFF1EEE8;
constexpr std::uint32_t ink = 0xFF22303C;
constexpr std::uint32_t coral = 0xFFF2545B;
constexpr std::uint32_t teal = 0xFF19A7A0;
constexpr std::uint32_t amber = 0xFFF5A623;

constexpr int steps = 6;  // frames to a second

}  // namespace

// What is shown at each sixth of a second, one frame below the other.
class GoldenStripTest : public SceneTest {
protected:
    using Container = std::shared_ptr<graphics::Container>;

    GoldenStripTest() {
        window_.setContentSize({440, 70});
        Display::instance()->getView()->setFrame({{0, 0}, {440, 70}});
    }

    // A page of the window's size with a mark in one corner.
    static Container makePage(std::uint32_t color, float markX) {
        auto page = DisplayFactory::createContainer();
        page->add(makeRect(0, 0, 440, 70, color));
        page->add(makeRect(markX, 10, 60, 20, ink));
        return page;
    }

    // A tile whose turning can be seen.
    static Container makeTile(float x, std::uint32_t color) {
        auto tile = DisplayFactory::createContainer();
        const auto face = makeRect(x, 10, 30, 30, color);
        face->setRx(8);
        face->setRy(8);
        tile->add(face);
        tile->add(makeRect(x + 4, 13, 8, 8, ink));
        return tile;
    }

    std::shared_ptr<ValueAnimation> add(const Container& page, float x, AttributeName attribute,
                                        const std::vector<float>& values) {
        const auto tile = makeTile(x, attribute == AttributeName::Opacity ? coral : teal);
        page->add(tile);
        return makeAnimation(tile, attribute, values);
    }

    void takeFrame() {
        window_.display();
        const auto frame = window_.image();
        strip_.insert(strip_.end(), frame->pixels().begin(), frame->pixels().end());
    }

    void takeSecond() {
        const double start = platform::CACurrentMediaTime();
        for (int i = 0; i < steps; ++i) {
            clock_.advanceTo(start + static_cast<double>(i) / steps);
            takeFrame();
        }
        clock_.advanceTo(start + 1);
        takeFrame();
    }

    testing::AssertionResult stripMatches(const std::string& name) const {
        const int width = window_.pixelWidth();
        const int height = static_cast<int>(strip_.size()) / width;
        return matchesGolden(*platform::CGImage::createWithPixels(width, height, strip_),
                             ORVANE_GOLDEN_FOLDER "/" + name);
    }

    std::vector<std::uint32_t> strip_;
};

TEST_F(GoldenStripTest, EveryAttributeAGroupAndAFrameAnimation) {
    const auto page = DisplayFactory::createContainer();
    page->add(makeRect(0, 0, 440, 70, paper));
    Display::instance()->add(page);

    add(page, 8, AttributeName::TranslationX, {0, 30, 0})->run();
    add(page, 80, AttributeName::TranslationY, {0, 25, 25, 0})->run();
    add(page, 118, AttributeName::Opacity, {1, 0, 1})->run();
    add(page, 156, AttributeName::Translation, {0, 0, 20, 20, 20, 0, 0, 0})->run();
    const auto turn = add(page, 216, AttributeName::Rotation, {0, std::numbers::pi_v<float>});
    turn->setAnchorPointX(0.5F);
    turn->setAnchorPointY(0.5F);
    turn->run();
    add(page, 262, AttributeName::Affine, {1, 0, 0, 1, 0, 0, 1.5F, 0, 0.5F, 1.5F, 0, 0})->run();

    const auto group = std::make_shared<GroupAnimation>("group");
    const auto first = add(page, 330, AttributeName::TranslationY, {0, 28});
    const auto second = add(page, 366, AttributeName::TranslationY, {0, 28});
    second->setDelay(0.5F);
    second->setDuration(0.5F);
    group->add(first);
    group->add(second);
    group->setAnimatable(first->getAnimatable());
    group->run();

    const auto bar = makeRect(404, 10, 30, 0, amber);
    page->add(bar);
    const auto grow = std::make_shared<FrameAnimation>(
        "grow", [&bar](float phase) { bar->setHeight(50 * phase); });
    grow->setDuration(1);
    grow->run();

    takeSecond();
    EXPECT_EQ(completions_, 8);
    EXPECT_TRUE(stripMatches("attributes.png"));
}

TEST_F(GoldenStripTest, BothTransitionsAndTheDefault) {
    const auto display = Display::instance();
    auto page = makePage(paper, 20);
    display->add(page);
    for (const int type : {Transition::PushFromRight, Transition::PushFromLeft, Transition::Fade}) {
        const auto next = makePage(type == Transition::PushFromLeft ? paper : teal,
                                   type == Transition::PushFromLeft ? 20 : 360);
        const Transition transition{type, 1};
        display->replace(page, next, &transition);
        takeSecond();
        page = next;
    }
    EXPECT_TRUE(stripMatches("transitions.png"));
}

}  // namespace orvane::display::animation
