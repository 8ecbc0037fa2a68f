#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "orvane/display/graphics/ListContainer.h"
#include "orvane/display/graphics/RowHeights.h"
#include "orvane/display/graphics/quartz/UIScrollContainer.h"

namespace orvane::display::graphics::quartz {

// A list on the layer of a scroll container. Its children are the rows in view, and those that wait
// to be used again.
//
// Rows are placed relative to the top of the document view, which covers only a part of a long
// content and follows the offset: a float, which transformations take, does not tell rows apart at
// the end of a million of them.
class UIListContainer : public UIScrollContainer, public virtual ListContainer {
public:
    UIListContainer();

    std::string getDescription() const override { return "UIListContainer"; }
    // Must be called once, after a shared_ptr holds the object.
    void init() override;

    void setRowFunction(RowFunction function) override;
    void setRowHeight(double height) override;
    void setRowHeights(HeightFunction function) override;
    void setRowCount(std::size_t count) override;
    std::size_t getRowCount() const override { return heights_.count(); }
    void insertRows(std::size_t row, std::size_t count) override;
    void removeRows(std::size_t row, std::size_t count) override;
    void reloadRows(std::size_t row, std::size_t count) override;
    std::shared_ptr<DisplayObject> getRow(std::size_t row) const override;
    double getRowOffset(std::size_t row) const override;
    std::size_t getRowAt(double offset) const override;
    void scrollToRow(std::size_t row, Motion motion) override;

protected:
    void didScroll() override;
    void didChangeExtents() override;

private:
    struct Row {
        std::shared_ptr<DisplayObject> object;  // null for an empty row
        double offset = 0;                      // where it is placed, in the list's coordinates
    };
    struct Anchor {
        std::size_t row = 0;
        double offset = 0;  // in the list's coordinates, before the change
    };
    using Rows = std::map<std::size_t, Row>;

    // How much the groups around the list scale it vertically.
    double scaleOfParent() const;
    bool hasRows(const char* function, std::size_t row, std::size_t count) const;
    // The first row that is visible, at least in part; none if no row is in view.
    std::optional<Anchor> anchor() const;
    // After a change of the rows: keeps the row where it was in the window, sets the size of the
    // content, and makes the rows in view.
    void keep(const std::optional<Anchor>& kept);
    void recycleAll();
    void recycle(const Row& row);
    // Makes the rows in view, and places them.
    void update();
    void updateOnce(platform::NSScrollView& view);
    void moveDocument(platform::NSScrollView& view);
    Row makeRow(std::size_t row, const std::shared_ptr<DisplayObject>& recycled);
    void place(Row& row, double offset);
    // Has all rows placed again by the next update.
    void forgetPlaces();

    RowFunction function_;
    RowHeights heights_;  // in the coordinates of the list; the scroll view's are of the screen
    double scale_ = 1;    // from the former to the latter
    geometry::Point<double> corner_;  // of the bounds, where the rows begin
    Rows rows_;                       // in view, by their numbers
    std::vector<std::shared_ptr<DisplayObject>> recycled_;
    bool isUpdating_ = false;
    bool isStale_ = false;  // something changed during an update
};

}  // namespace orvane::display::graphics::quartz
