#include "MotionPage.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "Palette.h"
#include "Tap.h"

namespace gallery {

using namespace orvane::display;
using namespace orvane::display::animation;

namespace {

using Curve = Easing::Curve;
using Direction = Easing::Direction;

void drawCaption(ContainerObject& inside, const std::string& content, float x, float y) {
    addText(inside, x, y, content, 10, palette::kCaption);
}

std::shared_ptr<graphics::Circle> makeDot(ContainerObject& inside, float x, float y, float r,
                                          Color color) {
    const auto dot = DisplayFactory::createCircle();
    dot->set(x - r, y - r, r);
    paint(dot, color);
    inside.add(dot);
    return dot;
}

std::shared_ptr<graphics::Rect> makeTile(float side, Color color) {
    const auto tile = DisplayFactory::createRect();
    tile->set(0, 0, side, side);
    tile->setRx(side / 4);
    tile->setRy(side / 4);
    paint(tile, color);
    return tile;
}

std::shared_ptr<graphics::Rect> makeTile(ContainerObject& inside, float x, float y, float side,
                                         Color color) {
    const auto tile = makeTile(side, color);
    tile->set(x, y, side, side);
    inside.add(tile);
    return tile;
}

void drawLine(ContainerObject& inside, const std::vector<float>& points, Color color) {
    const auto line = DisplayFactory::createPolyline();
    line->set(points, false);
    outline(line, color, 2);
    inside.add(line);
}

std::shared_ptr<ValueAnimation> makeAnimation(const std::string& key, DisplayObject& object,
                                              AttributeName attribute, std::vector<float> values) {
    auto animation = std::make_shared<ValueAnimation>(key, attribute, std::move(values));
    animation->setAnimatable(object.extractAnimationLayer());
    return animation;
}

}  // namespace

MotionPage::MotionPage() {
    const auto add = [this](const char* title, void (MotionPage::*draw)(ContainerObject&)) {
        page_.addCard(title, [this, draw](ContainerObject& inside) { (this->*draw)(inside); });
    };
    add("Easing", &MotionPage::drawEasings);
    add("Named curves", &MotionPage::drawCurves);
    add("Springs", &MotionPage::drawSprings);
    add("Key times", &MotionPage::drawKeyTimes);
    add("Each step ends where it is put", &MotionPage::drawWalk);
    add("Touch to stop, and to go on", &MotionPage::drawStop);
    add("Frame loop", &MotionPage::drawFrameLoop);
    page_.addCard("Rows and columns", drawBoxes);
    add("Boxes that wrap: touch them", &MotionPage::drawWrapping);
}

void MotionPage::start() {
    for (const auto& loop : loops_) {
        loop->start();
    }
    if (Look::instance().appearance().reducesMotion) {
        frameLoop_.stop();
        if (run_) {
            run_->stop(StopAt::End);
            run_.reset();
        }
        return;
    }
    if (run_ || runnerPlace_ == 0) {
        startRunner();  // it ended when the page left the display
    }
    frameLoop_.start([this](double, double elapsed) {
        const auto layer = page_.root()->getLayer();
        if (!layer || !layer->getDisplay()) {
            frameLoop_.stop();
            return;
        }
        moveBalls(static_cast<float>(elapsed));
    });
}

void MotionPage::drawIcon(ContainerObject& inside) {
    std::vector<float> points;
    const Easing easing = Easing::easeInOut();
    for (int i = 0; i <= 24; ++i) {
        const auto x = static_cast<float>(i);
        points.insert(points.end(), {x, 22 - 20 * static_cast<float>(easing(x / 24))});
    }
    drawLine(inside, points, palette::kGreen);
}

void MotionPage::addLoop(Loop::Make make) {
    loops_.push_back(std::make_shared<Loop>(page_.root(), std::move(make)));
}

void MotionPage::drawEasings(ContainerObject& inside) {
    struct Lane {
        const char* name;
        Easing easing;
        unsigned color;
    };
    const Lane lanes[] = {{"linear", {}, palette::kCoral},
                          {"ease", Easing::ease(), palette::kAmber},
                          {"ease in", Easing::easeIn(), palette::kGreen},
                          {"ease out", Easing::easeOut(), palette::kTeal},
                          {"in and out", Easing::easeInOut(), palette::kBlue}};
    std::vector<std::pair<std::shared_ptr<DisplayObject>, Easing>> dots;
    float y = 62;
    for (const Lane& lane : lanes) {
        drawCaption(inside, lane.name, 18, y + 4);
        drawLine(inside, {92, y, 250, y}, palette::kEdge);
        dots.emplace_back(makeDot(inside, 92, y, 8, lane.color), lane.easing);
        y += 34;
    }
    addLoop([dots](const std::string& key, float scale) {
        auto group = std::make_shared<GroupAnimation>(key);
        for (const auto& [dot, easing] : dots) {
            const auto move = makeAnimation("move", *dot, AttributeName::TranslationX,
                                            {0, 158 * scale, 158 * scale, 0});
            move->setKeyFrameEasings({easing, {}, easing});
            move->setDuration(3.6F);
            group->add(move);
            group->setAnimatable(move->getAnimatable());
        }
        return group;
    });
}

void MotionPage::drawCurves(ContainerObject& inside) {
    constexpr float kSide = 34;
    const Curve curves[] = {Curve::Sine, Curve::Quad, Curve::Cubic, Curve::Quart,   Curve::Quint,
                            Curve::Expo, Curve::Circ, Curve::Back,  Curve::Elastic, Curve::Bounce};
    const char* const names[] = {"sine", "quad", "cubic", "quart",   "quint",
                                 "expo", "circ", "back",  "elastic", "bounce"};
    std::vector<std::pair<std::shared_ptr<DisplayObject>, Easing>> dots;
    for (int i = 0; i < 10; ++i) {
        const float x = 20 + 49 * static_cast<float>(i % 5);
        const float y = 64 + 92 * static_cast<float>(i / 5);
        const Easing easing = Easing::make(curves[i], Direction::Out);
        std::vector<float> points;
        for (int k = 0; k <= 60; ++k) {
            const float share = static_cast<float>(k) / 60;
            points.insert(points.end(),
                          {x + kSide * share, y + kSide * (1 - static_cast<float>(easing(share)))});
        }
        drawLine(inside, {x, y, x + kSide, y}, palette::kEdge);
        drawLine(inside, points, palette::kFaint);
        drawCaption(inside, names[i], x, y + kSide + 18);
        dots.emplace_back(makeDot(inside, x, y + kSide, 4, palette::kViolet), easing);
    }
    // A dot follows its curve: x is the time, and y has the easing.
    addLoop([dots](const std::string& key, float scale) {
        auto group = std::make_shared<GroupAnimation>(key);
        for (const auto& [dot, easing] : dots) {
            const auto across =
                makeAnimation("across", *dot, AttributeName::TranslationX, {0, kSide * scale});
            const auto up =
                makeAnimation("up", *dot, AttributeName::TranslationY, {0, -kSide * scale});
            up->setEasing(easing);
            for (const auto& animation : {across, up}) {
                animation->setDuration(2.4F);
                group->add(animation);
            }
            group->setAnimatable(up->getAnimatable());
        }
        return group;
    });
}

void MotionPage::drawSprings(ContainerObject& inside) {
    const double bounces[] = {0, 0.4, 0.75};
    const char* const names[] = {"no bounce", "0.4", "0.75"};
    const unsigned colors[] = {palette::kTeal, palette::kBlue, palette::kViolet};
    float x = 48;
    for (int i = 0; i < 3; ++i) {
        drawCaption(inside, names[i], x, 216);
        const auto tile = makeTile(inside, x, 52, 36, colors[i]);
        // Down and up again: each way keeps its end, so that the next one begins there.
        addLoop([tile, spring = Spring::withBounce(0.6, bounces[i]), isDown = false](
                    const std::string& key, float scale) mutable {
            isDown = !isDown;
            auto move = makeAnimation(key, *tile, AttributeName::TranslationY,
                                      {0, (isDown ? 110 : -110) * scale});
            move->setSpring(spring);
            move->setDelay(0.4F);
            move->setEndState(EndState::Keep);
            return move;
        });
        x += 74;
    }
}

void MotionPage::drawKeyTimes(ContainerObject& inside) {
    // A heart that beats twice and rests: two halves of circles and a triangle.
    const auto heart = DisplayFactory::createPath();
    heart->start();
    heart->move(137.5F, 176, true);
    heart->cubicCurve(137.5F, 92, 50, 122, 82, 36, true);
    heart->cubicCurve(137.5F, 176, 193, 36, 225, 122, true);
    heart->close();
    heart->finish();
    paint(heart, palette::kCoral);
    inside.add(heart);
    addLoop([heart](const std::string& key, float) {
        const auto scaleBy = [](float s) { return std::vector<float>{s, 0, 0, s, 0, 0}; };
        std::vector<float> values;
        for (const float size : {1.0F, 1.22F, 1.0F, 1.16F, 1.0F, 1.0F}) {
            const auto frame = scaleBy(size);
            values.insert(values.end(), frame.begin(), frame.end());
        }
        auto beat = makeAnimation(key, *heart, AttributeName::Affine, values);
        beat->setKeyTimes({0, 0.1F, 0.22F, 0.32F, 0.5F, 1});
        beat->setKeyFrameEasings(
            {Easing::easeOut(), Easing::easeIn(), Easing::easeOut(), Easing::easeInOut()});
        beat->setAnchorPointX(0.5F);
        beat->setAnchorPointY(0.5F);
        beat->setDuration(1.2F);
        return beat;
    });
}

void MotionPage::drawWalk(ContainerObject& inside) {
    const float corners[4][2] = {{62, 62}, {214, 62}, {214, 186}, {62, 186}};
    for (const auto& [x, y] : corners) {
        makeDot(inside, x, y, 4, palette::kFaint);
    }
    const auto walker = makeTile(inside, 42, 42, 40, palette::kAmber);
    addLoop([walker, step = 0](const std::string& key, float scale) mutable {
        const float way = scale * static_cast<float>(step % 4 < 2 ? 1 : -1);
        const bool isAcross = step++ % 2 == 0;
        auto walk = makeAnimation(
            key, *walker, isAcross ? AttributeName::TranslationX : AttributeName::TranslationY,
            {0, way * (isAcross ? 152 : 124)});
        walk->setEasing(Easing::make(Curve::Back, Direction::InOut));
        walk->setDuration(0.9F);
        walk->setEndState(EndState::Keep);
        return walk;
    });
}

void MotionPage::drawStop(ContainerObject& inside) {
    drawLine(inside, {48, 128, 227, 128}, palette::kEdge);
    runner_ = makeDot(inside, 48, 128, 20, palette::kGreen);
    taps_.push_back(std::make_shared<Tap>([this] {
        if (run_) {
            const auto shown =
                run_->getAnimatable()->getPresentationValue(AttributeName::TranslationX);
            runnerPlace_ += shown.empty() ? 0 : shown.front() / scale();
            run_->stop(StopAt::Presentation);
            run_.reset();
        } else {
            startRunner();
        }
    }));
    inside.addListener<events::TouchEvent>(taps_.back());
}

float MotionPage::scale() const {
    return static_cast<float>(page_.root()->getTransformation().m00);
}

// From its place to the right end, to the left end, and back to its place, again and again.
void MotionPage::startRunner() {
    constexpr float kWay = 179;
    const float right = kWay - runnerPlace_;
    const float left = -runnerPlace_;
    run_ = makeAnimation("run", *runner_, AttributeName::TranslationX,
                         {0, right * scale(), left * scale(), 0});
    run_->setKeyTimes({0, right / (2 * kWay), (right + kWay) / (2 * kWay), 1});
    run_->setKeyFrameEasings({Easing::easeInOut(), Easing::easeInOut(), Easing::easeInOut()});
    run_->setDuration(3.2F);
    run_->setRepeatCount(-1);
    run_->setEndState(EndState::Keep);
    run_->run();
}

void MotionPage::drawFrameLoop(ContainerObject& inside) {
    // Balls in a box: the loop advances their motion by the time since the previous frame.
    const unsigned colors[] = {palette::kCoral, palette::kAmber,  palette::kGreen,
                               palette::kTeal,  palette::kViolet, palette::kBlue};
    for (std::size_t i = 0; i < std::size(colors); ++i) {
        const auto k = static_cast<float>(i);
        const auto dot = makeDot(inside, 0, 0, 9 + k, colors[i]);
        balls_.push_back({dot, 50 + 35 * k, 80 + 8 * k, 90 - 34 * k, 0});
    }
    moveBalls(0);
}

void MotionPage::moveBalls(float elapsed) {
    constexpr float kGravity = 900;  // points per second squared
    const UpdateLock lock(page_.root());
    for (Ball& ball : balls_) {
        ball.speedY += kGravity * elapsed;
        ball.x += ball.speedX * elapsed;
        ball.y += ball.speedY * elapsed;
        if (ball.x < 30 || ball.x > 245) {
            ball.x = std::clamp(ball.x, 30.0F, 245.0F);
            ball.speedX = -ball.speedX;
        }
        if (ball.y > 206) {
            // What it has fallen below the floor is taken from its height after the bounce.
            ball.y = 2 * 206 - ball.y;
            ball.speedY = -ball.speedY;
        }
        ball.object->setTranslate(ball.x, ball.y);
    }
}

void MotionPage::drawBoxes(ContainerObject& inside) {
    // A window with a bar, a list and a text: nothing here has a position of its own.
    using namespace layout;
    const auto makeRect = [](Color color) { return makeTile(12, color); };
    const auto window = std::make_shared<Box>(
        BoxStyle{.direction = layout::Direction::Column, .gap = 10, .padding = Insets::all(10)});
    window->setBackground(makeRect(palette::kPaper));
    const auto bar =
        std::make_shared<Box>(BoxStyle{.gap = 6, .padding = {8, 0, 8, 0}, .align = Align::Center});
    bar->setBackground(makeRect(palette::kRail));
    for (const unsigned color : {palette::kCoral, palette::kAmber, palette::kGreen}) {
        bar->add(makeRect(color));
    }
    bar->addSpace();
    bar->add(makeRect(palette::kCaption), {.width = 60});
    const auto content = std::make_shared<Box>(BoxStyle{.gap = 10});
    const auto list = std::make_shared<Box>(
        BoxStyle{.direction = layout::Direction::Column, .justify = Justify::SpaceBetween});
    for (int i = 0; i < 5; ++i) {
        list->add(makeRect(i == 1 ? palette::kTeal : palette::kFaint), {.height = 18});
    }
    const auto text = DisplayFactory::createText(true);
    text->setFont("DejaVu Sans");
    text->setTextSize(11);
    colorText(text, palette::kInk);
    text->setContent(
        "This text takes the width that the others leave, and the height that it needs "
        "at this width.");
    content->add(list, {.width = 60});
    content->add(text, {.grow = 1});
    window->add(bar, {.height = 28});
    window->add(content, {.grow = 1});
    inside.add(window->getContainer());
    window->layOut({18, 44, 239, 175});
}

void MotionPage::drawWrapping(ContainerObject& inside) {
    using namespace layout;
    wrapping_ = std::make_shared<Box>(BoxStyle{.gap = 8, .wraps = true, .lineGap = 8});
    Look::instance().follow(wrapping_, [](Box& box) {
        const bool isStill = Look::instance().appearance().reducesMotion;
        box.setMotion(isStill ? 0 : 0.5F, Easing::make(Curve::Back, Direction::Out));
    });
    const unsigned colors[] = {palette::kCoral, palette::kAmber,  palette::kGreen,
                               palette::kTeal,  palette::kViolet, palette::kBlue};
    for (int i = 0; i < 12; ++i) {
        wrapping_->add(makeTile(34, colors[i % 6]), {.width = 34.0 + 8 * (i * 5 % 4)});
    }
    inside.add(wrapping_->getContainer());
    wrapping_->layOut({18, 50, 239, 170});
    taps_.push_back(std::make_shared<Tap>([this] {
        isNarrow_ = !isNarrow_;
        wrapping_->layOut({18, 50, isNarrow_ ? 170.0 : 239.0, 170});
    }));
    inside.addListener<events::TouchEvent>(taps_.back());
}

}  // namespace gallery
