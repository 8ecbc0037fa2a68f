#include "orvane/display/layout/Box.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "orvane/commons/reportMisuse.h"
#include "orvane/display/Display.h"
#include "orvane/display/DisplayFactory.h"
#include "orvane/display/animation/ValueAnimation.h"
#include "orvane/display/graphics/Container.h"
#include "orvane/display/layout/BoxEntry.h"
#include "orvane/display/layout/BoxLine.h"
#include "orvane/display/layout/objectPlacement.h"
#include "orvane/display/tree/DisplayLayer.h"

namespace orvane::display::layout {

namespace {

// Edges at whole points look sharp.
geometry::Rect<double> snapped(const geometry::Rect<double>& rect) {
    const double x = std::round(rect.x);
    const double y = std::round(rect.y);
    return {x, y, std::round(rect.x + rect.width) - x, std::round(rect.y + rect.height) - y};
}

}  // namespace

class Box::DisplayListener : public FrameChangedEvent::listener_type {
public:
    explicit DisplayListener(std::weak_ptr<Box> box) : box_(std::move(box)) {}

    void operator()(const std::shared_ptr<Display>&, const FrameChangedEvent& event) override {
        if (const std::shared_ptr<Box> box = box_.lock()) {
            box->layOut({{}, event.frame});
        }
    }

private:
    std::weak_ptr<Box> box_;
};

Box::Box(const BoxStyle& style) : style_(style), container_(DisplayFactory::createContainer()) {}

Box::~Box() = default;

// ---- items ----

void Box::add(const std::shared_ptr<DisplayObject>& object, const Item& item) {
    if (!object) {
        return;
    }
    entries_.push_back(Entry::ofObject(object, item));
    container_->add(object);
}

void Box::add(const std::shared_ptr<Box>& box, const Item& item) {
    if (!box) {
        return;
    }
    bool isAround = box.get() == this;
    for (auto outer = parent_.lock(); outer && !isAround; outer = outer->parent_.lock()) {
        isAround = outer == box;
    }
    if (isAround || !box->parent_.expired()) {
        commons::reportMisuse("layout::Box::add",
                              "the box is an item already, or contains this box");
        return;
    }
    box->parent_ = weak_from_this();
    container_->add(box->container_);
    entries_.push_back({nullptr, box, item});
}

void Box::addSpace(const Item& item) {
    entries_.push_back({nullptr, nullptr, item});
}

void Box::setBackground(const std::shared_ptr<DisplayObject>& object) {
    if (background_) {
        container_->erase(container_->find(background_));
    }
    background_ = object;
    if (background_) {
        container_->store(container_->getChildren().begin(), background_);
    }
}

Box::Entry* Box::find(const void* content) {
    const auto found = std::find_if(
        entries_.begin(), entries_.end(),
        [content](const Entry& entry) { return content != nullptr && entry.content() == content; });
    return found != entries_.end() ? &*found : nullptr;
}

void Box::setItem(const std::shared_ptr<DisplayObject>& object, const Item& item) {
    if (Entry* const entry = find(object.get())) {
        entry->item = item;
    }
}

void Box::setItem(const std::shared_ptr<Box>& box, const Item& item) {
    if (Entry* const entry = find(box.get())) {
        entry->item = item;
    }
}

void Box::remove(const std::shared_ptr<DisplayObject>& object) {
    removeEntry(object.get());
}

void Box::remove(const std::shared_ptr<Box>& box) {
    removeEntry(box.get());
}

void Box::removeEntry(const void* content) {
    Entry* const entry = find(content);
    if (entry == nullptr) {
        return;
    }
    const std::shared_ptr<DisplayObject> object = entry->shownObject();
    if (object && object->getParent() == container_) {
        container_->erase(container_->find(object));
    }
    if (entry->box) {
        entry->box->parent_.reset();
    }
    entries_.erase(entries_.begin() + (entry - entries_.data()));
}

void Box::clear() {
    const UpdateLock lock(container_);
    while (!entries_.empty()) {
        if (const void* const content = entries_.back().content()) {
            removeEntry(content);
        } else {
            entries_.pop_back();
        }
    }
}

void Box::setMotion(float duration, const animation::Easing& easing) {
    motionDuration_ = duration;
    motionEasing_ = easing;
}

// ---- sizes ----

auto Box::sizeWithin(double width) -> Size {
    if (measuredWidth_ == width) {
        return measured_;
    }
    const Insets& padding = style_.padding;
    const double sides = padding.left + padding.right;
    const std::vector<Line> lines =
        Line::breakAndSize(entries_, style_, {std::max(width - sides, 0.0), Item::kUnlimited});
    Size size;
    double thickness = style_.lineGap * static_cast<double>(lines.size() - 1);
    for (const Line& line : lines) {
        if (isRow()) {
            size.width = std::max(size.width, line.naturalWidth);
            thickness += line.thickness;
            size.height = thickness;
        } else {
            // An open height is one line.
            double length =
                line.along.empty() ? 0 : style_.gap * static_cast<double>(line.along.size() - 1);
            for (const double along : line.along) {
                length += along;
            }
            size = {line.naturalWidth, length};
        }
    }
    measured_ = {size.width + sides, size.height + padding.top + padding.bottom};
    measuredWidth_ = width;
    return measured_;
}

auto Box::measure(double width) -> Size {
    forgetSizes();
    return sizeWithin(width);
}

void Box::forgetSizes() {
    measuredWidth_.reset();
    for (const Entry& entry : entries_) {
        if (entry.box) {
            entry.box->forgetSizes();
        }
    }
}

// ---- places ----

void Box::layOut(const Rect& rect) {
    if (parent_.expired()) {
        forgetSizes();
    }
    rect_ = rect;
    const UpdateLock lock(container_);
    container_->setTranslate(static_cast<float>(rect.x), static_cast<float>(rect.y));
    if (background_) {
        placeObject(*background_, {{}, rect.size()});
    }
    const Insets& padding = style_.padding;
    const Size inner{std::max(rect.width - padding.left - padding.right, 0.0),
                     std::max(rect.height - padding.top - padding.bottom, 0.0)};
    double across = isRow() ? padding.top : padding.left;
    for (const Line& line : Line::breakAndSize(entries_, style_, inner)) {
        placeLine(line, inner, across);
        across += line.thickness + style_.lineGap;
    }
}

void Box::placeLine(const Line& line, const Size& inner, double across) {
    const auto count = static_cast<double>(line.entries.size());
    double rest = (isRow() ? inner.width : inner.height) - style_.gap * (count - 1);
    for (const double along : line.along) {
        rest -= along;
    }
    rest = std::max(rest, 0.0);
    double start = 0;    // before the first item
    double between = 0;  // added to the gap
    switch (style_.justify) {
        case Justify::Start:
            break;
        case Justify::Center:
            start = rest / 2;
            break;
        case Justify::End:
            start = rest;
            break;
        case Justify::SpaceBetween:
            between = count > 1 ? rest / (count - 1) : 0;
            break;
        case Justify::SpaceAround:
            between = rest / count;
            start = between / 2;
            break;
        case Justify::SpaceEvenly:
            between = rest / (count + 1);
            start = between;
            break;
    }
    double place = (isRow() ? style_.padding.left : style_.padding.top) + start;
    for (std::size_t i = 0; i < line.entries.size(); ++i) {
        Entry& entry = *line.entries[i];
        const Align align = entry.alignIn(style_);
        double size = line.across[i];
        if (align == Align::Stretch) {
            size =
                isRow() ? entry.limitedHeight(line.thickness) : entry.limitedWidth(line.thickness);
        }
        const double free = line.thickness - size;
        const double offset = across + (align == Align::Center ? free / 2
                                        : align == Align::End  ? free
                                                               : 0);
        this->place(entry, snapped(isRow() ? Rect(place, offset, line.along[i], size)
                                           : Rect(offset, place, size, line.along[i])));
        place += line.along[i] + style_.gap + between;
    }
}

void Box::place(Entry& entry, const Rect& rect) {
    if (entry.item.place) {
        entry.item.place(rect);
    } else if (entry.box) {
        entry.box->layOut(rect);
    } else if (entry.object) {
        placeObject(*entry.object, rect);
    }
    if (motionDuration_ > 0 && entry.placed && entry.placed->position() != rect.position()) {
        glide(entry, rect);
    }
    entry.placed = rect;
}

// The item is at its new place already. Its layer shows it at the old one first, and where it is if
// it is still gliding.
void Box::glide(const Entry& entry, const Rect& to) const {
    using animation::AttributeName;
    const std::shared_ptr<DisplayObject> object = entry.shownObject();
    const std::shared_ptr<DisplayLayer> layer = object ? object->extractAnimationLayer() : nullptr;
    if (!layer || !layer->isShown()) {
        return;
    }
    const geometry::Matrix toScreen = container_->getFullTransformation();
    const auto way = toScreen.mapPoint(entry.placed->position()) - toScreen.mapPoint(to.position());
    const std::vector<float> shown = layer->getPresentationValue(AttributeName::Translation);
    const auto motion = std::make_shared<animation::ValueAnimation>(
        "layout", AttributeName::Translation,
        std::vector<float>{static_cast<float>(way.x) + shown[0],
                           static_cast<float>(way.y) + shown[1], 0, 0});
    motion->setAnimatable(layer);
    motion->setDuration(motionDuration_);
    motion->setEasing(motionEasing_);
    motion->setEndState(animation::EndState::Keep);
    motion->run();
}

void Box::update() {
    std::shared_ptr<Box> outermost = shared_from_this();
    while (const std::shared_ptr<Box> outer = outermost->parent_.lock()) {
        outermost = outer;
    }
    if (outermost->rect_) {
        outermost->layOut(Rect(*outermost->rect_));
    }
}

void Box::showOnDisplay() {
    const std::shared_ptr<Display> display = Display::instance();
    display->add(container_);
    if (!displayListener_) {
        displayListener_ = std::make_shared<DisplayListener>(weak_from_this());
        display->addListener<FrameChangedEvent>(displayListener_);
    }
    layOut({{}, display->getScreenSize()});
}

}  // namespace orvane::display::layout
