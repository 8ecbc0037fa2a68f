#include <algorithm>
#include <functional>
#include <random>
#include <string>

#include "orvane/display/graphics/ConicGradient.h"
#include "orvane/display/graphics/RadialGradient.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "tests/coretext/registerTestFonts.h"
#include "tests/native/Stage.h"

namespace orvane::display {
namespace {

// After any sequence of changes, the picture that was painted incrementally equals the picture
// painted from scratch, pixel for pixel.
class PieceByPiece : public Stage, public testing::WithParamInterface<unsigned> {
protected:
    void SetUp() override {
        platform::registerTestFonts();
        Stage::SetUp();
    }
    // The same views, painted again at their places.
    std::vector<std::uint32_t> pictureRepainted(platform::NSView& view) {
        view.setNeedsDisplayInRect({{-INFINITY, 0}, {INFINITY, 0}});
        for (const auto& subview : view.subviews()) {
            pictureRepainted(*subview);
        }
        return &view == view_.get() ? picture() : std::vector<std::uint32_t>();
    }

    float any(double from, double to) {
        return static_cast<float>(std::uniform_real_distribution<double>(from, to)(random_));
    }
    bool oneIn(unsigned n) { return random_() % n == 0; }
    unsigned anyColor() { return static_cast<unsigned>(random_()) | (oneIn(2) ? 0xFF000000 : 0U); }

    std::shared_ptr<DisplayObject> anyObject() {
        switch (random_() % 11) {
            case 0: {
                auto group = DisplayFactory::createContainer();
                groups_.push_back(group);
                return group;
            }
            case 1: {
                auto clip = DisplayFactory::createClipContainer(false);
                clip->setBounds({any(0, 150), any(0, 100), any(5, 120), any(5, 80)});
                clip->as<graphics::ClipContainer>()->setCornerRadius(oneIn(2) ? 0 : any(0, 50));
                groups_.push_back(clip);
                return clip;
            }
            case 2:
                if (oneIn(2)) {
                    return ColorControl::create({any(0, 150), any(0, 100), any(5, 50), any(5, 40)},
                                                static_cast<unsigned>(random_()));
                }
                [[fallthrough]];
            case 3: {
                auto circle = DisplayFactory::createCircle();
                circle->set(any(-20, 180), any(-20, 130), any(1, 40));
                return styled(circle);
            }
            case 4: {
                auto line = DisplayFactory::createLine();
                line->set(any(0, 200), any(0, 150), any(0, 200), any(0, 150));
                line->setStrokeColor(anyColor());
                line->setStrokeWidth(any(0.5, 6));
                return line;
            }
            case 5: {
                auto polyline = DisplayFactory::createPolyline();
                polyline->set(
                    {any(0, 200), any(0, 150), any(0, 200), any(0, 150), any(0, 200), any(0, 150)},
                    oneIn(2));
                return styled(polyline);
            }
            case 6:
                return anyPicture();
            default: {
                auto shape = DisplayFactory::createRect();
                shape->set(any(-20, 180), any(-20, 130), any(1, 90), any(1, 60));
                if (oneIn(2)) {
                    shape->setRx(any(0, 20));
                    shape->setRy(any(0, 20));
                }
                return styled(shape);
            }
        }
    }

    std::shared_ptr<DisplayObject> anyPicture() {
        if (oneIn(3)) {
            auto image = DisplayFactory::createImage();
            std::string pixels(8 * 8 * 4, '\0');
            for (char& byte : pixels) {
                byte = static_cast<char>(random_());
            }
            image->setRawData(pixels, 8, 8);
            image->setMatrix(any(0.5, 4), 0, any(0, 150), 0, any(0.5, 4), any(0, 100));
            return image;
        }
        // Accents above the ascent, tails, and a text at a fraction of a point.
        auto text = DisplayFactory::createText(false);
        text->setFont("DejaVu Sans");
        text->setTextSize(any(8, 40));
        text->setContent(oneIn(2) ? "\xC3\x85\xE1\xBB\xA8jg_f" : "W/j");
        text->setX(any(0, 180));
        text->setY(any(0, 140));
        text->setFillColor(anyColor());
        text->setDecoration(oneIn(3), oneIn(3));
        return text;
    }

