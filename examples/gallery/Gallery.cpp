#include <orvane/orvane.h>

#include <algorithm>

#include "AnimationPage.h"
#include "Cards.h"
#include "Counter.h"
#include "DesktopPage.h"
#include "Drag.h"
#include "FormPage.h"
#include "MotionCards.h"
#include "MotionPage.h"
#include "Navigation.h"
#include "Palette.h"
#include "ScrollPage.h"

namespace gallery {

using namespace orvane::display;

namespace {

// Keeps the pages centered and as large as the display allows.
class Fit : public FrameChangedEvent::listener_type {
public:
    void add(const Container& page) { pages_.push_back(page); }

    void operator()(const std::shared_ptr<Display>&, const FrameChangedEvent& event) override {
        fit(event.frame);
    }
    void fit(const geometry::Size<double>& size) {
        if (size.width <= 0 || size.height <= 0) {
            return;
        }
        const double scale = std::min(size.width / kPageWidth, size.height / kPageHeight);
        for (const Container& page : pages_) {
            page->setMatrix(static_cast<float>(scale), 0,
                            static_cast<float>((size.width - scale * kPageWidth) / 2), 0,
                            static_cast<float>(scale),
                            static_cast<float>((size.height - scale * kPageHeight) / 2));
        }
    }

private:
    std::vector<Container> pages_;
};

class Gallery {
public:
    void main() {
        page_.addCard("Shapes", drawShapes);
        page_.addCard("Fill rules", drawFillRules);
        page_.addCard("Curves and arcs", drawCurves);
        page_.addCard("Dashes", drawDashes);
        page_.addCard("Gradients in fractions", drawGradients);
        page_.addCard("Gradient in user space", drawGradientStops);
        page_.addCard("Clip container", drawClips);
        page_.addCard("Nested transforms", drawNestedTransforms);
        page_.addCard("Hidden and shown",
                      [this](ContainerObject& inside) { blink_ = drawHiddenAndShown(inside); });
        page_.addCard("Timed tasks", [this](ContainerObject& inside) {
            counter_ = std::make_shared<Counter>(inside);
        });
        page_.addCard("Native control",
                      [this](ContainerObject& inside) { drawNative(inside, drag_); });
        page_.addCard("Drag and drop",
                      [this](ContainerObject& inside) { drawDraggables(inside, drag_); });

        textPage_.addCard("Alignment", drawAlignments);
        textPage_.addCard("Baseline", drawBaselines);
        textPage_.addCard("Decoration", drawDecorations);
        textPage_.addCard("Fonts", drawFonts);
        textPage_.addCard("Scripts", drawScripts);
        textPage_.addCard("Emoji", drawEmoji);
        textPage_.addCard("Wrapping", drawWrapping);
        textPage_.addCard("Attributed text", drawAttributedText);
        textPage_.addCard("Line breaks kept", drawLineBreaks);
        textPage_.addCard("Measured and shortened", drawMeasured);

        imagePage_.addCard("JPEG, from a file", drawJpeg);
        imagePage_.addCard("PNG, from bytes", drawPng);
        imagePage_.addCard("Raw pixels", drawRawPixels);
        imagePage_.addCard("Data address, scaled", drawDataAddress);
        imagePage_.addCard("Turned", drawTurnedImage);
        imagePage_.addCard("Clipped", drawClippedImage);
        imagePage_.addCard("SVG, rendered for its size", drawDrawing);
        imagePage_.addCard("GIF, playing", drawFrames);
        imagePage_.addCard("WebP, loaded in the background", drawLoaded);

        effectPage_.addCard("Opacity, of each and of the group", drawOpacity);
        effectPage_.addCard("Shadows", drawShadows);
        effectPage_.addCard("Blur", drawBlur);
        effectPage_.addCard("Rounded clip", drawRoundedClip);
        effectPage_.addCard("Radial gradients", drawRadialGradients);
        effectPage_.addCard("Conic gradients", drawConicGradients);
        effectPage_.addCard("Strokes with gradients", drawGradientStrokes);
        effectPage_.addCard("All together", drawTogether);

        addPage("Shapes", page_.root(), drawShapesIcon);
        addPage("Texts", textPage_.root(), drawTextIcon);
        addPage("Images", imagePage_.root(), drawImageIcon);
        addPage("Form", formPage_.root(), FormPage::drawIcon);
        addPage("Animations", animationPage_.root(), AnimationPage::drawIcon,
                [this] { animationPage_.start(); });
        addPage("Motion and layout", motionPage_.root(), MotionPage::drawIcon,
                [this] { motionPage_.start(); });
        addPage("Scrolling", scrollPage_.root(), ScrollPage::drawIcon);
        addPage("Effects", effectPage_.root(), drawEffectsIcon);
        addPage("Desktop and input", desktopPage_.root(), DesktopPage::drawIcon);

        const auto display = Display::instance();
        display->addListener<FrameChangedEvent>(fit_);
        fit_->fit(display->getScreenSize());
        navigation_->start();
        counter_->start();
    }

private:
    void addPage(const std::string& name, const Container& root,
                 const std::function<void(ContainerObject&)>& drawIcon,
                 const std::function<void()>& shown = {}) {
        fit_->add(root);
        navigation_->addPage(name, root, drawIcon, shown);
    }

    static void drawShapesIcon(ContainerObject& inside) {
        const auto square = DisplayFactory::createRect();
        square->set(0, 0, 15, 15);
        paint(square, palette::kCoral);
        inside.add(square);
        const auto circle = DisplayFactory::createCircle();
        circle->set(8, 8, 8);
        paint(circle, palette::kTeal);
        inside.add(circle);
    }

    std::shared_ptr<Navigation> navigation_ = std::make_shared<Navigation>();
    Page page_;
    Page textPage_;
    Page imagePage_;
    Page effectPage_;
    FormPage formPage_;
    AnimationPage animationPage_{navigation_};
    MotionPage motionPage_;
    ScrollPage scrollPage_;
    DesktopPage desktopPage_;
    std::shared_ptr<Fit> fit_ = std::make_shared<Fit>();
    std::shared_ptr<Drag> drag_ = std::make_shared<Drag>();
    std::shared_ptr<events::TouchEventListener> blink_;
    std::shared_ptr<Counter> counter_;
};

}  // namespace
}  // namespace gallery

ORVANE_MAIN_CLASS(gallery::Gallery)
