#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Cards.h"

namespace gallery {

// A form of settings with every kind of text that the user can edit. The application paints the
// frames and the labels; the input texts are in front of them.
class FormPage {
public:
    using InputText = orvane::display::graphics::InputText;
    using Text = orvane::display::graphics::Text;

    FormPage();

    const Container& root() const { return root_; }
    static void drawIcon(ContainerObject& inside);

private:
    class Listener;

    // What a field is for, and how it is created.
    struct Kind {
        std::string label;
        std::string placeholder;
        std::string content;
        InputText::Purpose purpose = InputText::Purpose::FreeForm;
        bool isSecure = false;
        int maximumLength = 0;
    };

    void addHeading();
    void addLine(int column, int row, const Kind& kind);
    void addStyledLines();
    void addNotes();
    std::shared_ptr<InputText> addInput(const orvane::display::geometry::Rect<double>& frame,
                                        const std::string& label, bool isMultiline, bool isSecure,
                                        int maximumLength);
    void say(const std::string& what);

    Container root_;
    std::shared_ptr<Text> status_;
    std::vector<std::shared_ptr<Listener>> listeners_;
};

}  // namespace gallery
