#include "host/GTKInspector.h"

#include "host/Options.h"

namespace orvane::host {

GTKInspector::GTKInspector(const Options& options, platform::NSWindow& application)
    : content_(kInspectorSize) {
    window_.set_title(options.title + " - inspector");
    window_.set_child(content_.widget());
    // The labels of a smaller window would overlap.
    window_.set_size_request(800, 500);
    inspector_ = openInspector(options, application, content_);
    if (!inspector_) {
        return;
    }
    content_.setResizeHandler([this](platform::CGSize size) {
        if (inspector_) {
            inspector_->resize(size);
        }
    });
    window_.signal_close_request().connect(
        [this] {
            inspector_.reset();
            window_.set_visible(false);
            return true;  // this object destroys the window
        },
        false);
    window_.present();
}

GTKInspector::~GTKInspector() {
    inspector_.reset();
    window_.unset_child();
}

bool GTKInspector::isShown() const {
    return !inspector_ || !content_.needsDisplay();
}

}  // namespace orvane::host
