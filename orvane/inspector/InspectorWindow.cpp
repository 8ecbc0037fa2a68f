#include "orvane/inspector/InspectorWindow.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "orvane/display/events/hitTest.h"
#include "orvane/display/native/DisplayView.h"
#include "orvane/display/native/NativeLayer.h"
#include "orvane/embedding/HostView.h"
#include "orvane/embedding/preOrder.h"
#include "orvane/embedding/rootLayers.h"
#include "orvane/inspector/properties.h"
#include "platform/appkit/NSWindow.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::inspector {

using display::Display;
using display::DisplayLayer;
using display::DisplayObject;
using platform::CGPoint;
using platform::CGRect;
namespace graphics = display::graphics;
namespace layout = display::layout;
using layout::Box;
using BoxPointer = std::shared_ptr<Box>;

namespace {

constexpr double kRefreshSeconds = 0.1;
// The frames of this time are one point of the plot of frames a second.
constexpr double kRateSeconds = 0.5;
// A tree with so many lines is listed less often, because that takes longer than a frame.
constexpr std::size_t kManyRows = 20000;
constexpr unsigned kRefreshesOfManyRows = 10;
constexpr double kGap = 10;

std::string formatNumber(const char* form, double value) {
    char text[32];
    std::snprintf(text, sizeof text, form, value);
    return text;
}

std::string formatMilliseconds(double value) {
    return formatNumber(value < 10 ? "%.1f ms" : "%.0f ms", value);
}

double megabytes(std::size_t bytes) {
    return static_cast<double>(bytes) / (1 << 20);
}

std::string formatMegabytes(double value) {
    return formatNumber(value < 10 ? "%.1f MB" : "%.0f MB", value);
}

// Give the rest of a column, or a part of a row, to an object without a size of its own.
layout::Item restOfColumn(std::function<void(const display::geometry::Rect<double>&)> place) {
    return {.height = 0, .grow = 1, .place = std::move(place)};
}
layout::Item partOfRow(std::function<void(const display::geometry::Rect<double>&)> place) {
    return {.width = 0, .grow = 1, .place = std::move(place)};
}

std::shared_ptr<platform::NSView> viewOf(const DisplayLayer& layer) {
    const auto* const native = dynamic_cast<const display::native::NativeLayer*>(&layer);
    return native != nullptr ? native->getLayerHandler() : nullptr;
}

}  // namespace

InspectorWindow::InspectorWindow(platform::NSWindow& application, platform::NSWindow& window)
    : application_(application),
      window_(window),
      display_(std::make_shared<Display>(Display::Fonts::Keep)),
      view_(std::make_shared<embedding::HostView>()),
      page_(std::make_shared<Box>(layout::BoxStyle{.direction = layout::Direction::Column,
                                                   .gap = kGap,
                                                   .padding = layout::Insets::all(kGap)})),
      list_({[this](const Node& node) { choose(node, true); },
             [this](const Node& node) { hover(node); },
             [this](const Node& node, bool isExpanded) {
                 tree_.setExpanded(node, isExpanded);
                 showTree();
             }}),
      rate_("Frames a second", Plot::Form::Areas, {{"", palette::kGreen}}, 50,
            [](double value) { return formatNumber("%.0f", value); }),
      times_("Time of a frame", Plot::Form::Bars,
             {{"update", palette::kAmber}, {"paint", palette::kBlue}, {"present", palette::kGreen}},
             5, formatMilliseconds),
      memory_("Memory", Plot::Form::Areas,
              {{"stores", palette::kBlue}, {"caches", palette::kAmber}}, 1, formatMegabytes),
      overlay_(application),
      meter_(
          application, [this](const platform::NSView& view) { return overlay_.contains(view); },
          [this](const Overlay::Rects& rects) { framePainted(rects); }) {
    page_->setBackground(makeRect(palette::kPaper));
    page_->add(makeToolbar(), {.height = 30});
    page_->add(makeMiddle(), {.height = 0, .grow = 1});
    page_->add(makePlots(), {.height = 150});
    display_->add(page_->getContainer());
    view_->addSubview(display_->getView());
    window_.setContentView(view_);
    showKind(Tree::Kind::Objects);
    resize(window_.contentSize());
    timer_.start(platform::CACurrentMediaTime() + kRefreshSeconds, kRefreshSeconds,
                 [this] { refresh(); });
}

InspectorWindow::~InspectorWindow() {
    timer_.stop();
    display_->removeAll();
    window_.setContentView(nullptr);
    display_->getView()->removeFromSuperviewWithoutNeedingDisplay();
}

// ---- the window ----

