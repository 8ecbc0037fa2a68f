#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include "orvane/display/graphics/quartz/QuartzRect.h"
#include "orvane/display/native/DisplayView.h"
#include "orvane/orvane.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "tests/support/GoldenImage.h"

namespace orvane::display::animation {
namespace {

constexpr std::uint32_t kPaper = 0xFFF1EEE8;
constexpr std::uint32_t kInk = 0xFF22303C;
constexpr std::uint32_t kCoral = 0xFFF2545B;
constexpr std::uint32_t kTeal = 0xFF19A7A0;
constexpr std::uint32_t kAmber = 0xFFF5A623;

constexpr int kSteps = 6;  // frames per second
constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kBlue = 0xFF0000FF;

// The name of a color, independent of the rounding of its components.
std::string nameOf(std::uint32_t color) {
    static const std::map<std::uint32_t, std::string> names{
        {0xFCFC0000, "red"}, {0xFC0000FC, "blue"}, {0xFC000000, "black"}};
    const auto name = names.find(color & 0xFCFCFCFC);
    return name != names.end() ? name->second : "other";
}

// A rectangle that counts how often it is painted.
class CountedRect : public graphics::quartz::QuartzRect {
public:
    void validate(const geometry::Rect<double>& rect) override {
        ++paints;
        QuartzRect::validate(rect);
    }

    int paints = 0;
};

// A display in an off-screen window of 200 x 100 points, with a clock that moves only when the test
// advances it.
class SceneTest : public testing::Test {
protected:
    SceneTest() {
        Display::reset();
        Display::instance()->getView()->setFrame({{0, 0}, {200, 100}});
        window_.setContentView(Display::instance()->getView());
    }
    ~SceneTest() override {
        window_.setContentView(nullptr);
        // The layers of its objects hold the display.
        Display::instance()->removeAll();
        Display::reset();
        clock_.advanceBy(0);
    }

    static std::shared_ptr<CountedRect> makeRect(float x, float y, float width, float height,
                                                 std::uint32_t color) {
        auto rect = std::make_shared<CountedRect>();
        rect->set(x, y, width, height);
        rect->setFillColor(color);
        rect->setStrokeWidth(0);
        return rect;
    }

    std::shared_ptr<ValueAnimation> makeAnimation(const std::shared_ptr<DisplayObject>& object,
                                                  AttributeName attribute,
                                                  const std::vector<float>& values) {
        auto animation = std::make_shared<ValueAnimation>("key", attribute, values);
        animation->setAnimatable(object->extractAnimationLayer());
        animation->setDuration(1);
        animation->setCompletionCallback([this] { ++completions_; });
        return animation;
    }

    // Refreshes the display after a number of seconds.
    void refresh(double seconds) {
        clock_.advanceBy(seconds);
        window_.display();
    }

    std::uint32_t pixel(int x, int y) const {
        return window_.pixels()[static_cast<std::size_t>(y) * window_.bytesPerRow() / 4 +
                                static_cast<std::size_t>(x)];
    }

    platform::CAVirtualClock clock_{100};
    platform::OffscreenWindow window_{{200, 100}};
    int completions_ = 0;
};

// Collects the frames of a second, one below the other, and compares them with a picture.
class GoldenStripTest : public SceneTest {
protected:
    using Container = std::shared_ptr<graphics::Container>;

    GoldenStripTest() {
        window_.setContentSize({440, 70});
        Display::instance()->getView()->setFrame({{0, 0}, {440, 70}});
    }

    // A page of the window's size with a mark in one corner.
    static Container makePage(bool isTeal) {
        auto page = DisplayFactory::createContainer();
        page->add(makeRect(0, 0, 440, 70, isTeal ? kTeal : kPaper));
        page->add(makeRect(isTeal ? 360 : 20, 10, 60, 20, kInk));
        return page;
    }

    // Adds a tile with a mark that makes its rotation visible, and returns an animation of it.
    std::shared_ptr<ValueAnimation> add(const Container& page, float x, AttributeName attribute,
                                        const std::vector<float>& values) {
        auto tile = DisplayFactory::createContainer();
        faces_.push_back(
            makeRect(x, 10, 30, 30, attribute == AttributeName::Opacity ? kCoral : kTeal));
        faces_.back()->setRx(8);
        faces_.back()->setRy(8);
        tile->add(faces_.back());
        tile->add(makeRect(x + 4, 13, 8, 8, kInk));
        page->add(tile);
        return makeAnimation(tile, attribute, values);
    }