    template <typename S>
    std::shared_ptr<DisplayObject> styled(const std::shared_ptr<S>& shape) {
        shape->setFillColor(anyColor());
        shape->setStrokeColor(anyColor());
        shape->setStrokeWidth(oneIn(3) ? 0 : any(0.5, 5));
        if (oneIn(5)) {
            shape->setStrokeDashArray({any(1, 9), any(1, 9)});
        }
        if (oneIn(4)) {
            // The stroke stays visible. A shape with a gradient and no stroke is stroked with the
            // present values of the canvas, which depend on what was painted before.
            graphics::LinearGradient gradient;
            gradient.set({any(0, 100)}, {any(0, 100)}, {any(0, 100)}, {any(0, 100)});
            gradient.setUserSpace(oneIn(2));
            gradient.addColor(anyColor(), 0);
            gradient.addColor(anyColor(), 1);
            shape->setFillColor(gradient);
            if (oneIn(2)) {
                shape->setStrokeGradient(gradient);
            }
        } else if (oneIn(6)) {
            shape->setFillGradient(colorful<graphics::RadialGradient>());
            shape->setStrokeGradient(colorful<graphics::ConicGradient>());
        }
        return shape;
    }

    template <typename G>
    G colorful() {
        G gradient;
        gradient.setCenter(any(0, 1), any(0, 1));
        gradient.addColor(anyColor());
        gradient.addColor(anyColor());
        return gradient;
    }

    void changeEffect(DisplayObject& object) {
        auto* const drawable = dynamic_cast<graphics::Drawable*>(&object);
        if (oneIn(2) || drawable == nullptr) {
            object.setOpacity(oneIn(3) ? 1 : any(0, 1));
        } else if (oneIn(2)) {
            drawable->setBlur(oneIn(3) ? 0 : any(0, 12));
        } else {
            const Shadow shadow{any(-9, 9), any(-9, 9), any(0, 15), anyColor()};
            drawable->setShadow(shadow);
            EXPECT_EQ(drawable->getShadow(), shadow);
        }
    }

    void callOneSetter(DisplayObject& object) {
        std::vector<std::function<void()>> setters;
        if (auto* const rect = dynamic_cast<graphics::Rect*>(&object)) {
            setters = {[=, this] { rect->setX(any(-20, 180)); },
                       [=, this] { rect->setY(any(-20, 130)); },
                       [=, this] { rect->setWidth(any(1, 90)); },
                       [=, this] { rect->setHeight(any(1, 60)); },
                       [=, this] { rect->setRx(any(0, 20)); },
                       [=, this] { rect->setRy(any(0, 20)); }};
        } else if (auto* const circle = dynamic_cast<graphics::Circle*>(&object)) {
            setters = {[=, this] { circle->setCx(any(-20, 180)); },
                       [=, this] { circle->setCy(any(-20, 130)); },
                       [=, this] { circle->setR(any(1, 40)); }};
        } else if (auto* const text = dynamic_cast<graphics::Text*>(&object)) {
            setters = {[=, this] { text->setX(any(0, 180)); },
                       [=, this] { text->setY(any(0, 140)); },
                       [=, this] { text->setTextSize(any(8, 40)); },
                       [=, this] { text->setContent(oneIn(2) ? "mMj" : "\xC3\x85v"); },
                       [=, this] { text->setDecoration(oneIn(2), oneIn(2)); },
                       [=, this] { text->setFontWeight(oneIn(2) ? 700 : 400); }};
        } else if (auto* const image = dynamic_cast<graphics::Image*>(&object)) {
            setters = {[=, this] { image->setX(any(0, 9)); },
                       [=, this] { image->setY(any(0, 9)); },
                       [=, this] { image->setWidth(any(1, 12)); },
                       [=, this] { image->setHeight(any(1, 12)); },
                       [=, this] { image->setTint(anyColor()); },
                       [=, this] { image->setRawData(std::string(16, char(random_())), 2, 2); }};
        } else if (auto* const line = dynamic_cast<graphics::Line*>(&object)) {
            setters = {
                [=, this] { line->setX1(any(0, 200)); }, [=, this] { line->setY1(any(0, 150)); },
                [=, this] { line->setX2(any(0, 200)); }, [=, this] { line->setY2(any(0, 150)); }};
        } else if (auto* const clip = dynamic_cast<graphics::ClipContainer*>(&object)) {
            setters = {[=, this] { clip->setCornerRadius(any(0, 50)); },
                       [=, this] {
                           clip->setBounds({any(0, 150), any(0, 100), any(5, 120), any(5, 80)});
                       }};
        }
        const std::size_t others = setters.size() / 2;
        auto* const filled = dynamic_cast<graphics::FillStyleable*>(&object);
        auto* const stroked = dynamic_cast<graphics::StrokeStyleable*>(&object);
        for (std::size_t i = 0; filled != nullptr && i <= others; ++i) {
            setters.emplace_back([=, this] { filled->setFillColor(anyColor()); });
        }
        for (std::size_t i = 0; stroked != nullptr && i <= others; ++i) {
            setters.emplace_back([=, this] { stroked->setStrokeWidth(any(0.5, 9)); });
            setters.emplace_back([=, this] { stroked->setStrokeColor(anyColor()); });
            setters.emplace_back([=, this] {
                stroked->setStrokeDashArray({any(2, 9), any(1, 9)});
            });
            setters.emplace_back([=, this] { stroked->setStrokeDashOffset(any(0, 9)); });
        }
        if (!setters.empty()) {
            setters[random_() % setters.size()]();
        }
    }