BoxPointer InspectorWindow::makeToolbar() {
    auto bar = std::make_shared<Box>(layout::BoxStyle{.gap = 8});
    const auto toggle = [](std::shared_ptr<Button>& button) { button->setOn(!button->isOn()); };
    pick_ = std::make_shared<Button>("Pick", [this] { setPicking(!pick_->isOn()); });
    flashes_ = std::make_shared<Button>("Repaints", [this, toggle] { toggle(flashes_); });
    damage_ = std::make_shared<Button>("Damage", [this, toggle] {
        toggle(damage_);
        overlay_.showDamage({});
    });
    borders_ = std::make_shared<Button>("Layer borders", [this, toggle] {
        toggle(borders_);
        refresh();
    });
    for (const auto& button : {pick_, flashes_, damage_, borders_}) {
        bar->add(button->getBox());
    }
    bar->addSpace();

    search_ = makeField(12);
    search_->setPlaceholder("Search kind, text, label, path or #number");
    search_->setBounds({0, 0, 1, 1});
    search_->getOrCreateAccessibilityElement()->setLabel("Search");
    searched_ = listenerFor<graphics::InputText::ChangeEvent>(
        [this](const auto&) { filter(search_->getContent()); });
    search_->addListener<graphics::InputText::ChangeEvent>(searched_);
    const auto field = std::make_shared<Box>(layout::BoxStyle{.padding = {10, 0, 10, 0}});
    field->setBackground(makeRect(palette::kField, 6));
    field->add(search_, {.width = 0, .grow = 1});
    bar->add(field, {.width = 300});
    return bar;
}

BoxPointer InspectorWindow::makeMiddle() {
    auto middle = std::make_shared<Box>(layout::BoxStyle{.gap = kGap});
    const auto left = std::make_shared<Box>(layout::BoxStyle{
        .direction = layout::Direction::Column, .gap = 8, .padding = layout::Insets::all(8)});
    left->setBackground(makeRect(palette::kPanel, 8));
    const auto kinds = std::make_shared<Box>(layout::BoxStyle{.gap = 6});
    objects_ = std::make_shared<Button>("Objects", [this] { showKind(Tree::Kind::Objects); });
    layers_ = std::make_shared<Button>("Layers", [this] { showKind(Tree::Kind::Layers); });
    kinds->add(objects_->getBox());
    kinds->add(layers_->getBox());
    left->add(kinds, {.height = 24});
    left->add(list_.getContainer(), restOfColumn([this](const auto& rect) { list_.resize(rect); }));
    middle->add(left, {.width = 0, .grow = 1});

    const auto right =
        std::make_shared<Box>(layout::BoxStyle{.direction = layout::Direction::Column});
    right->setBackground(makeRect(palette::kPanel, 8));
    right->add(panel_.getContainer(),
               restOfColumn([this](const auto& rect) { panel_.resize(rect); }));
    middle->add(right, {.width = 340});
    return middle;
}

BoxPointer InspectorWindow::makePlots() {
    auto plots = std::make_shared<Box>(layout::BoxStyle{.gap = kGap});
    for (Plot* const plot : {&rate_, &times_, &memory_}) {
        plots->add(plot->getContainer(),
                   partOfRow([plot](const auto& rect) { plot->resize(rect); }));
    }
    return plots;
}

void InspectorWindow::resize(platform::CGSize size) {
    view_->setFrame({{0, 0}, size});
    display_->getView()->setFrame({{0, 0}, size});
    page_->layOut({0, 0, size.width, size.height});
    display_->frameChanged({size.width, size.height});
    refresh();
}

// ---- what is shown ----

void InspectorWindow::refresh() {
    const display::UpdateLock lock(page_->getContainer());
    if (const auto* const content = application_.contentView()) {
        overlay_.resize(content->frame().size);
    }
    if (!wanted_.empty()) {
        chooseWanted();
    }
    if (list_.getRows().size() < kManyRows || ++refreshes_ % kRefreshesOfManyRows == 0) {
        showTree();
    }
    panel_.show(propertiesOf(chosen_));
    overlay_.showHovered(frameOf(hovered_));
    const auto frame = frameOf(chosen_);
    const RowText text = Tree::describe(chosen_);
    overlay_.showChosen(
        frame, frame ? text.kind + ' ' + formatNumber("%g", std::round(frame->size.width)) +
                           " \u00D7 " + formatNumber("%g", std::round(frame->size.height))
                     : "");
    overlay_.showBorders(borders_->isOn() ? layerFrames() : Overlay::Rects{});
    showPlots();
}

void InspectorWindow::showTree() {
    list_.show(tree_.list(*Display::instance()));
}

void InspectorWindow::showKind(Tree::Kind kind) {
    tree_.setKind(kind);
    objects_->setOn(kind == Tree::Kind::Objects);
    layers_->setOn(kind == Tree::Kind::Layers);
    refresh();
}

