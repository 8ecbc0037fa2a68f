#include "platform/gtk/web/GTKWebView.h"

#include <gtk/gtk.h>
#include <gtkmm/widget.h>

#include <memory>
#include <string>

#include "platform/foundation/NSLog.h"
#include "platform/gtk/web/WebKitEngine.h"
#include "platform/gtk/web/findSandboxFault.h"
#include "platform/gtk/web/registerWeb.h"
#include "platform/web/NSWebPage.h"

namespace orvane::platform {

Gtk::Widget& GTKWebView::widget() {
    return *Glib::wrap(GTK_WIDGET(engine_.view()));
}

void GTKWebView::stateDidChange() {
    if (label_ != page_.accessibilityLabel()) {
        label_ = page_.accessibilityLabel();
        gtk_accessible_update_property(GTK_ACCESSIBLE(engine_.view()),
                                       GTK_ACCESSIBLE_PROPERTY_LABEL, label_.c_str(), -1);
    }
}

}  // namespace orvane::platform

void orvane_register_web() {
    using namespace orvane::platform;
    if (const std::string fault = findSandboxFault(); !fault.empty()) {
        NSLog("A web page is not shown: its processes cannot be kept in a sandbox here: %s",
              fault.c_str());
        return;
    }
    NSWebPage::setEngineSource(
        [](NSWebPage& page) { return std::make_unique<WebKitEngine>(page); });
    GTKControl::registerKind(
        std::string(NSWebPage::kKind), [](NSControl& control) -> std::unique_ptr<GTKControl> {
            auto* const page = dynamic_cast<NSWebPage*>(&control);
            auto* const engine =
                page != nullptr ? dynamic_cast<WebKitEngine*>(page->engine()) : nullptr;
            return engine != nullptr ? std::make_unique<GTKWebView>(*page, *engine) : nullptr;
        });
}
