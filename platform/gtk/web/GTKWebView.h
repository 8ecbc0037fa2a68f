#pragma once

#include <string>

#include "platform/gtk/GTKControl.h"

namespace orvane::platform {

class NSWebPage;
class WebKitEngine;

// Shows the view of a page's engine, which survives this object.
class GTKWebView final : public GTKControl {
public:
    // Both are borrowed.
    GTKWebView(NSWebPage& page, WebKitEngine& engine) : page_(page), engine_(engine) {}

    Gtk::Widget& widget() override;
    void stateDidChange() override;

private:
    NSWebPage& page_;
    WebKitEngine& engine_;
    std::string label_;
};

}  // namespace orvane::platform
