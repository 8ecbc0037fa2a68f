#pragma once

#include <memory>
#include <string>
#include <vector>

#include "orvane/inspector/properties.h"
#include "orvane/inspector/widgets.h"

namespace orvane::inspector {

// Shows sections of properties. A value that can be changed is a field: Enter changes it, and what
// is no value becomes red. A field that has the keyboard keeps what is typed.
class PropertyPanel {
public:
    PropertyPanel();

    // What contains the panel, for resize() to place.
    const std::shared_ptr<display::graphics::Container>& getContainer() const { return container_; }
    void resize(const display::geometry::Rect<double>& rect);
    // Shows other values. A field that has the keyboard is kept if the properties are the same.
    void show(std::vector<Section> sections);
    // Removes everything, before another object is shown.
    void clear();

private:
    // What shows the value of one property.
    struct Value {
        std::shared_ptr<display::graphics::Text> text;        // of a value that cannot be changed
        std::shared_ptr<display::graphics::InputText> field;  // of one that can
        std::shared_ptr<display::graphics::Rect> swatch;      // of a color
        std::shared_ptr<Button> toggle;
        std::string shown;
        std::vector<std::shared_ptr<notification::AbstractListener>> listeners;
    };

    void build();
    Value makeValue(std::size_t section, std::size_t property, float y);
    void showValue(Value& value, const Property& property) const;
    void commit(std::size_t section, std::size_t property);

    std::vector<Section> sections_;
    std::vector<std::vector<Value>> values_;
    double width_ = 0;
    std::shared_ptr<display::graphics::Container> container_;
    std::shared_ptr<display::graphics::ScrollContainer> scroll_;
};

}  // namespace orvane::inspector
