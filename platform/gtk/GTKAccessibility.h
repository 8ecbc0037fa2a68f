#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "platform/appkit/NSAccessibility.h"

namespace Gtk {
class Widget;
}

typedef struct _GtkWidget GtkWidget;

namespace orvane::platform {

class GTKAccessibleElement;

// The elements of a window, as widgets in its root that only assistive technology sees. Main thread
// only.
class GTKAccessibility {
public:
    // Both are borrowed and must outlive this object.
    GTKAccessibility(Gtk::Widget& root, NSAccessibility& content);
    ~GTKAccessibility();
    GTKAccessibility(const GTKAccessibility&) = delete;
    GTKAccessibility& operator=(const GTKAccessibility&) = delete;

    // Reads the elements and shows them. Elements that were there keep their widgets.
    void update();
    // Places the elements. Called by the root's layout.
    void allocate();
    // The widget of the element that has the keyboard; the root if none has it.
    Gtk::Widget& focusedWidget() const;
    // The element whose widget this is; 0 for none.
    std::uint64_t elementOf(const GtkWidget* widget) const;
    // The user gives an element the keyboard.
    void focus(std::uint64_t identifier) { content_.focus(identifier); }

private:
    using Elements = std::unordered_map<std::uint64_t, std::unique_ptr<GTKAccessibleElement>>;

    std::unique_ptr<GTKAccessibleElement> make(const NSAccessibilityElement& element);

    Gtk::Widget& root_;
    NSAccessibility& content_;
    Elements elements_;
    std::vector<std::uint64_t> order_;
    std::uint64_t focused_ = 0;
};

}  // namespace orvane::platform
