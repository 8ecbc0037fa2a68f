#include "orvane/inspector/TreeList.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvane::inspector {

using display::DisplayFactory;
using display::DisplayObject;
using display::UpdateLock;
using display::events::KeyEvent;
using display::events::KeyPhase;
using display::events::PointerEvent;
using display::events::PointerPhase;
namespace graphics = display::graphics;

namespace {

constexpr float kRowHeight = 21;
constexpr float kIndent = 14;
constexpr float kLeft = 10;
constexpr float kTriangle = 14;  // the width of what expands a row
constexpr float kTextSize = 11;
constexpr float kTextTop = 5;
constexpr std::size_t kContext = 4;  // rows that are shown below or above the chosen one

// The parts of a row, in the order in which they are its children.
enum Part : std::size_t { Ground, Triangle, Kind, Detail, Mark };

float leftOf(const Row& row) {
    return kLeft + kIndent * static_cast<float>(row.depth - 1);
}

void setColor(graphics::Text& text, bool isChosen, bool isVisible, unsigned color) {
    text.setFillColor(isChosen ? palette::kInk : isVisible ? color : palette::kPale);
}

}  // namespace

// The container of a row. It remembers what it shows, so that showing the same again costs nothing.
class TreeList::Line {
public:
    static std::shared_ptr<graphics::Container> create() {
        const auto row = DisplayFactory::createContainer();
        row->add(makeRect(palette::kPanel, 4));
        for (const unsigned color :
             {palette::kCaption, palette::kInk, palette::kGreen, palette::kPale}) {
            row->add(makeText("", kTextSize, color));
        }
        partOf<graphics::Text>(*row, Mark).setTextAlign(graphics::TextAlign::End);
        return row;
    }

    static void show(graphics::Container& container, const Row& row, const RowText& text,
                     float width, unsigned ground) {
        const bool isChosen = ground == palette::kSelection;
        const UpdateLock lock(container.shared_from_this());
        auto& back = partOf<graphics::Rect>(container, Ground);
        back.set(4, 0, width - 8, kRowHeight);
        back.setFillColor(ground);
        const float left = leftOf(row);
        place(container, Triangle, left,
              !row.hasChildren ? ""
              : row.isExpanded ? "\u25BE"
                               : "\u25B8");
        auto& kind = place(container, Kind, left + kTriangle, text.kind);
        setColor(kind, isChosen, text.isVisible, palette::kInk);
        const auto kindWidth = static_cast<float>(kind.getTextBounds().width);
        auto& mark = place(container, Mark, width - 14, text.mark);
        setColor(mark, isChosen, text.isVisible, palette::kPale);
        const auto markWidth = static_cast<float>(mark.getTextBounds().width);
        const float detailLeft = left + kTriangle + kindWidth + 8;
        auto& detail = place(container, Detail, detailLeft,
                             graphics::shortenText(text.detail, {kFont, kTextSize},
                                                   width - 24 - markWidth - detailLeft));
        setColor(detail, isChosen, text.isVisible, palette::kGreen);
    }

private:
    template <typename T>
    static T& partOf(graphics::Container& container, Part part) {
        return dynamic_cast<T&>(*container.getChildren()[part]);
    }

    static graphics::Text& place(graphics::Container& container, Part part, float x,
                                 const std::string& content) {
        auto& text = partOf<graphics::Text>(container, part);
        setText(text, content);
        text.setX(x);
        text.setY(kTextTop);
        return text;
    }
};

TreeList::TreeList(Handlers handlers)
    : handlers_(std::move(handlers)),
      container_(DisplayFactory::createContainer()),
      list_(DisplayFactory::createListContainer()),
      nothing_(makeText("Nothing is found.", kTextSize, palette::kCaption)),
      pointer_(listenerFor<PointerEvent>([this](const auto& event) { return handle(event); })),
      keys_(listenerFor<KeyEvent>([this](const auto& event) { return handle(event); })) {
    container_->add(list_);
    nothing_->setTranslate(kLeft, kTextTop);
    container_->add(nothing_);
    list_->setRowHeight(kRowHeight);
    list_->setRowFunction(
        [this](auto row, const auto& recycled) { return makeRow(row, recycled); });
    list_->addListener<PointerEvent>(pointer_);
    list_->addListener<KeyEvent>(keys_);
    list_->getOrCreateAccessibilityElement()->setLabel("Tree");
}

void TreeList::resize(const display::geometry::Rect<double>& rect) {
    container_->setTranslate(static_cast<float>(rect.x), static_cast<float>(rect.y));
    list_->setBounds({0, 0, rect.width, rect.height});
    if (width_ != rect.width) {
        width_ = rect.width;
        list_->reloadRows(0, rows_.size());
    }
}

