#pragma once

#include <gtkmm/entry.h>

#include "platform/gtk/GTKEditableField.h"

namespace orvane::platform {

// Shows a text field of one line with a Gtk::Entry.
class GTKLineField final : public GTKEditableField {
public:
    explicit GTKLineField(NSTextField& field);
    ~GTKLineField() override { detach(); }

    Gtk::Widget& widget() override { return entry_; }

private:
    void showText() override;
    void takeText() override;
    int insertText(const std::string& text, int position) override;
    void deleteText(int from, int to) override { deleteFromWidget(from, to); }

    Gtk::Entry entry_;
};

}  // namespace orvane::platform
