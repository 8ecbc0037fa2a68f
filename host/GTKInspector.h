#pragma once

#include <gtkmm/window.h>

#include <memory>
#include <string>

#include "host/openInspector.h"
#include "platform/gtk/GTKWindow.h"

namespace orvane::host {

// The inspector in a window on the desktop, next to that of the application. Closing the window
// ends the inspector, and the application goes on. Main thread only.
class GTKInspector {
public:
    GTKInspector(const Options& options, platform::NSWindow& application);
    ~GTKInspector();
    GTKInspector(const GTKInspector&) = delete;
    GTKInspector& operator=(const GTKInspector&) = delete;

    // Whether there is an inspector.
    bool isOpen() const { return inspector_ != nullptr; }
    // Whether the window shows everything.
    bool isShown() const;
    bool writePNG(const std::string& path) const { return content_.writePNG(path); }

private:
    platform::GTKWindow content_;
    Gtk::Window window_;
    std::unique_ptr<inspector::Inspector> inspector_;
};

}  // namespace orvane::host
