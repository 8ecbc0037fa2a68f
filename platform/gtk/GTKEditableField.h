#pragma once

#include "platform/gtk/GTKTextField.h"

namespace orvane::platform {

// Shows a text field of one line with an editable widget of GTK. Positions here are characters of
// the widget's text, as GTK counts them.
class GTKEditableField : public GTKTextField {
public:
    void grabFocus() override;

protected:
    using GTKTextField::GTKTextField;

    // Must be called by the constructor of the subclass, with its widget.
    void attach(GtkEditable* editable);
    // Must be called by the destructor of the subclass, while it still has the widget.
    void detach();

    void showTraits() override;
    GtkAccessible* accessible() override { return GTK_ACCESSIBLE(editable_); }

    // The user enters a text, or deletes a part. The subclass decides how the widget changes. The
    // first returns the position after the insertion.
    virtual int insertText(const std::string& text, int position) = 0;
    virtual void deleteText(int from, int to) = 0;
    // Change the widget, without a call of the functions above.
    int insertIntoWidget(const std::string& text, int position);
    void deleteFromWidget(int from, int to);

    struct Range {
        int anchor;
        int caret;
        friend bool operator==(const Range&, const Range&) = default;
    };
    Range widgetSelection() const;
    void selectInWidget(const Range& range);
    std::string widgetText() const { return gtk_editable_get_text(editable_); }

    GtkEditable* editable_ = nullptr;

private:
    void connectText();

    GtkText* text_ = nullptr;  // in the widget
    std::string placeholder_;
    bool isPassing_ = false;  // the widget itself is to change
};

}  // namespace orvane::platform
