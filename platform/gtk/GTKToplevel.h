#pragma once

#include <functional>
#include <string>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSWindowHost.h"

namespace Gtk {
class Window;
}

typedef struct _GdkTexture GdkTexture;
typedef struct _GtkWindow GtkWindow;

namespace orvane::platform {

class GTKWindow;

// Gives the content of a GTKWindow the window of the desktop that it fills: its title, icon,
// application id, smallest size, full screen, and what happens when the user closes it. For a
// program whose window belongs to the application in it; a program that shows the content as a part
// of a window of its own does without. Create it before the window is shown. Main thread only.
class ORVANE_EXPORT GTKToplevel final : public NSWindowHost {
public:
    // `close` is called when the window is to be closed and the content has not held it. All three
    // are borrowed and must outlive this object; the content is in the window.
    GTKToplevel(Gtk::Window& window, GTKWindow& content, std::function<void()> close);
    ~GTKToplevel() override;
    GTKToplevel(const GTKToplevel&) = delete;
    GTKToplevel& operator=(const GTKToplevel&) = delete;

    bool setTitle(const std::string& title) override;
    bool setIcon(const std::string& picture) override;
    bool setApplicationIdentifier(const std::string& identifier) override;
    bool setMinimumSize(CGSize size) override;
    bool setFullScreen(bool isFullScreen) override;
    bool close() override;

private:
    void showIcon();

    Gtk::Window& window_;
    GTKWindow& content_;
    std::function<void()> close_;
    GdkTexture* icon_ = nullptr;
    unsigned long handlers_[3] = {};
};

}  // namespace orvane::platform
