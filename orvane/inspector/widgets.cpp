#include "orvane/inspector/widgets.h"

namespace orvane::inspector {

using display::DisplayFactory;
using display::events::PointerEvent;
using display::events::PointerPhase;
namespace graphics = display::graphics;
namespace layout = display::layout;

std::shared_ptr<graphics::Text> makeText(const std::string& content, float size, unsigned color,
                                         bool isBold) {
    auto text = DisplayFactory::createText(false);
    text->setFont(isBold ? "DejaVu Sans Bold" : kFont);
    text->setTextSize(size);
    text->setFillColor(color);
    text->setAlignmentBaseline(graphics::AlignmentBaseline::Top);
    text->setContent(content);
    return text;
}

void setText(graphics::Text& text, const std::string& content) {
    if (text.getContent() != content) {
        text.setContent(content);
    }
}

std::shared_ptr<graphics::Rect> makeRect(unsigned color, float radius) {
    auto rect = DisplayFactory::createRect();
    rect->setRx(radius);
    rect->setRy(radius);
    rect->setFillColor(color);
    return rect;
}

void removeFill(graphics::Shape& shape) {
    shape.setFillColor(255U, 255U, 255U, ~0U);  // an alpha of -1
}

std::shared_ptr<graphics::InputText> makeField(float size) {
    auto field = DisplayFactory::createInputText(false, false, 0);
    field->setFont(kFont);
    field->setTextSize(size);
    field->setTextColor(palette::kInk);
    field->setPlaceholderColor(palette::kCaption);
    field->setSelectionColor(palette::kSelection);
    return field;
}

Button::Button(const std::string& label, std::function<void()> pressed)
    : box_(std::make_shared<layout::Box>(layout::BoxStyle{.padding = {12, 0, 12, 0},
                                                          .justify = layout::Justify::Center,
                                                          .align = layout::Align::Center})),
      ground_(makeRect(palette::kField, 6)),
      text_(makeText(label, 11, palette::kInk)),
      listener_(listenerFor<PointerEvent>([pressed = std::move(pressed)](const auto& event) {
          if (event.phase == PointerPhase::Down) {
              pressed();
          }
          return event.phase == PointerPhase::Down || event.phase == PointerPhase::Up;
      })) {
    box_->setBackground(ground_);
    box_->add(text_);
    const auto& container = box_->getContainer();
    container->addListener<PointerEvent>(listener_);
    container->setCursor(display::Cursor::Pointer);
    container->getOrCreateAccessibilityElement()->setLabel(label);
}

void Button::setOn(bool isOn) {
    isOn_ = isOn;
    ground_->setFillColor(isOn ? palette::kBlue : palette::kField);
    text_->setFillColor(isOn ? palette::kPaper : palette::kInk);
}

}  // namespace orvane::inspector