std::shared_ptr<DisplayObject> TreeList::makeRow(std::size_t row,
                                                 const std::shared_ptr<DisplayObject>& recycled) {
    auto container = std::dynamic_pointer_cast<graphics::Container>(recycled);
    if (!container) {
        container = Line::create();
    }
    const Row& shown = rows_[row];
    const RowText text = shown_[shown.node.key] = Tree::describe(shown.node);
    Line::show(*container, shown, text, static_cast<float>(width_),
               shown.node == chosen_    ? palette::kSelection
               : shown.node == hovered_ ? palette::kHover
                                        : palette::kPanel);
    return container;
}

void TreeList::updateRow(std::size_t row) {
    if (row < rows_.size()) {
        list_->reloadRows(row, 1);
    }
}

void TreeList::show(std::vector<Row> rows) {
    const auto same = std::ranges::mismatch(rows_, rows);
    const auto first = static_cast<std::size_t>(same.in1 - rows_.begin());
    std::size_t last = 0;  // rows at the end that stay
    const std::size_t most = std::min(rows.size(), rows_.size()) - first;
    while (last < most && rows[rows.size() - 1 - last] == rows_[rows_.size() - 1 - last]) {
        ++last;
    }
    const std::size_t removed = rows_.size() - first - last;
    const std::size_t inserted = rows.size() - first - last;
    rows_ = std::move(rows);
    nothing_->setVisible(rows_.empty());
    const UpdateLock lock(list_);
    list_->removeRows(first, removed);
    list_->insertRows(first, inserted);
    // What the rows in view say may have changed.
    const auto shownBefore = std::exchange(shown_, {});
    const double top = list_->getContentOffset().y;
    const std::size_t begin = list_->getRowAt(top);
    const std::size_t end =
        std::min(rows_.size(), list_->getRowAt(top + list_->getBounds().height) + 1);
    for (std::size_t row = begin; row < end; ++row) {
        const std::uint64_t key = rows_[row].node.key;
        const auto before = shownBefore.find(key);
        const RowText text = Tree::describe(rows_[row].node);
        if (before == shownBefore.end() || before->second != text) {
            list_->reloadRows(row, 1);
        }
        shown_[key] = text;
    }
}

std::size_t TreeList::indexOf(const Node& node) const {
    const auto found = std::ranges::find(rows_, node, &Row::node);
    return static_cast<std::size_t>(found - rows_.begin());
}

void TreeList::choose(const Node& node, bool shows) {
    const std::size_t old = indexOf(chosen_);
    chosen_ = node;
    updateRow(old);
    const std::size_t row = indexOf(node);
    updateRow(row);
    if (shows && row < rows_.size()) {
        const std::size_t last = rows_.size() - 1;
        for (const std::size_t each :
             {std::min(row + kContext, last), row - std::min(row, kContext)}) {
            list_->scrollToRow(each, graphics::ScrollContainer::Motion::Immediate);
        }
    }
}

bool TreeList::handle(const PointerEvent& event) {
    const auto& frame = list_->getFrame();
    const double y = event.location.y - frame.y;
    const std::size_t row = static_cast<std::size_t>(std::max(0.0, y) / double{kRowHeight});
    const bool isOver = event.phase != PointerPhase::Leave && y >= 0 && row < rows_.size();
    const Node node = isOver ? rows_[row].node : Node();
    if (!(node == hovered_)) {
        const std::size_t old = indexOf(std::exchange(hovered_, node));
        updateRow(old);
        updateRow(row);
        handlers_.hovered(node);
    }
    if (event.phase == PointerPhase::Down && isOver) {
        const Row pressed = rows_[row];
        const double x = event.location.x - frame.x - double{leftOf(pressed)};
        if (pressed.hasChildren && x >= -2 && x < double{kTriangle}) {
            handlers_.expanded(node, !pressed.isExpanded);
        } else {
            handlers_.chosen(node);
        }
    }
    return event.phase == PointerPhase::Down || event.phase == PointerPhase::Up;
}

bool TreeList::handle(const KeyEvent& event) {
    const std::size_t row = indexOf(chosen_);
    if (event.phase == KeyPhase::Up || row >= rows_.size()) {
        return false;
    }
    if (event.key == "Up" || event.key == "Down") {
        const std::size_t next = event.key == "Down" ? row + 1 : row - 1;
        if (next < rows_.size()) {
            handlers_.chosen(rows_[next].node);
        }
        return true;
    }
    if (event.key == "Left" || event.key == "Right") {
        handlers_.expanded(chosen_, event.key == "Right");
        return true;
    }
    return false;
}

}  // namespace orvane::inspector
