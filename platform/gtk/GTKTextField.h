#pragma once

#include <gtkmm/entry.h>

#include "platform/gtk/GTKControl.h"

namespace orvane::platform {

class NSTextField;

// Shows a text field with a Gtk::Entry.
class GTKTextField final : public GTKControl {
public:
    // The field is borrowed and must outlive this object.
    explicit GTKTextField(NSTextField& field);

    Gtk::Widget& widget() override { return entry_; }
    void stateDidChange() override;

private:
    NSTextField& field_;
    Gtk::Entry entry_;
    bool taking_ = false;  // the field's state is being copied to the entry
};

}  // namespace orvane::platform
