#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Cards.h"
#include "Controls.h"

namespace gallery {

// The page of what an application has around its display: the clipboard, drops, dialogs,
// notifications, the window and the appearance; and of input: the pointer, its shapes, and keys.
class DesktopPage {
public:
    DesktopPage();

    const Container& root() const { return page_.root(); }
    static void drawIcon(ContainerObject& inside);

private:
    using Text = orvane::display::graphics::Text;
    using Image = orvane::display::graphics::Image;

    void drawClipboardText(ContainerObject& inside);
    void drawClipboardPicture(ContainerObject& inside);
    void drawDrop(ContainerObject& inside);
    void drawDialogs(ContainerObject& inside);
    void drawAddress(ContainerObject& inside);
    void drawNotification(ContainerObject& inside);
    void drawWindow(ContainerObject& inside);
    void drawClosing(ContainerObject& inside);
    void drawAppearance(ContainerObject& inside);
    void drawPointer(ContainerObject& inside);
    void drawCursors(ContainerObject& inside);
    void drawKeys(ContainerObject& inside);

    // Adds a caption that says what happened, with its baseline at `y`.
    static std::shared_ptr<Text> addStatus(ContainerObject& inside, float y,
                                           const std::string& content);
    // Adds a place for a picture, with a frame around it. The picture is scaled to fit.
    std::shared_ptr<Image> addPicture(ContainerObject& inside, const Controls::Rect& place);
    orvane::display::events::CloseDecision close();

    Page page_;
    bool savesFirst_ = false;
    bool isSaving_ = false;
    std::shared_ptr<orvane::display::animation::FrameAnimation> saving_;
    std::shared_ptr<orvane::display::events::Shortcut> shortcut_;
    Controls controls_{page_.root()};
};

}  // namespace gallery
