#pragma once

#include <gtk/gtk.h>
#include <gtkmm/widget.h>

#include <memory>
#include <string>

#include "platform/gtk/GTKControl.h"
#include "platform/gtk/GTKTextStyle.h"

namespace orvane::platform {

class NSTextField;

// The base of the widgets for text fields: what they have in common. Subclasses show a line, a
// secret, or several lines.
class GTKTextField : public GTKControl {
public:
    // Creates the widget for a field, which is borrowed and must outlive it.
    static std::unique_ptr<GTKControl> create(NSTextField& field);

    void stateDidChange() final;

protected:
    explicit GTKTextField(NSTextField& field) : field_(field) {}

    // Must be called by the constructor of the subclass, with the widget that has the keyboard.
    void connect(GtkWidget* focused);

    // Copies the text and the selection of the field to the widget, if they differ.
    virtual void showText() = 0;
    // Copies what else the widget knows: the placeholder, the purpose and the alignment.
    virtual void showTraits() = 0;
    // Copies the text and the selection of the widget to the field, which notifies the application.
    virtual void takeText() = 0;
    // The widget that assistive technology finds.
    virtual GtkAccessible* accessible() = 0;

    // Calls takeText, unless this object itself is changing the widget.
    void textDidChange();
    static GtkInputPurpose inputPurpose(const NSTextField& field);

    NSTextField& field_;
    bool isShowing_ = false;  // the field's state is being copied to the widget

private:
    gboolean keyPressed(guint key, GdkModifierType state);

    GTKTextStyle style_;
    std::string label_;
    unsigned shown_ = 0;  // the revision of the field that the widget shows
};

}  // namespace orvane::platform
