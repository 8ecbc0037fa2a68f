#include "platform/gtk/GTKAccessibility.h"

#include <gtk/gtk.h>

#include <utility>

#include "platform/gtk/GTKAccessibleElement.h"

namespace orvane::platform {

GTKAccessibility::GTKAccessibility(Gtk::Widget& root, NSAccessibility& content)
    : root_(root), content_(content) {}

GTKAccessibility::~GTKAccessibility() {
    // Those inside others first.
    while (!order_.empty()) {
        elements_.erase(order_.back());
        order_.pop_back();
    }
}

std::unique_ptr<GTKAccessibleElement> GTKAccessibility::make(
    const NSAccessibilityElement& element) {
    return std::make_unique<GTKAccessibleElement>(
        element.role, [this, identifier = element.identifier](unsigned action) {
            content_.perform(identifier, action);
        });
}

void GTKAccessibility::update() {
    const std::vector<NSAccessibilityElement> current = content_.elements();
    Elements before = std::exchange(elements_, {});
    const std::vector<std::uint64_t> orderBefore = std::exchange(order_, {});
    focused_ = 0;
    // The last widget in each parent so far.
    std::unordered_map<std::uint64_t, GtkWidget*> last;
    for (const NSAccessibilityElement& element : current) {
        std::unique_ptr<GTKAccessibleElement> widget;
        if (const auto old = before.find(element.identifier);
            old != before.end() && old->second->element().role == element.role) {
            widget = std::move(old->second);
            before.erase(old);
        } else {
            widget = make(element);
        }
        const auto container = elements_.find(element.parent);
        Gtk::Widget* const parent = container != elements_.end() ? container->second.get() : &root_;
        const CGPoint origin = container != elements_.end()
                                   ? container->second->element().frame.origin
                                   : CGPoint{0, 0};
        auto* const child = GTK_WIDGET(widget->Gtk::Widget::gobj());
        GtkWidget*& previous = last[container != elements_.end() ? element.parent : 0];
        if (gtk_widget_get_parent(child) != parent->gobj()) {
            if (gtk_widget_get_parent(child) != nullptr) {
                gtk_widget_unparent(child);
            }
            gtk_widget_insert_before(child, parent->gobj(), nullptr);
        } else if (previous != nullptr && gtk_widget_get_prev_sibling(child) != previous) {
            gtk_widget_insert_after(child, parent->gobj(), previous);
        }
        previous = child;
        widget->update(element, origin);
        if (element.isFocused) {
            focused_ = element.identifier;
        }
        order_.push_back(element.identifier);
        elements_.emplace(element.identifier, std::move(widget));
    }
    // Those inside others first.
    for (auto identifier = orderBefore.rbegin(); identifier != orderBefore.rend(); ++identifier) {
        before.erase(*identifier);
    }
}

void GTKAccessibility::allocate() {
    for (const auto& [identifier, element] : elements_) {
        if (element->get_parent() == &root_) {
            element->allocate();
        }
    }
}

Gtk::Widget& GTKAccessibility::focusedWidget() const {
    const auto focused = elements_.find(focused_);
    return focused != elements_.end() ? *focused->second : root_;
}

std::uint64_t GTKAccessibility::elementOf(const GtkWidget* widget) const {
    for (const auto& [identifier, element] : elements_) {
        if (GTK_WIDGET(element->Gtk::Widget::gobj()) == widget) {
            return identifier;
        }
    }
    return 0;
}

}  // namespace orvane::platform
