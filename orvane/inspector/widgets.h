#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "orvane/orvane.h"

namespace orvane::inspector {

namespace palette {

constexpr unsigned kPaper = 0xFF14161B;
constexpr unsigned kPanel = 0xFF1C1F26;
constexpr unsigned kField = 0xFF262A33;
constexpr unsigned kEdge = 0xFF2E333D;
constexpr unsigned kInk = 0xFFE8EBF1;
constexpr unsigned kCaption = 0xFF8D96A7;
constexpr unsigned kPale = 0xFF5B6372;
constexpr unsigned kBlue = 0xFF4C9AFF;
constexpr unsigned kSelection = 0xFF23497D;
constexpr unsigned kHover = 0xFF262B35;
constexpr unsigned kGreen = 0xFF46C08F;
constexpr unsigned kAmber = 0xFFE8B04A;
constexpr unsigned kRed = 0xFFFF6B6B;

}  // namespace palette

constexpr const char* kFont = "DejaVu Sans";

// Returns a listener that calls a function with each event; the function returns what a listener
// for this type of events does. Objects hold listeners weakly: keep it.
template <typename Event, typename Function>
std::shared_ptr<typename Event::listener_type> listenerFor(Function function) {
    class Calling : public Event::listener_type {
    public:
        explicit Calling(Function called) : called_(std::move(called)) {}
        auto operator()(const std::shared_ptr<display::DisplayObject>&, const Event& event)
            -> decltype(std::declval<Function>()(event)) override {
            return called_(event);
        }

    private:
        Function called_;
    };
    return std::make_shared<Calling>(std::move(function));
}

// A text of one line whose origin is its top left corner.
std::shared_ptr<display::graphics::Text> makeText(const std::string& content, float size,
                                                  unsigned color, bool isBold = false);
// Changes what a text shows; nothing is measured or painted if it shows that already.
void setText(display::graphics::Text& text, const std::string& content);
// A rectangle without a size, for a box or set() to size.
std::shared_ptr<display::graphics::Rect> makeRect(unsigned color, float radius = 0);
// Removes the fill of a shape.
void removeFill(display::graphics::Shape& shape);
// A field for one line of text in the inspector's colors.
std::shared_ptr<display::graphics::InputText> makeField(float size);

// A text on a rounded ground that can be pressed, and can stay pressed.
class Button {
public:
    // `label` is also the accessibility label.
    Button(const std::string& label, std::function<void()> pressed);

    const std::shared_ptr<display::layout::Box>& getBox() const { return box_; }
    void setLabel(const std::string& label) { setText(*text_, label); }
    // Shows that it is on.
    void setOn(bool isOn);
    bool isOn() const { return isOn_; }

private:
    std::shared_ptr<display::layout::Box> box_;
    std::shared_ptr<display::graphics::Rect> ground_;
    std::shared_ptr<display::graphics::Text> text_;
    std::shared_ptr<display::events::PointerEvent::listener_type> listener_;
    bool isOn_ = false;
};

}  // namespace orvane::inspector
