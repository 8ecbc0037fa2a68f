#pragma once

#include <gtkmm/passwordentry.h>

#include "platform/appkit/NSTextEditor.h"
#include "platform/gtk/GTKEditableField.h"

namespace orvane::platform {

// Shows a secret with a Gtk::PasswordEntry, which never gets it: GTK gives the text of hidden
// entries to assistive technology, in answers and in announcements of changes. The widget contains
// a dot for each character, and the user's changes of the dots become changes of the secret.
class GTKSecretField final : public GTKEditableField {
public:
    explicit GTKSecretField(NSTextField& field);
    ~GTKSecretField() override { detach(); }

    Gtk::Widget& widget() override { return entry_; }

private:
    void showText() override;
    void takeText() override;
    int insertText(const std::string& text, int position) override;
    void deleteText(int from, int to) override;

    // Between the bytes of the secret and its dots.
    std::size_t byteOfDot(int dot) const;
    int dotOfByte(std::size_t byte) const;
    // Adds or removes dots at a position, so that there is one for each character.
    void fitDots(int position);

    Gtk::PasswordEntry entry_;
    NSTextEditor secret_{NSTextEditor::Kind::Secret};
};

}  // namespace orvane::platform
