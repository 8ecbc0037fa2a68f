#include "AnimationPage.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "Palette.h"
#include "Tap.h"

namespace gallery {

using namespace orvane::display;
using namespace orvane::display::animation;

namespace {

constexpr float kPi = std::numbers::pi_v<float>;

// Draws a faint dashed line that something moves along.
void drawTrack(ContainerObject& inside, const std::vector<float>& points) {
    const auto track = DisplayFactory::createPolyline();
    track->set(points, false);
    outline(track, palette::kFaint, 2);
    track->setStrokeDashArray({6, 6});
    inside.add(track);
}

// Adds a rounded square of 44 units around a point, with a mark in one corner that shows rotations.
Container makeTile(ContainerObject& inside, float x, float y, unsigned color) {
    const auto tile = DisplayFactory::createContainer();
    const auto face = DisplayFactory::createRect();
    face->set(x - 22, y - 22, 44, 44);
    face->setRx(12);
    face->setRy(12);
    paint(face, color);
    tile->add(face);
    const auto mark = DisplayFactory::createCircle();
    mark->set(x - 14, y - 14, 5);
    paint(mark, palette::kWhite);
    tile->add(mark);
    inside.add(tile);
    return tile;
}

// Scales the lengths among the key frames with the page.
std::vector<float> scaled(AttributeName attribute, std::vector<float> values, float scale) {
    const auto isLength = [attribute](std::size_t i) {
        switch (attribute) {
            case AttributeName::TranslationX:
            case AttributeName::TranslationY:
            case AttributeName::Translation:
                return true;
            case AttributeName::Affine:
                return i % 6 >= 4;
            default:
                return false;
        }
    };
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] *= isLength(i) ? scale : 1;
    }
    return values;
}

}  // namespace

AnimationPage::AnimationPage(const std::shared_ptr<Navigation>& navigation)
    : navigation_(navigation) {
    drawTranslations();
    drawOpacity();
    drawTurning();
    drawClip();
    drawGroup();
    drawFrames();
    drawTransitions();
}

void AnimationPage::start() {
    for (const auto& loop : loops_) {
        loop->start();
    }
}

void AnimationPage::drawIcon(ContainerObject& inside) {
    const unsigned colors[] = {0x55F5A623, 0x99F5A623, palette::kAmber};
    for (int i = 0; i < 3; ++i) {
        const auto dot = DisplayFactory::createCircle();
        dot->set(6.0F * static_cast<float>(i), 6, 6);
        paint(dot, colors[i]);
        inside.add(dot);
    }
}

void AnimationPage::addLoop(Loop::Make make) {
    loops_.push_back(std::make_shared<Loop>(page_.root(), std::move(make)));
}

void AnimationPage::addMotion(const Motion& motion) {
    addLoop([motion](const std::string& key, float scale) {
        auto animation = std::make_shared<ValueAnimation>(
            key, motion.attribute, scaled(motion.attribute, motion.values, scale));
        animation->setAnimatable(motion.object->extractAnimationLayer());
        animation->setDuration(motion.duration);
        animation->setAnchorPointX(0.5F);
        animation->setAnchorPointY(0.5F);
        return animation;
    });
}

void AnimationPage::drawTranslations() {
    addCard("Translation in x", [this](ContainerObject& inside) {
        drawTrack(inside, {48, 118, 227, 118});
        addMotion({makeTile(inside, 48, 118, palette::kCoral),
                   AttributeName::TranslationX,
                   {0, 179, 0},
                   3});
    });
    addCard("Translation in y", [this](ContainerObject& inside) {
        // A ball that is thrown up: many key frames on a parabola.
        drawTrack(inside, {60, 214, 215, 214});
        std::vector<float> heights;
        for (int i = 0; i <= 24; ++i) {
            const float t = static_cast<float>(i) / 12 - 1;
            heights.push_back(-118 * (1 - t * t));
        }
        const auto ball = DisplayFactory::createCircle();
        ball->set(115, 168, 22);
        paint(ball, palette::kAmber);
        inside.add(ball);
        addMotion({ball, AttributeName::TranslationY, heights, 1.2F});
    });
    addCard("Translation", [this](ContainerObject& inside) {
        drawTrack(inside, {60, 50, 215, 50, 215, 186, 60, 186, 60, 50});
        addMotion({makeTile(inside, 60, 50, palette::kTeal),
                   AttributeName::Translation,
                   {0, 0, 155, 0, 155, 136, 0, 136, 0, 0},
                   4});
    });
}

void AnimationPage::drawOpacity() {
    addCard("Opacity", [this](ContainerObject& inside) {
        // They fade as one picture: nothing shows through where they overlap.
        drawTrack(inside, {40, 118, 235, 118});
        const auto group = DisplayFactory::createContainer();
        const unsigned colors[] = {palette::kCoral, palette::kAmber, palette::kTeal};
        for (int i = 0; i < 3; ++i) {
            const auto circle = DisplayFactory::createCircle();
            circle->set(48 + 42.0F * static_cast<float>(i), 72, 46);
            paint(circle, colors[i]);
            group->add(circle);
        }
        inside.add(group);
        addMotion({group, AttributeName::Opacity, {1, 0.1F, 1}, 3});
    });
}