    void insert() {
        const auto into = groups_[random_() % groups_.size()];
        if (into != root_ && !into->findChildOf(root_)) {
            return;
        }
        const auto object = anyObject();
        const auto& siblings = into->getChildren();
        into->store(
            siblings.begin() + static_cast<std::ptrdiff_t>(random_() % (siblings.size() + 1)),
            object);
        objects_.push_back(object);
        const auto prev = object->prev() ? object->prev()->getLayer() : nullptr;
        const auto next = object->next() ? object->next()->getLayer() : nullptr;
        if (!object->getLayer() && prev && next && prev != next) {
            // Between two layers of the container's own level a guest is not announced: it appears
            // at its next change.
            object->invalidate(true);
        }
    }

    void change() {
        if (objects_.empty() || oneIn(4)) {
            return insert();
        }
        const auto object = objects_[random_() % objects_.size()];
        switch (random_() % 11) {
            case 10:
                return callOneSetter(*object);
            case 9:
                return changeEffect(oneIn(2) ? *object : *groups_[random_() % groups_.size()]);
            case 0:
                // Below a hidden group there is nothing to compare.
                return object->setVisible(!oneIn(object->asContainer() != nullptr ? 9 : 3));
            case 1:
                // By whole points, a picture that was kept of the object is drawn again.
                return oneIn(2) ? object->translate(static_cast<float>(random_() % 9), 3)
                                : object->translate(any(-15, 15), any(-15, 15));
            case 2:
                return object->setMatrix(any(0.5, 1.2), any(-0.4, 0.4), any(-20, 20),
                                         any(-0.4, 0.4), any(0.5, 1.2), any(-20, 20));
            case 3:
                if (const auto shape = object->as<graphics::Rect>()) {
                    shape->set(any(-20, 180), any(-20, 130), any(1, 90), any(1, 60));
                }
                return;
            case 4:
                if (oneIn(3) && objects_.size() > 8) {
                    DeleteDisplayObject(object);
                }
                return;
            case 5:
                if (oneIn(4)) {
                    animate(object);
                }
                return;
            case 7: {
                // To another container, or on top of its own.
                const auto& into = groups_[random_() % groups_.size()];
                if (object != into &&
                    (object->asContainer() == nullptr || !into->findChildOf(object))) {
                    into->add(object);
                    object->invalidate(true);
                }
                return;
            }
            case 6:
                if (oneIn(6)) {
                    object->setScale(0, 1);  // an application's mistake
                }
                return;
            default:
                if (const auto shape = object->as<graphics::Shape>()) {
                    shape->setStrokeColor(anyColor());
                }
        }
    }

    void animate(const std::shared_ptr<DisplayObject>& object) {
        const auto layer = object->extractAnimationLayer();
        if (layer && oneIn(2)) {
            const auto turn = std::make_shared<animation::ValueAnimation>(
                "turn", animation::AttributeName::Rotation, std::vector<float>{0, any(-3, 3)});
            turn->setAnimatable(layer);
            turn->setDuration(6);
            turn->run();
        }
    }

