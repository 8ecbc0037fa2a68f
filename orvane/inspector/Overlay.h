#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/appkit/NSView.h"

namespace orvane::platform {
class NSWindow;
}

namespace orvane::inspector {

// What the inspector draws over the application: views above the view of the application's display,
// in none of its trees. They are plain colored areas and fade as layers, so the overlay paints
// nothing and needs no backing store, except for the label of the outline. It takes no input unless
// it picks. All rectangles are in points of the window's content. Main thread only.
class Overlay {
public:
    using Rects = std::vector<platform::CGRect>;

    // Adds the views above the window's content, which must exist; the destructor removes them.
    explicit Overlay(platform::NSWindow& window);
    ~Overlay();
    Overlay(const Overlay&) = delete;
    Overlay& operator=(const Overlay&) = delete;

    // Whether a view belongs to the overlay.
    bool contains(const platform::NSView& view) const;
    // Covers the whole content.
    void resize(platform::CGSize size);

    // Outlines what is chosen, with a label.
    void showChosen(const std::optional<platform::CGRect>& rect, const std::string& label);
    // Outlines what the pointer is over.
    void showHovered(const std::optional<platform::CGRect>& rect);
    // Outlines what was painted last.
    void showDamage(const Rects& rects);
    // Outlines the layers.
    void showBorders(const Rects& rects);
    // Shows areas for a moment.
    void flash(const Rects& rects);

    // Where the pointer is while picking, and whether the button was pressed.
    using PickFunction = std::function<void(platform::CGPoint, bool isPressed)>;
    // Takes the pointer from the application and calls the function, until it is set to null.
    void setPick(PickFunction pick);

private:
    class Root;
    class Frames;
    class Label;

    Rects inWindow(const std::optional<platform::CGRect>& rect) const;

    std::shared_ptr<Root> root_;
    std::unique_ptr<Frames> flashes_;
    std::unique_ptr<Frames> borders_;
    std::unique_ptr<Frames> damage_;
    std::unique_ptr<Frames> hovered_;
    std::unique_ptr<Frames> chosen_;
    std::shared_ptr<Label> label_;
};

}  // namespace orvane::inspector