void AnimationPage::drawTurning() {
    addCard("Rotation", [this](ContainerObject& inside) {
        const auto star = DisplayFactory::createContainer();
        // An invisible square makes the center of the layer the center of the star.
        const auto frame = DisplayFactory::createRect();
        frame->set(58, 38, 160, 160);
        paint(frame, 0x10F2545B);
        frame->setRx(80);
        frame->setRy(80);
        star->add(frame);
        const auto lines = DisplayFactory::createPolyline();
        lines->set(starPoints(138, 118, 76), true);
        paint(lines, palette::kViolet, palette::kInk, 2);
        star->add(lines);
        inside.add(star);
        addMotion({star, AttributeName::Rotation, {0, 2 * kPi}, 4});
    });
    addCard("Affine", [this](ContainerObject& inside) {
        // Leans over, lies down, grows, and returns.
        addMotion({makeTile(inside, 138, 118, palette::kBlue),
                   AttributeName::Affine,
                   {1, 0, 0,    1, 0,  0,  //
                    1, 0, 0.6F, 1, 30, 0,  //
                    0, 2, -2,   0, 0,  0,  //
                    2, 0, 0,    2, 0,  0,  //
                    1, 0, 0,    1, 0,  0},
                   4});
    });
}

void AnimationPage::drawClip() {
    addCard("Clip container", [this](ContainerObject& inside) {
        // The window turns together with its content, which it clips.
        const auto window = DisplayFactory::createClipContainer(false);
        window->setBounds({72, 52, 132, 132});
        inside.add(window);
        const unsigned colors[] = {palette::kCoral, palette::kAmber, palette::kTeal,
                                   palette::kBlue};
        for (int i = 0; i < 8; ++i) {
            const auto stripe = DisplayFactory::createRect();
            stripe->set(40 + 26.0F * static_cast<float>(i), -40, 13, 320);
            paint(stripe, colors[i % 4]);
            turn(*stripe, 24, 138, 118);
            window->add(stripe);
        }
        addMotion({window, AttributeName::Rotation, {0, kPi / 6, 0, -kPi / 6, 0}, 4});
    });
}

void AnimationPage::drawGroup() {
    addCard("Group", [this](ContainerObject& inside) {
        constexpr int bars = 7;
        std::vector<std::shared_ptr<DisplayObject>> objects;
        for (int i = 0; i < bars; ++i) {
            const auto bar = DisplayFactory::createRect();
            bar->set(36 + 30.0F * static_cast<float>(i), 128, 20, 78);
            bar->setRx(10);
            bar->setRy(10);
            paint(bar, i % 2 == 0 ? palette::kTeal : palette::kGreen);
            inside.add(bar);
            objects.push_back(bar);
        }
        // The bars move one after the other, and again after the last one has stopped.
        addLoop([objects](const std::string& key, float scale) {
            auto group = std::make_shared<GroupAnimation>(key);
            for (std::size_t i = 0; i < objects.size(); ++i) {
                const auto rise = std::make_shared<ValueAnimation>(
                    "rise", AttributeName::TranslationY,
                    scaled(AttributeName::TranslationY, {0, -90, 0}, scale));
                rise->setAnimatable(objects[i]->extractAnimationLayer());
                rise->setDelay(0.15F * static_cast<float>(i));
                rise->setDuration(1);
                group->add(rise);
                group->setAnimatable(rise->getAnimatable());
            }
            return group;
        });
    });
}

void AnimationPage::drawFrames() {
    addCard("Frame animation", [this](ContainerObject& inside) {
        // The wave runs to the right; every frame sets its points.
        const auto wave = DisplayFactory::createPolyline();
        outline(wave, palette::kBlue, 5);
        const auto drawWave = [wave](float phase) {
            std::vector<float> points;
            for (int i = 0; i <= 70; ++i) {
                const auto x = static_cast<float>(i);
                points.push_back(32 + 3 * x);
                points.push_back(118 + 56 * std::sin(0.16F * x - 2 * kPi * phase) *
                                           std::sin(kPi * x / 70));
            }
            wave->set(points, false);
        };
        drawWave(0);
        inside.add(wave);
        addLoop([drawWave](const std::string& key, float) {
            auto frames = std::make_shared<FrameAnimation>(key, drawWave);
            frames->setDuration(2);
            return frames;
        });
    });
}

void AnimationPage::drawTransitions() {
    struct Change {
        const char* title;
        Transition::Type type;
        std::vector<float> arrow;  // empty for a fade
    };
    const Change changes[] = {
        {"Push from the right", Transition::PushFromRight, {150, 88, 118, 118, 150, 148}},
        {"Push from the left", Transition::PushFromLeft, {126, 88, 158, 118, 126, 148}},
        {"Fade", Transition::Fade, {}}};
    for (const Change& change : changes) {
        addCard(change.title, [this, &change](ContainerObject& inside) {
            const auto button = DisplayFactory::createContainer();
            const auto face = DisplayFactory::createCircle();
            face->set(78, 58, 60);
            paint(face, palette::kRail);
            button->add(face);
            if (change.arrow.empty()) {
                for (const float x : {98.0F, 122.0F}) {
                    const auto veil = DisplayFactory::createCircle();
                    veil->set(x, 91, 27);
                    paint(veil, x < 100 ? palette::kCoral : 0xAA19A7A0);
                    button->add(veil);
                }
            } else {
                const auto arrow = DisplayFactory::createPolyline();
                arrow->set(change.arrow, false);
                outline(arrow, palette::kAmber, 10);
                button->add(arrow);
            }
            const auto tap = std::make_shared<Tap>(
                [navigation = std::weak_ptr(navigation_), type = change.type] {
                    if (const auto held = navigation.lock()) {
                        held->showNext(type);
                    }
                });
            button->addListener<events::TouchEvent>(tap);
            taps_.push_back(tap);
            inside.add(button);
        });
    }
}

}  // namespace gallery