    void takeSecond() {
        const double start = platform::CACurrentMediaTime();
        for (int i = 0; i <= kSteps; ++i) {
            clock_.advanceTo(start + static_cast<double>(i) / kSteps);
            window_.display();
            const auto frame = window_.image();
            strip_.insert(strip_.end(), frame->pixels().begin(), frame->pixels().end());
        }
    }

    testing::AssertionResult stripMatches(const std::string& name) const {
        const int height = static_cast<int>(strip_.size()) / 440;
        return matchesGolden(*platform::CGImage::createWithPixels(440, height, strip_),
                             ORVANE_GOLDEN_FOLDER "/" + name);
    }

    std::vector<std::uint32_t> strip_;
    std::vector<std::shared_ptr<CountedRect>> faces_;  // of the tiles
};

TEST_F(GoldenStripTest, AttributesAGroupAndAFrameAnimation) {
    const auto page = DisplayFactory::createContainer();
    page->add(makeRect(0, 0, 440, 70, kPaper));
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

    const auto bar = makeRect(404, 10, 30, 0, kAmber);
    page->add(bar);
    const auto grow = std::make_shared<FrameAnimation>(
        "grow", [&bar](float phase) { bar->setHeight(50 * phase); });
    grow->setDuration(1);
    grow->run();

    takeSecond();
    EXPECT_EQ(completions_, 8);
    EXPECT_FALSE(window_.needsDisplay());
    for (const auto& face : faces_) {
        EXPECT_EQ(face->paints, 1) << "moving, rotating or fading does not paint";
    }
    EXPECT_TRUE(stripMatches("attributes.png"));
}

TEST_F(GoldenStripTest, TransitionsOfEachKind) {
    const auto display = Display::instance();
    auto page = makePage(false);
    display->add(page);
    for (const int type : {Transition::PushFromRight, Transition::PushFromLeft, Transition::Fade}) {
        const auto next = makePage(type != Transition::PushFromLeft);
        const Transition transition{type, 1};
        display->replace(page, next, &transition);
        takeSecond();
        EXPECT_EQ(page->getLayer()->getDisplay(), nullptr);
        EXPECT_FALSE(window_.needsDisplay());
        page = next;
    }
    EXPECT_TRUE(stripMatches("transitions.png"));
}

// Removing anything that an endless animation depends on ends it: it completes once, its
// description is released, and no more frames are requested.
TEST_F(SceneTest, RemovingWhatAnAnimationNeedsEndsIt) {
    struct Scene {
        std::shared_ptr<graphics::Container> root = DisplayFactory::createContainer();
        std::shared_ptr<graphics::Container> inner = DisplayFactory::createContainer();
        std::shared_ptr<CountedRect> rect = makeRect(10, 10, 20, 20, kRed);
    };
    const struct {
        const char* what;
        std::function<void(Scene&)> remove;
    } cases[] = {
        {"the animated object", [](Scene& s) { s.inner->erase(s.inner->find(s.rect)); }},
        {"an ancestor", [](Scene& s) { s.root->erase(s.root->find(s.inner)); }},
        {"the top-level object", [](Scene& s) { Display::instance()->remove(s.root); }},
        {"the animation", [](Scene& s) { s.rect->getLayer()->removeAnimation("key"); }},
        {"the display's view", [this](Scene&) { window_.setContentView(nullptr); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        completions_ = 0;
        std::weak_ptr<ValueAnimation> animation;
        std::weak_ptr<CountedRect> object;
        {
            Scene scene;
            scene.inner->add(scene.rect);
            scene.root->add(scene.inner);
            Display::instance()->add(scene.root);
            const auto endless = makeAnimation(scene.rect, AttributeName::Rotation, {0, 1});
            endless->setRepeatCount(-1);
            endless->run();
            animation = endless;
            object = scene.rect;
            refresh(1.5);
            EXPECT_TRUE(window_.isAnimating());
            c.remove(scene);
        }
        refresh(0.25);
        refresh(0.25);
        EXPECT_EQ(completions_, 1);
        EXPECT_TRUE(animation.expired());
        EXPECT_FALSE(window_.needsDisplay());
        Display::instance()->removeAll();
        EXPECT_TRUE(object.expired());
    }
}

// A red rectangle at 30, 25, of 40 x 20 points on the screen, inside a container that is moved and
// scaled.
class KeepTest : public SceneTest {
protected:
    KeepTest() {
        root_->setMatrix(2, 0, 10, 0, 2, 5);
        rect_ = makeRect(10, 10, 20, 10, kRed);
        root_->add(rect_);
        Display::instance()->add(root_);
    }

    std::shared_ptr<ValueAnimation> makeKept(AttributeName attribute,
                                             const std::vector<float>& values) {
        auto animation = makeAnimation(rect_, attribute, values);
        animation->setEndState(EndState::Keep);
        return animation;
    }
    // The number of pixels that are not red now and were red in the picture, or the other way.
    int changedSince(const std::vector<std::uint32_t>& picture) {
        int count = 0;
        for (int y = 0; y < 100; ++y) {
            for (int x = 0; x < 200; ++x) {
                count += (pixel(x, y) != 0xFF000000) !=
                         (picture[static_cast<std::size_t>(y * 200 + x)] != 0xFF000000);
            }
        }
        return count;
    }
    std::vector<std::uint32_t> picture() const {
        const auto image = window_.image();
        return {image->pixels().begin(), image->pixels().end()};
    }
    double left() const { return rect_->getFrame().x; }

    std::shared_ptr<graphics::Container> root_ = DisplayFactory::createContainer();
    std::shared_ptr<CountedRect> rect_;
};

TEST_F(KeepTest, TheObjectStaysWhereTheLastKeyFrameShowsIt) {
    const auto object = rect_->getTransformation();
    const struct {
        AttributeName attribute;
        std::vector<float> values;  // the last key frame twice: it is shown before the end
        geometry::Rect<double> frame;
        float anchor = 0;
        int changed = 0;  // pixels: a scaled layer has soft edges
    } cases[] = {
        {AttributeName::TranslationX, {0, 50, 50}, {80, 25, 40, 20}},
        {AttributeName::TranslationY, {0, 50, 50}, {30, 75, 40, 20}},
        {AttributeName::Translation, {0, 0, 50, 30, 50, 30}, {80, 55, 40, 20}},
        {AttributeName::Rotation,
         {0, std::numbers::pi_v<float> / 2, std::numbers::pi_v<float> / 2},
         {40, 15, 20, 40},
         0.5F},
        {AttributeName::Affine, {2, 0, 0, 2, 10, 0, 2, 0, 0, 2, 10, 0}, {40, 25, 80, 40}, 0, 244},
        {AttributeName::Affine,
         {1, 0, 0, 1, 0, 0, 2, 0, 0, 2, 0, 0, 2, 0, 0, 2, 0, 0},
         {10, 15, 80, 40},
         0.5F,
         244},
        {AttributeName::Translation, {1}, {30, 25, 40, 20}, 0.5F},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(getKeyPath(c.attribute) + " " + std::to_string(c.values.size()));
        rect_->setMatrix(1, 0, 0, 0, 1, 0);
        completions_ = 0;
        const auto animation = makeKept(c.attribute, c.values);
        if (c.anchor > 0) {
            animation->setAnchorPointX(c.anchor);
            animation->setAnchorPointY(c.anchor);
        }
        animation->run();
        refresh(0.999);
        const auto before = picture();
        refresh(0.001);
        EXPECT_EQ(completions_, 1);
        EXPECT_EQ(rect_->getLayer()->getPresentationValue(AttributeName::Affine),
                  (std::vector<float>{1, 0, 0, 1, 0, 0}));
        EXPECT_NEAR(rect_->getFrame().x, c.frame.x, 1e-3);
        EXPECT_NEAR(rect_->getFrame().y, c.frame.y, 1e-3);
        EXPECT_NEAR(rect_->getFrame().width, c.frame.width, 1e-3);
        EXPECT_NEAR(rect_->getFrame().height, c.frame.height, 1e-3);
        EXPECT_EQ(changedSince(before), c.changed);
        EXPECT_FALSE(window_.needsDisplay());
    }
    EXPECT_EQ(rect_->getTransformation(), object) << "the last case has no key frame";
}

TEST_F(KeepTest, TheLayerKeepsTheOpacityUntilAnAnimationThatRestores) {
    makeKept(AttributeName::Opacity, {1, 0.25F})->run();
    refresh(1);
    EXPECT_EQ(pixel(50, 35) >> 16 & 0xFF, 64U);
    makeAnimation(rect_, AttributeName::Opacity, {0.25F, 0.75F})->run();
    refresh(0.5);
    EXPECT_EQ(rect_->getLayer()->getPresentationValue(AttributeName::Opacity),
              std::vector<float>{0.5F});
    refresh(0.5);
    EXPECT_EQ(nameOf(pixel(50, 35)), "red");
}

TEST_F(KeepTest, AClipContainerMovesWithItsClip) {
    const auto clip = DisplayFactory::createClipContainer(false);
    clip->setBounds({10, 10, 20, 10});
    root_->remove(rect_);
    clip->add(makeRect(0, 0, 100, 100, kBlue));
    root_->add(clip);
    const auto animation = makeAnimation(clip, AttributeName::Translation, {0, 0, 50, 30, 50, 30});
    animation->setEndState(EndState::Keep);
    animation->run();
    refresh(0.999);
    const auto before = picture();
    refresh(0.001);
    EXPECT_EQ(changedSince(before), 0);
    EXPECT_EQ(clip->getBounds(), (geometry::Rect<double>{35, 25, 20, 10}));
}

TEST_F(KeepTest, StoppingKeepsWhatIsShownOrTheEnd) {
    const struct {
        StopAt where;
        EndState endState;
        double left;
    } cases[] = {{StopAt::Presentation, EndState::Keep, 55},
                 {StopAt::End, EndState::Keep, 130},
                 {StopAt::Presentation, EndState::Restore, 55},
                 {StopAt::End, EndState::Restore, 130}};
    for (const auto& [where, endState, expected] : cases) {
        rect_->setMatrix(1, 0, 0, 0, 1, 0);
        completions_ = 0;
        const auto animation = makeKept(AttributeName::TranslationX, {0, 100});
        animation->stop(where);  // does nothing: it does not run
        animation->setEndState(endState);
        animation->run();
        refresh(0.25);
        EXPECT_EQ(rect_->getLayer()->getPresentationValue(AttributeName::TranslationX),
                  std::vector<float>{25});
        animation->stop(where);
        animation->stop(StopAt::End);
        EXPECT_EQ(left(), expected);
        animation->run();  // the completion of the first run leaves this one alone
        refresh(0);
        EXPECT_EQ(completions_, 1);
        refresh(0.5);
        EXPECT_EQ(rect_->getLayer()->getPresentationValue(AttributeName::TranslationX),
                  std::vector<float>{50});
        refresh(0.5);
        EXPECT_EQ(completions_, 2);
        EXPECT_EQ(left(), endState == EndState::Keep ? expected + 100 : expected);
    }
}

TEST_F(KeepTest, EndsAtTheEndWhenItIsCancelledOrRunAgain) {
    const auto animation = makeKept(AttributeName::TranslationX, {0, 20});
    animation->run();
    animation->run();
    EXPECT_EQ(left(), 50);
    rect_->getLayer()->removeAnimation("key");
    refresh(0);
    EXPECT_EQ(left(), 70);
    EXPECT_EQ(completions_, 2);

    // A run from the callback begins where the one that has ended left the object.
    animation->setCompletionCallback([&] {
        animation->stop(StopAt::End);
        if (++completions_ < 4) {
            animation->run();
        }
    });
    animation->run();
    refresh(1);
    EXPECT_EQ(left(), 90);
    refresh(1);
    EXPECT_EQ(left(), 110);
    EXPECT_EQ(completions_, 4);
}

TEST_F(KeepTest, ThePaceIsThatOfTheEasingAndTheKeyTimes) {
    const auto run = [this](const std::function<void(ValueAnimation&)>& set) {
        const auto animation = makeAnimation(rect_, AttributeName::TranslationX, {0, 100, 0});
        set(*animation);
        animation->run();
        refresh(animation->getDuration() / 4);
        const float shown =
            rect_->getLayer()->getPresentationValue(AttributeName::TranslationX).front();
        animation->stop(StopAt::End);
        refresh(0);
        return shown;
    };
    const auto quad = Easing::make(Easing::Curve::Quad, Easing::Direction::In);
    EXPECT_NEAR(run([&](ValueAnimation& a) { a.setEasing(quad); }), 100 / 8.0, 1e-3);
    EXPECT_NEAR(run([&](ValueAnimation& a) { a.setKeyFrameEasings({quad}); }), 100 / 4.0, 1e-3);
    EXPECT_NEAR(run([](ValueAnimation& a) { a.setKeyTimes({0, 0.75F, 1}); }), 100 / 3.0, 1e-3);
    const Spring spring = Spring::withBounce(0.4, 0.5);
    EXPECT_NEAR(run([&](ValueAnimation& a) { a.setSpring(spring); }),
                200 - 200 * spring.positionAt(spring.getSettlingTime() / 4), 1);
    for (const std::vector<float>& wrong :
         {std::vector<float>{0, 1}, {0, 0.75F, 0.5F}, {0, 0.75F, 1.5F}, {0, std::nanf(""), 1}}) {
        testing::internal::CaptureStderr();
        EXPECT_NEAR(run([&](ValueAnimation& a) { a.setKeyTimes(wrong); }), 50, 1e-3);
        EXPECT_NE(testing::internal::GetCapturedStderr().find("'key' has key times that do not"),
                  std::string::npos);
    }
}

TEST_F(KeepTest, AGroupStopsItsAnimations) {
    const auto group = std::make_shared<GroupAnimation>("group");
    const auto move = makeKept(AttributeName::TranslationX, {0, 100});
    group->setAnimatable(move->getAnimatable());
    group->setCompletionCallback([this] { completions_ += 10; });
    group->add(move);
    group->add(nullptr);
    group->run();
    refresh(0.25);
    group->stop(StopAt::Presentation);
    refresh(0);
    refresh(0);
    EXPECT_EQ(left(), 55);
    EXPECT_EQ(completions_, 11);
}

// A red object is replaced by a blue one. Each fills the window.
class ReplaceTest : public SceneTest {
protected:
    ReplaceTest() {
        display_->add(old_);
        window_.display();
    }

    void replace(const std::shared_ptr<DisplayObject>& from,
                 const std::shared_ptr<DisplayObject>& to, int type) {
        const Transition transition{type, 1};
        display_->replace(from, to, &transition);
    }

    // The colors of the display's objects, then the colors of the left and right half of the
    // window.
    std::string state() const {
        std::string words;
        for (const std::shared_ptr<DisplayObject>& object : display_->getObjects()) {
            words += object == old_ ? "red " : "blue ";
        }
        return words + "| " + nameOf(pixel(50, 50)) + " " + nameOf(pixel(150, 50));
    }

    std::shared_ptr<Display> display_ = Display::instance();
    std::shared_ptr<CountedRect> old_ = makeRect(0, 0, 200, 100, kRed);
    std::shared_ptr<CountedRect> new_ = makeRect(0, 0, 200, 100, kBlue);
};

TEST_F(ReplaceTest, IsImmediateWithoutBothViews) {
    display_->removeAll();
    replace(nullptr, new_, Transition::PushFromRight);
    refresh(0);
    EXPECT_EQ(state(), "blue | blue blue");
    replace(makeRect(0, 0, 10, 10, kRed), old_, Transition::PushFromRight);
    replace(new_, nullptr, Transition::PushFromRight);
    refresh(0);
    EXPECT_EQ(state(), "red | red red");
}

TEST_F(ReplaceTest, EitherObjectMayBeRemovedDuringTheTransition) {
    replace(old_, new_, Transition::PushFromLeft);
    refresh(0.5);
    EXPECT_EQ(state(), "red blue | blue red");
    display_->remove(new_);
    refresh(0);
    refresh(0);
    EXPECT_EQ(state(), "| black black") << "the end of the transition removes the old object";

    display_->add(old_);
    replace(old_, new_, -5);  // unknown types are fades
    refresh(0.5);
    display_->remove(old_);
    refresh(0.5);
    refresh(0);
    EXPECT_EQ(state(), "blue | blue blue");
}

TEST_F(ReplaceTest, TheTransitionKeepsTheDisplayUntilItsEnd) {
    const std::weak_ptr<Display> display = display_;
    replace(old_, new_, Transition::Fade);
    display_->removeAll();
    Display::reset();
    display_.reset();
    EXPECT_FALSE(display.expired());
    refresh(0);
    refresh(0);
    EXPECT_TRUE(display.expired());
}

}  // namespace
}  // namespace orvane::display::animation
