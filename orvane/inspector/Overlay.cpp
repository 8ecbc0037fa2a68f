#include "orvane/inspector/Overlay.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSGraphicsContext.h"
#include "platform/appkit/NSWindow.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/CTFont.h"
#include "platform/coretext/CTLine.h"
#include "platform/quartzcore/CAKeyframeAnimation.h"

namespace orvane::inspector {

using platform::CGColor;
using platform::CGPoint;
using platform::CGRect;
using platform::CGSize;
using platform::NSEvent;
using platform::NSEventType;
using platform::NSView;

namespace {

// More areas of one kind are not shown: they would hide the application.
constexpr std::size_t kMostFrames = 200;
constexpr double kFlashSeconds = 0.45;

constexpr CGColor kBlue{0.30, 0.60, 1, 1};
constexpr CGColor kGreen{0.27, 0.75, 0.56, 1};
constexpr CGColor kRed{1, 0.30, 0.30, 1};
constexpr CGColor kViolet{0.72, 0.45, 1, 0.9};

// How an area looks.
struct Look {
    CGColor fill;
    CGColor edge;
    double width = 0;  // of the edge
};

CGColor withAlpha(CGColor color, double alpha) {
    color.alpha = alpha;
    return color;
}

}  // namespace

// Takes the pointer only while something is picked.
class Overlay::Root final : public NSView {
public:
    PickFunction pick;

    NSView* hitTest(CGPoint point) override {
        return pick && platform::contains(frame(), point) ? this : nullptr;
    }
    bool pointerEvent(const NSEvent& event) override {
        const bool isPressed = event.type == NSEventType::LeftMouseDown;
        if (pick && (isPressed || event.type == NSEventType::MouseMoved)) {
            const PickFunction called = pick;  // it may end the picking
            called(event.locationInWindow, isPressed);
        }
        return true;
    }
};

// Areas of one look. The views are kept and used again.
class Overlay::Frames {
public:
    Frames(NSView& root, const Look& look) : look_(look), group_(std::make_shared<NSView>()) {
        root.addSubview(group_);
    }

    void show(const Rects& rects) {
        const std::size_t count = std::min(rects.size(), kMostFrames);
        while (views_.size() < count) {
            views_.push_back(make(look_));
            group_->addSubview(views_.back());
        }
        for (std::size_t i = 0; i < views_.size(); ++i) {
            if (i < count) {
                place(*views_[i], rects[i], look_.width);
            }
            views_[i]->setHidden(i >= count);
        }
    }

    // Shows areas that fade. One that has faded is replaced by the next one.
    void flash(const Rects& rects) {
        for (std::size_t i = 0; i < std::min(rects.size(), kMostFrames); ++i) {
            if (next_ == views_.size() && views_.size() < kMostFrames) {
                views_.push_back(make(look_));
                views_.back()->layer()->setOpacity(0);
                group_->addSubview(views_.back());
            }
            next_ %= views_.size();
            NSView& view = *views_[next_++];
            place(view, rects[i], look_.width);
            platform::CAKeyframeAnimation fade("opacity");
            fade.setValues(std::vector<double>{1, 0});
            fade.setDuration(kFlashSeconds);
            view.layer()->addAnimation(fade, "flash");
        }
    }

private:
    static std::shared_ptr<NSView> make(const Look& look) {
        auto view = std::make_shared<NSView>();
        view->layer()->setBackgroundColor(look.fill);
        for (int edge = 0; edge < 4; ++edge) {
            const auto line = std::make_shared<NSView>();
            line->layer()->setBackgroundColor(look.edge);
            view->addSubview(line);
        }
        return view;
    }

    static void place(NSView& view, const CGRect& rect, double edge) {
        const double left = std::floor(rect.origin.x);
        const double top = std::floor(rect.origin.y);
        const double width = std::ceil(rect.origin.x + rect.size.width) - left;
        const double height = std::ceil(rect.origin.y + rect.size.height) - top;
        view.setFrame({{left, top}, {width, height}});
        const double inner = std::max(0.0, height - 2 * edge);
        const std::array<CGRect, 4> edges{{{{0, 0}, {width, edge}},
                                           {{0, height - edge}, {width, edge}},
                                           {{0, edge}, {edge, inner}},
                                           {{width - edge, edge}, {edge, inner}}}};
        for (std::size_t i = 0; i < edges.size(); ++i) {
            view.subviews()[i]->setFrame(edges[i]);
        }
    }

