#include "orvane/display/graphics/quartz/UIListContainer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "orvane/commons/ScopedFlag.h"
#include "orvane/commons/guardedCall.h"
#include "orvane/commons/reportMisuse.h"
#include "orvane/thread/dispatch.h"
#include "platform/appkit/NSScrollView.h"

namespace orvane::display::graphics::quartz {

namespace {

// Rows this far from the visible part are made in advance, in points.
constexpr double kAhead = 100;
// The extent of the document view, in points. A float tells apart hundredths of a point in it.
constexpr double kDocument = 65536;
// The most updates that functions of the application may cause by changing the list in an update.
constexpr int kMostUpdates = 8;

}  // namespace

UIListContainer::UIListContainer() : UIScrollContainer(Type::Vertical, false) {}

void UIListContainer::init() {
    UIScrollContainer::init();
    keep({});
}

// ---- the rows ----

bool UIListContainer::hasRows(const char* function, std::size_t row, std::size_t count) const {
    const bool has = row <= heights_.count() && count <= heights_.count() - row;
    if (!has) {
        commons::reportMisuse(function, "nothing is changed: there are no such rows");
    }
    return has;
}

void UIListContainer::setRowFunction(RowFunction function) {
    function_ = std::move(function);
    reloadRows(0, heights_.count());
}

void UIListContainer::setRowHeight(double height) {
    if (!(height >= 1) || !std::isfinite(height)) {
        commons::reportMisuse("ListContainer::setRowHeight", "rows are at least one point high");
    }
    const std::optional<Anchor> kept = anchor();
    heights_.setEqual(height);
    keep(kept);
}

void UIListContainer::setRowHeights(HeightFunction function) {
    if (!function) {
        commons::reportMisuse("ListContainer::setRowHeights",
                              "nothing is set: there is no function");
        return;
    }
    const std::optional<Anchor> kept = anchor();
    // The height is 0, which counts as one point, if the function throws.
    heights_.setFunction([function = std::move(function)](std::size_t row) {
        double height = 0;
        commons::guardedCall("exception of a list's height function",
                             [&] { height = function(row); });
        return height;
    });
    keep(kept);
}

void UIListContainer::setRowCount(std::size_t count) {
    heights_.reset(count);
    recycleAll();
    keep({});
}

void UIListContainer::insertRows(std::size_t row, std::size_t count) {
    if (!hasRows("ListContainer::insertRows", row, 0) || count == 0) {
        return;
    }
    std::optional<Anchor> kept = anchor();
    heights_.insert(row, count);
    Rows moved;
    for (auto& [number, each] : rows_) {
        moved.emplace_hint(moved.end(), number < row ? number : number + count, std::move(each));
    }
    rows_ = std::move(moved);
    if (kept && row <= kept->row) {
        kept->row += count;
    }
    keep(kept);
}

void UIListContainer::removeRows(std::size_t row, std::size_t count) {
    if (!hasRows("ListContainer::removeRows", row, count) || count == 0) {
        return;
    }
    std::optional<Anchor> kept = anchor();
    heights_.remove(row, count);
    Rows moved;
    for (auto& [number, each] : rows_) {
        if (number < row) {
            moved.emplace_hint(moved.end(), number, std::move(each));
        } else if (number - row < count) {
            recycle(each);
        } else {
            moved.emplace_hint(moved.end(), number - count, std::move(each));
        }
    }
    rows_ = std::move(moved);
    if (kept && kept->row >= row + count) {
        kept->row -= count;
    } else if (kept && kept->row >= row) {
        kept =
            Anchor{row, getContentOffset().y};  // the row below the removed ones comes to the top
    }
    keep(kept);
}

void UIListContainer::reloadRows(std::size_t row, std::size_t count) {
    if (!hasRows("ListContainer::reloadRows", row, count) || count == 0) {
        return;
    }
    const std::optional<Anchor> kept = anchor();
    heights_.change(row, count);
    for (auto each = rows_.lower_bound(row); each != rows_.end() && each->first - row < count;) {
        recycle(each->second);
        each = rows_.erase(each);
    }
    keep(kept);
}

std::shared_ptr<DisplayObject> UIListContainer::getRow(std::size_t row) const {
    const auto found = rows_.find(row);
    return found != rows_.end() ? found->second.object : nullptr;
}

double UIListContainer::getRowOffset(std::size_t row) const {
    return heights_.offsetOf(std::min(row, heights_.count())) * scale_;
}

std::size_t UIListContainer::getRowAt(double offset) const {
    return heights_.count() != 0 ? heights_.rowAt(offset / scale_) : 0;
}

void UIListContainer::scrollToRow(std::size_t row, Motion motion) {
    if (!hasRows("ListContainer::scrollToRow", row, 1)) {
        return;
    }
    withView([&](platform::NSScrollView& view) {
        const double top = getRowOffset(row);
        view.scrollRectToVisible({{0, top}, {1, getRowOffset(row + 1) - top}},
                                 motion == Motion::Animated);
    });
}

// ---- what follows from changes ----

// Reads the places of the rows in view and not the heights: when the application reports a change,
// its height function knows only the rows after the change.
auto UIListContainer::anchor() const -> std::optional<Anchor> {
    std::optional<Anchor> top;
    for (const auto& [number, row] : rows_) {
        if (row.offset * scale_ <= getContentOffset().y) {
            top = {number, row.offset};
        }
    }
    return top;
}

void UIListContainer::keep(const std::optional<Anchor>& kept) {
    const double extent = kept ? heights_.offsetOf(kept->row) - kept->offset : 0;
    if (extent != 0) {
        // The document view moves with its rows, so that nothing is painted again. The scroll view
        // must not ask for rows before all of it is done.
        const commons::ScopedFlag updating(isUpdating_);
        withView([&](platform::NSScrollView& view) {
            setDocument(view, getDocumentOrigin() + extent * scale_, kDocument);
            view.insertContentBefore({0, extent * scale_});
        });
        for (auto& [number, row] : rows_) {
            row.offset += extent;
        }
    }
    setContentSize({0, heights_.total() * scale_});
    update();
}

void UIListContainer::recycle(const Row& row) {
    if (row.object) {
        recycled_.push_back(row.object);
    }
}

void UIListContainer::recycleAll() {
    for (const auto& [number, row] : rows_) {
        recycle(row);
    }
    rows_.clear();
}

void UIListContainer::didScroll() {
    UIScrollContainer::didScroll();
    update();
}

void UIListContainer::didChangeExtents() {
    const geometry::Point<double> corner = getBounds().position();
    if (std::exchange(corner_, corner) != corner) {
        forgetPlaces();
    }
    const double before = std::exchange(scale_, scaleOfParent());
    if (before != scale_) {
        // The row at the top stays there.
        const geometry::Point<double> offset = getContentOffset();
        forgetPlaces();
        setContentSize({0, heights_.total() * scale_});
        setContentOffset({offset.x, offset.y / before * scale_}, Motion::Immediate);
    }
    update();
}

double UIListContainer::scaleOfParent() const {
    const std::shared_ptr<ContainerObject> parent = getParent();
    const double scale = parent ? std::abs(parent->getFullTransformation().m11) : 1;
    return scale > 0 && std::isfinite(scale) ? scale : 1;
}

void UIListContainer::update() {
    isStale_ = true;
    if (isUpdating_) {
        return;
    }
    const std::shared_ptr<DisplayObject> self = shared_from_this();
    const commons::ScopedFlag updating(isUpdating_);
    const UpdateLock lock(self);
    for (int i = 0; i < kMostUpdates && std::exchange(isStale_, false); ++i) {
        withView([this](platform::NSScrollView& view) { updateOnce(view); });
    }
}

void UIListContainer::updateOnce(platform::NSScrollView& view) {
    isStale_ = false;
    const double height = view.bounds().size.height;
    const double offset = view.contentOffset().y;
    std::size_t first = 0;
    std::size_t end = 0;
    if (heights_.count() != 0 && height > 0) {
        first = getRowAt(offset - kAhead);
        end = getRowAt(offset + height + kAhead) + 1;
    }
    for (auto row = rows_.begin(); row != rows_.end();) {
        const bool isInView = row->first >= first && row->first < end;
        if (!isInView) {
            recycle(row->second);
        }
        row = isInView ? std::next(row) : rows_.erase(row);
    }
    moveDocument(view);
    double top = first < end ? heights_.offsetOf(first) : 0;
    for (std::size_t row = first; row < end && !isStale_; ++row) {
        auto found = rows_.find(row);
        if (found == rows_.end()) {
            std::shared_ptr<DisplayObject> recycled;
            if (!recycled_.empty()) {
                recycled = std::move(recycled_.back());
                recycled_.pop_back();
            }
            Row made = makeRow(row, recycled);
            if (isStale_) {
                recycle(made);  // the function has changed the list: its rows have other numbers
                return;
            }
            found = rows_.emplace(row, std::move(made)).first;
        }
        place(found->second, top);
        top = heights_.offsetOf(row + 1);
    }
    // No more objects wait than are in view.
    while (recycled_.size() > rows_.size()) {
        remove(recycled_.back());
        recycled_.pop_back();
    }
    for (const std::shared_ptr<DisplayObject>& waiting : recycled_) {
        waiting->setVisible(false);
    }
}

auto UIListContainer::makeRow(std::size_t row, const std::shared_ptr<DisplayObject>& recycled)
    -> Row {
    Row made;
    made.offset = NAN;  // nowhere yet
    if (function_) {
        commons::guardedCall("exception of a list's row function",
                             [&] { made.object = function_(row, recycled); });
    }
    if (recycled && made.object != recycled) {
        remove(recycled);
    }
    if (made.object && made.object != recycled && made.object->getParent() == shared_from_this()) {
        commons::reportMisuse("ListContainer",
                              "the row is empty: its object is in the list already");
        made.object = nullptr;
    }
    if (made.object && made.object != recycled) {
        add(made.object);
        if (made.object->getParent() != shared_from_this()) {
            made.object = nullptr;  // refused, with a line in the log
        }
    }
    if (made.object) {
        made.object->setVisible(true);
    }
    return made;
}

void UIListContainer::place(Row& row, double offset) {
    // The comparison is true for a row that is nowhere yet.
    if (row.object && row.offset != offset) {
        row.object->setTranslate(
            static_cast<float>(corner_.x),
            static_cast<float>(corner_.y + offset - getDocumentOrigin() / scale_));
    }
    row.offset = offset;
}

// Moves the document view if it does not cover what is visible, and places the rows in it again.
void UIListContainer::moveDocument(platform::NSScrollView& view) {
    const double visible = view.bounds().size.height;
    const double offset = view.contentOffset().y;
    const double extent = std::max(kDocument, 2 * visible + 4 * kAhead);
    const double origin = getDocumentOrigin();
    const bool coversAbove = origin <= std::max(offset - kAhead, 0.0);
    const bool coversBelow = origin + extent >= offset + visible + kAhead;
    if (coversAbove && coversBelow) {
        setDocument(view, origin, extent);
        return;
    }
    setDocument(view, std::max(std::floor(offset - extent / 2), 0.0), extent);
    view.documentView()->setNeedsDisplayInRect(view.documentView()->bounds());
    forgetPlaces();
}

void UIListContainer::forgetPlaces() {
    for (auto& [number, row] : rows_) {
        row.offset = NAN;
    }
}

}  // namespace orvane::display::graphics::quartz
