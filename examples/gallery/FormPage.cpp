#include "FormPage.h"

#include <algorithm>
#include <utility>

#include "Palette.h"

namespace gallery {

using orvane::display::graphics::TextAlign;
using Frame = orvane::display::geometry::Rect<double>;

namespace {

constexpr float kLeft = 110;
constexpr float kColumn = 380;  // the distance of the columns
constexpr float kWidth = 340;
constexpr float kTop = 150;
constexpr float kRow = 84;
constexpr float kHeight = 42;
constexpr float kPadding = 12;  // between a frame and its text
constexpr float kTextSize = 15;
constexpr double kLargestScale = 1.5;  // of texts, which the height of a field allows

}  // namespace

// Highlights the frame of the field that has the keyboard, and reports what the user does.
class FormPage::Listener : public InputText::ChangeEvent::listener_type,
                           public InputText::CommitEvent::listener_type,
                           public InputText::FocusEvent::listener_type {
public:
    Listener(FormPage& page, std::string label,
             std::shared_ptr<orvane::display::graphics::Rect> frame)
        : page_(page), label_(std::move(label)), frame_(std::move(frame)) {}

    void operator()(const std::shared_ptr<DisplayObject>& object,
                    const InputText::ChangeEvent&) override {
        const auto input = std::dynamic_pointer_cast<InputText>(object);
        page_.say(label_ + (input->isSecure() ? " was changed" : ": " + input->getContent()));
    }
    void operator()(const std::shared_ptr<DisplayObject>&, const InputText::CommitEvent&) override {
        page_.say(label_ + " was committed");
    }
    void operator()(const std::shared_ptr<DisplayObject>&,
                    const InputText::FocusEvent& event) override {
        isFocused_ = event.isFocused;
        draw();
    }
    void draw() {
        frame_->setStrokeColor((isFocused_ ? palette::kAccent : palette::kEdge).now());
        frame_->setStrokeWidth(isFocused_ ? 2 : 1);
    }

private:
    FormPage& page_;
    std::string label_;
    std::shared_ptr<orvane::display::graphics::Rect> frame_;
    bool isFocused_ = false;
};

FormPage::FormPage() : root_(DisplayFactory::createContainer()) {
    const auto paper = DisplayFactory::createRect();
    paper->set(0, 0, kPageWidth, kPageHeight);
    paint(paper, palette::kPaper);
    root_->add(paper);
    const auto rail = DisplayFactory::createRect();
    rail->set(0, 0, 72, kPageHeight);
    paint(rail, palette::kRail);
    root_->add(rail);
    addHeading();

    using Purpose = InputText::Purpose;
    addLine(0, 0, {"Name", "First and last name", "Zoë Müller", Purpose::Name});
    addLine(0, 1, {"E-mail", "name@example.org", "", Purpose::Email});
    addLine(0, 2, {"Phone", "+49 30 1234567", "", Purpose::Phone});
    addLine(0, 3, {"Password", "At least 8 characters", "secret!", Purpose::FreeForm, true});
    addLine(0, 4,
            {"Web site", "https://", "https://example.org/a/rather/long/path/to/the/page",
             Purpose::URL});
    addLine(1, 0, {"Postal code, 5 characters", "12345", "", Purpose::Digits, false, 5});
    addLine(1, 1, {"PIN", "", "1234", Purpose::Pin, true, 4});
    addStyledLines();
    addNotes();
}

void FormPage::addHeading() {
    addText(*root_, kLeft, 84, "Settings", 30, palette::kInk, "DejaVuSans-Bold");
    const char* const hint = "Tab visits the fields; Enter commits them.";
    scaleText(addText(*root_, kLeft, 112, hint, 14, palette::kCaption), 14, 2 * kColumn);
    status_ = addText(*root_, kLeft, 770, "Nothing was changed yet.", 14, palette::kCaption);
}

std::shared_ptr<FormPage::InputText> FormPage::addInput(const Frame& frame,
                                                        const std::string& label, bool isMultiline,
                                                        bool isSecure, int maximumLength) {
    const auto caption = addText(*root_, static_cast<float>(frame.x),
                                 static_cast<float>(frame.y) - 8, label, 13, palette::kCaption);
    scaleText(caption, 13, static_cast<float>(frame.width));
    const auto box = DisplayFactory::createRect();
    box->set(static_cast<float>(frame.x), static_cast<float>(frame.y),
             static_cast<float>(frame.width), static_cast<float>(frame.height));
    box->setRx(8);
    box->setRy(8);
    paint(box, palette::kCard, palette::kEdge, 1);
    root_->add(box);

    const auto input = DisplayFactory::createInputText(isMultiline, isSecure, maximumLength);
    input->setBounds({frame.x + kPadding, frame.y + (isMultiline ? kPadding : 4),
                      frame.width - 2 * kPadding, frame.height - (isMultiline ? 2 * kPadding : 8)});
    input->setFont("DejaVuSans");
    Look::instance().follow(input, [](InputText& text) {
        const double scale = Look::instance().appearance().textScale;
        text.setTextSize(kTextSize * static_cast<float>(std::min(scale, kLargestScale)));
        text.setTextColor(palette::kInk.now());
        text.setPlaceholderColor(palette::kFaint.now());
    });
    input->getOrCreateAccessibilityElement()->setLabel(label);
    root_->add(input);

    const auto listener = std::make_shared<Listener>(*this, label, box);
    Look::instance().followChanges(listener, [](Listener& field) { field.draw(); });
    input->addListener<InputText::ChangeEvent>(listener);
    input->addListener<InputText::CommitEvent>(listener);
    input->addListener<InputText::FocusEvent>(listener);
    listeners_.push_back(listener);
    return input;
}

void FormPage::addLine(int column, int row, const Kind& kind) {
    const auto input = addInput({kLeft + kColumn * static_cast<float>(column),
                                 kTop + kRow * static_cast<float>(row) + 16, kWidth, kHeight},
                                kind.label, false, kind.isSecure, kind.maximumLength);
    input->setPlaceholder(kind.placeholder);
    input->setContent(kind.content);
    input->setPurpose(kind.purpose);
}

void FormPage::addStyledLines() {
    const auto at = [](int column, int row) {
        return Frame(kLeft + kColumn * static_cast<float>(column),
                     kTop + kRow * static_cast<float>(row) + 16, kWidth, kHeight);
    };
    const auto amount = addInput(at(1, 2), "Amount, at the right", false, false, 0);
    amount->setPurpose(InputText::Purpose::Number);
    amount->setAlignment(TextAlign::End);
    amount->setFont("DejaVuSans-Bold");
    amount->setContent("1,250.00");
    const auto city = addInput(at(1, 3), "City, centered, in its own colors", false, false, 0);
    city->setAlignment(TextAlign::Center);
    city->setFont("DejaVuSerif");
    Look::instance().follow(city, [](InputText& text) {
        text.setTextColor(Color{palette::kViolet, 0xFFB39CF5}.now());
    });
    city->setBackgroundColor(0x187A5CD6);
    city->setSelectionColor(0x807A5CD6);
    city->setContent("Zürich");
    const auto disabled = addInput(at(1, 4), "Account, disabled", false, false, 0);
    disabled->setContent("A-2048");
    disabled->setEnabled(false);
    const auto readOnly = addInput(at(2, 4), "License key, can be copied", false, false, 0);
    readOnly->setContent("9F2C-77AB-03DE");
    readOnly->setEditable(false);
}

void FormPage::addNotes() {
    const auto notes = addInput({kLeft + 2 * kColumn, kTop + 16, kWidth, 3 * kRow + kHeight},
                                "Notes, several lines, at most 500 characters", true, false, 500);
    notes->setPlaceholder("What else should we know?");
    notes->setContent(
        "A text of several lines wraps at the width of its bounds.\n\nEnter begins a new "
        "paragraph; Control and Enter commit the text. Emoji are one character each: 🚀 "
        "👍🏽");
    const auto empty = addInput({kLeft, kTop + 5 * kRow + 16, kWidth + 2 * kColumn, 118},
                                "Comments", true, false, 0);
    empty->setPlaceholder("A placeholder wraps as well, and disappears with the first character.");
}

void FormPage::say(const std::string& what) {
    using orvane::display::graphics::shortenText;
    status_->setContent(shortenText(what, {"DejaVu Sans", 14}, kPageWidth - 2 * kLeft));
}

void FormPage::drawIcon(ContainerObject& inside) {
    const auto box = DisplayFactory::createRect();
    box->set(0, 5, 24, 14);
    box->setRx(3);
    box->setRy(3);
    paint(box, 0, palette::kWhite, 2);
    inside.add(box);
    const auto caret = DisplayFactory::createRect();
    caret->set(6, 8, 2, 8);
    paint(caret, palette::kAmber);
    inside.add(caret);
}

}  // namespace gallery