    Look look_;
    std::shared_ptr<NSView> group_;
    std::vector<std::shared_ptr<NSView>> views_;
    std::size_t next_ = 0;  // for flash()
};

// A text on a colored ground.
class Overlay::Label final : public NSView {
public:
    void show(const std::string& text, const CGRect& below, CGSize content) {
        if (text_ != text) {
            text_ = text;
            platform::CFMutableAttributedString string;
            platform::CTAttributes attributes;
            attributes.font = platform::CTFont::createWithName("DejaVu Sans Bold", 10);
            attributes.foregroundColor = CGColor{1, 1, 1, 1};
            string.append(text, attributes);
            line_ = platform::CTLine::createWithAttributedString(string);
            setNeedsDisplayInRect(bounds());
        }
        const double width = std::ceil(line_->typographicBounds().width) + 12;
        // Above the area, or below it if there is no space, and inside the window.
        const double above = std::floor(below.origin.y) - kHeight - 2;
        const double under = std::ceil(below.origin.y + below.size.height) + 2;
        const double y = above >= 0 ? above : std::min(under, content.height - kHeight);
        const double x =
            std::clamp(std::floor(below.origin.x), 0.0, std::max(0.0, content.width - width));
        if (const CGRect place{{x, y}, {width, kHeight}}; !(place == frame())) {
            setFrame(place);
            setNeedsDisplayInRect(bounds());
        }
        setHidden(false);
    }

    bool paints() const override { return true; }
    void drawRect(const CGRect&) override {
        platform::CGContext* const canvas = platform::NSGraphicsContext::currentGraphicsPort();
        if (canvas == nullptr || !line_) {
            return;
        }
        canvas->translateCTM(6, kHeight - 5);
        canvas->scaleCTM(1, -1);  // the y axis of lines is up
        canvas->drawLine(*line_);
    }

private:
    static constexpr double kHeight = 17;

    std::string text_;
    std::shared_ptr<const platform::CTLine> line_;
};

Overlay::Overlay(platform::NSWindow& window)
    : root_(std::make_shared<Root>()),
      flashes_(std::make_unique<Frames>(*root_, Look{withAlpha(kRed, 0.22), kRed, 1})),
      borders_(std::make_unique<Frames>(*root_, Look{withAlpha(kViolet, 0.04), kViolet, 1})),
      damage_(std::make_unique<Frames>(*root_, Look{withAlpha(kGreen, 0.1), kGreen, 1})),
      hovered_(
          std::make_unique<Frames>(*root_, Look{withAlpha(kBlue, 0.12), withAlpha(kBlue, 0.6), 1})),
      chosen_(std::make_unique<Frames>(*root_, Look{withAlpha(kBlue, 0.2), kBlue, 2})),
      label_(std::make_shared<Label>()) {
    label_->layer()->setBackgroundColor(kBlue);
    label_->setHidden(true);
    root_->addSubview(label_);
    window.contentView()->addSubview(root_);
    resize(window.contentSize());
}

Overlay::~Overlay() {
    root_->removeFromSuperviewWithoutNeedingDisplay();
}

bool Overlay::contains(const NSView& view) const {
    return view.isDescendantOf(*root_);
}

void Overlay::resize(CGSize size) {
    root_->setFrame({{0, 0}, size});
}

// The part of an area in the window, so that all edges of an area that is larger are seen.
auto Overlay::inWindow(const std::optional<CGRect>& rect) const -> Rects {
    const CGRect part = rect ? intersection(*rect, root_->bounds()) : CGRect{};
    return isEmpty(part) ? Rects{} : Rects{part};
}

void Overlay::showChosen(const std::optional<CGRect>& rect, const std::string& label) {
    chosen_->show(inWindow(rect));
    if (rect) {
        label_->show(label, *rect, root_->frame().size);
    } else {
        label_->setHidden(true);
    }
}

void Overlay::showHovered(const std::optional<CGRect>& rect) {
    hovered_->show(inWindow(rect));
}

void Overlay::showDamage(const Rects& rects) {
    damage_->show(rects);
}

void Overlay::showBorders(const Rects& rects) {
    borders_->show(rects);
}

void Overlay::flash(const Rects& rects) {
    flashes_->flash(rects);
}

void Overlay::setPick(PickFunction pick) {
    root_->pick = std::move(pick);
}

}  // namespace orvane::inspector