void InspectorWindow::showPlots() {
    const double now = platform::CACurrentMediaTime();
    meter_.sample(now);
    std::vector<Plot::Sample> times;
    // Whole intervals of the clock, so that the curve moves and does not change.
    const auto intervalOf = [](double time) {
        return static_cast<long>(std::floor(time / kRateSeconds));
    };
    const long last = intervalOf(now) - 1;
    const long first = last - std::lround(Meter::kSeconds / kRateSeconds);
    std::vector<Plot::Sample> rates;
    for (long interval = first; interval <= last; ++interval) {
        rates.push_back({static_cast<double>(interval + 1) * kRateSeconds, {0}});
    }
    for (const Meter::Frame& frame : meter_.getFrames()) {
        times.push_back({frame.time, {frame.update, frame.paint, frame.present}});
        const long interval = intervalOf(frame.time);
        if (interval >= first && interval <= last) {
            rates[static_cast<std::size_t>(interval - first)].values[0] += 1 / kRateSeconds;
        }
    }
    rate_.show(rates, now, Meter::kSeconds);
    times_.show(times, now, Meter::kSeconds);
    std::vector<Plot::Sample> memory;
    for (const Meter::Memory& each : meter_.getMemory()) {
        memory.push_back({each.time, {megabytes(each.stores), megabytes(each.caches)}});
    }
    memory_.show(memory, now, Meter::kSeconds);
}

// ---- choosing ----

void InspectorWindow::chooseFirst(const std::string& text) {
    wanted_ = text;
    refresh();
}

void InspectorWindow::chooseWanted() {
    Tree found = tree_;
    found.setFilter(wanted_);
    const std::vector<Row> rows = found.list(*Display::instance());
    const auto first =
        std::ranges::find_if(rows, [&](const Row& row) { return found.matches(row.node); });
    if (first != rows.end()) {
        wanted_.clear();
        choose(first->node, true);
    }
}

void InspectorWindow::filter(const std::string& text) {
    tree_.setFilter(text);
    showTree();
}

void InspectorWindow::choose(Node node, bool shows) {
    chosen_ = node;
    tree_.reveal(node);
    showTree();
    list_.choose(node, shows);
    // The keyboard moves through the tree.
    display_->setFocus(list_.getList());
    panel_.clear();
    refresh();
}

void InspectorWindow::hover(const Node& node) {
    hovered_ = node;
    overlay_.showHovered(frameOf(node));
}

void InspectorWindow::setPicking(bool isPicking) {
    pick_->setOn(isPicking);
    overlay_.setPick(isPicking ? [this](CGPoint point, bool isPressed) { pick(point, isPressed); }
                               : Overlay::PickFunction());
}

void InspectorWindow::pick(CGPoint point, bool isPressed) {
    const auto& objects = Display::instance()->getObjects();
    // What paints has priority over containers, which are in front of nothing.
    auto object = display::events::hitTest(
        objects, {point.x, point.y},
        [](const DisplayObject& each) { return each.asContainer() == nullptr; });
    if (!object) {
        object = display::events::hitTest(objects, {point.x, point.y},
                                          [](const DisplayObject&) { return true; });
    }
    if (!isPressed) {
        hover(Node::of(object));
        return;
    }
    setPicking(false);
    hover({});
    if (object) {
        search_->setContent("");
        tree_.setFilter("");
        showKind(Tree::Kind::Objects);
        choose(Node::of(object), true);
    }
}

std::optional<CGRect> InspectorWindow::frameOf(const Node& node) {
    if (const auto object = node.object.lock()) {
        const CGRect frame(object->getFrameOnScreen());
        return object->isVisible() && platform::isFinite(frame) ? std::optional(frame)
                                                                : std::nullopt;
    }
    const auto layer = node.layer.lock();
    const auto view = layer ? viewOf(*layer) : nullptr;
    if (!view || view->isHiddenOrHasHiddenAncestor()) {
        return {};
    }
    return view->transformToWindow().apply(view->bounds());
}

Overlay::Rects InspectorWindow::layerFrames() const {
    Overlay::Rects frames;
    embedding::preOrder(
        embedding::rootLayers(*Display::instance()),
        [](const DisplayLayer& layer) -> const auto& { return layer.getSublayers(); },
        [&](DisplayLayer& layer, int) {
            if (const auto frame = frameOf(
                    Node::of(std::static_pointer_cast<DisplayLayer>(layer.shared_from_this())))) {
                frames.push_back(*frame);
            }
        });
    return frames;
}

void InspectorWindow::framePainted(const Overlay::Rects& rects) {
    if (flashes_->isOn()) {
        overlay_.flash(rects);
    }
    if (damage_->isOn()) {
        overlay_.showDamage(rects);
    }
}

}  // namespace orvane::inspector

orvane::inspector::Inspector* orvane_open_inspector(orvane::platform::NSWindow* application,
                                                    orvane::platform::NSWindow* window) {
    return new orvane::inspector::InspectorWindow(*application, *window);
}
