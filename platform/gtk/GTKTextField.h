#pragma once

#include <gtkmm/entry.h>

#include "platform/gtk/GTKControl.h"

namespace orvane::platform {

class NSTextField;

// A text field shown by an entry.
class GTKTextField final : public GTKControl {
public:
    explicit GTKTextField(NSTextField& field);

    Gtk::Widget& widget() override { return entry_; }
    void stateDidChange() override;

private:
    NSTextField& field_;
    Gtk::Entry entry_;
    bool taking_ = false;
};

}  // namespace orvane::platform