    platform::CAVirtualClock clock_;
    std::mt19937 random_{GetParam()};
    std::shared_ptr<graphics::Container> root_ = DisplayFactory::createContainer();
    std::vector<std::shared_ptr<ContainerObject>> groups_{root_};
    std::vector<std::shared_ptr<DisplayObject>> objects_;
};

TEST_P(PieceByPiece, EqualsPaintingFromScratch) {
    display_->add(root_);
    for (int round = 0; round < 40; ++round) {
        for (unsigned i = 0; i <= random_() % 4; ++i) {
            change();
        }
        clock_.advanceTo(platform::CACurrentMediaTime() + 0.5);
        const std::vector<std::uint32_t> incremental = picture();
        if (round % 3 != 2) {
            continue;
        }
        // Leaving the window would end the animations.
        const std::vector<std::uint32_t> scratch =
            window_.isAnimating() ? pictureRepainted(*view_) : pictureFromScratch();
        const auto first = std::ranges::mismatch(incremental, scratch).in1 - incremental.begin();
        ASSERT_TRUE(incremental == scratch)
            << "in round " << round << " at " << first % kWidth << ", " << first / kWidth;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, PieceByPiece, testing::Range(0U, 40U));
// A picture of a group that contains an object which has its own layer since then.
INSTANTIATE_TEST_SUITE_P(KeptPictures, PieceByPiece, testing::Values(341U));

TEST_F(Stage, NothingStaysOfAnObjectThatHides) {
    platform::registerTestFonts();
    const auto root = DisplayFactory::createContainer();
    root->add(rect(0, 0, kWidth, kHeight, 0xFF808080));
    display_->add(root);

    const auto accents = DisplayFactory::createText(false);
    accents->setTextSize(40);
    accents->setFont("DejaVu Sans");
    accents->setContent("\xC3\x85\xCC\x81\xCC\x81j");
    accents->setX(50);
    accents->setY(80);
    const auto corner = DisplayFactory::createPolyline();
    corner->set({40, 60, 120, 70, 40, 80}, false);
    corner->setStrokeColor(0xFFFFFFFF);
    corner->setStrokeWidth(6);
    const auto spike = DisplayFactory::createPolyline();
    spike->set({53.99F, 70.78F, 60.61F, 70, 55.53F, 69.58F}, false);
    spike->setStrokeColor(0xFFFFFFFF);
    spike->setStrokeWidth(6);
    const auto hairpin = DisplayFactory::createPolyline();
    hairpin->set({300, 71.1F, 270, 70, 300, 68.9F}, false);
    hairpin->setStrokeColor(0xFFFFFFFF);
    hairpin->setStrokeWidth(5);
    const auto squeezed = DisplayFactory::createContainer();
    squeezed->setScale(1 / 3.0F, 1);
    squeezed->add(hairpin);
    const auto scaled = DisplayFactory::createContainer();
    scaled->setScale(3, 3);
    scaled->add(rect(10.4F, 10.4F, 20.05F, 20.05F, 0xFFFFFFFF));
    const auto segments = DisplayFactory::createAttributedText();
    segments->setTextSize(40);
    segments->setFont("DejaVu Sans");
    segments->setContent("\xC3\x85\xCC\x81\xCC\x81j");
    segments->setX(50);
    segments->setY(80);
    const std::pair<const char*, std::shared_ptr<DisplayObject>> objects[] = {
        {"accents", accents},
        {"a sharp corner", corner},
        {"a corner that only rounding gives a miter", spike},
        {"a corner that only a squeezed group makes blunt enough for a miter", squeezed},
        {"an edge beyond rounded bounds", scaled},
        {"accents of an attributed text", segments}};
    for (const double scale : {1.0, 3.0}) {
        platform::OffscreenWindow window({kWidth, kHeight}, scale);
        window.setContentView(view_);
        const auto shown = [&window] {
            window.display();
            const auto size = static_cast<std::size_t>(window.pixelHeight()) *
                              window.bytesPerRow() / sizeof(std::uint32_t);
            return std::vector<std::uint32_t>(window.pixels(), window.pixels() + size);
        };
        for (const auto& [name, object] : objects) {
            const auto without = shown();
            root->add(object);
            // Painted as a whole, so that what the damage leaves out is on screen, too.
            window.setContentView(nullptr);
            window.setContentView(view_);
            EXPECT_NE(shown(), without) << name;
            object->setVisible(false);
            EXPECT_TRUE(shown() == without) << name << " at scale " << scale;
            root->remove(object);
            object->setVisible(true);
        }
        window.setContentView(nullptr);
    }
}

}  // namespace
}  // namespace orvane::display
