#include <orvane/orvane.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <vector>

using namespace orvane::display;

namespace {

struct Drag : events::TouchEventListener {
    events::TouchEventListenerState operator()(const std::shared_ptr<DisplayObject>& object,
                                               const events::TouchEvent& event) override {
        object->translate(static_cast<float>(event.delta.x), static_cast<float>(event.delta.y));
        return event.phase == events::TouchEventPhase::Ended
                   ? events::TouchEventListenerState::Ended
                   : events::TouchEventListenerState::Changed;
    }
};

struct SizePrinter : FrameChangedEvent::listener_type {
    void operator()(const std::shared_ptr<Display>&, const FrameChangedEvent& event) override {
        std::cout << "size " << event.frame.width << 'x' << event.frame.height
                  << (orvane::system::isPortraitScreenOrientation() ? " portrait" : " landscape")
                  << std::endl;
    }
};

// Below the squares, a field, and a list that can be scrolled; prints both when the user presses
// Enter in the field.
struct Form : graphics::InputText::CommitEvent::listener_type {
    std::shared_ptr<graphics::InputText> field = DisplayFactory::createInputText(false, false, 0);
    std::shared_ptr<graphics::ListContainer> list = DisplayFactory::createListContainer();

    void show() {
        field->setBounds({10, 120, 200, 30});
        list->setBounds({300, 120, 100, 80});
        list->setRowFunction([](std::size_t row, const std::shared_ptr<DisplayObject>&) {
            const auto card = DisplayFactory::createRect();
            card->set(0, 0, 100, 40);
            card->setFillColor(row % 2 == 0 ? 0xFFFFFFFF : 0xFFFF00FF);
            return card;
        });
        list->setRowHeight(40);
        list->setRowCount(100);
        Display::instance()->add(field);
        Display::instance()->add(list);
    }
    void operator()(const std::shared_ptr<DisplayObject>&,
                    const graphics::InputText::CommitEvent&) override {
        std::cout << "entered '" << field->getContent() << "' at " << list->getContentOffset().y
                  << std::endl;
    }
};

// Runs forever, and uses the main thread each time: a host that ends must not wait for itself.
void knock() {
    orvane::thread::dispatch_main([] {});
    orvane::Runtime::GetInstance()->run(knock, 1);
}

}  // namespace

// Two squares of 100 points: a red one that can be dragged, and a blue one, which turns green after
// PROBE_DELAY milliseconds and moves 100 points in PROBE_MOVE seconds, if these are set; with
// PROBE_FORM, also a form.
struct Probe {
    std::shared_ptr<Drag> drag = std::make_shared<Drag>();
    std::shared_ptr<SizePrinter> printer = std::make_shared<SizePrinter>();
    std::shared_ptr<Form> form;

    void main() {
        const auto display = Display::instance();
        display->addListener<FrameChangedEvent>(printer);
        const auto red = DisplayFactory::createRect();
        red->set(10, 10, 100, 100);
        red->setFillColor(0xFFFF0000);
        red->addListener<events::TouchEvent>(drag);
        display->add(red);
        const auto blue = DisplayFactory::createRect();
        blue->set(300, 10, 100, 100);
        blue->setFillColor(0xFF0000FF);
        display->add(blue);
        if (const char* const delay = std::getenv("PROBE_DELAY")) {
            orvane::Runtime::GetInstance()->run(
                [blue] {
                    orvane::thread::dispatch_main([blue] { blue->setFillColor(0xFF00FF00); });
                },
                static_cast<unsigned>(std::atoi(delay)));
        }
        if (const char* const seconds = std::getenv("PROBE_MOVE")) {
            const auto move = std::make_shared<animation::ValueAnimation>(
                "move", animation::AttributeName::TranslationX, std::vector<float>{0, 100});
            move->setAnimatable(blue->extractAnimationLayer());
            move->setDuration(std::strtof(seconds, nullptr));
            move->run();
        }
        if (std::getenv("PROBE_FORM") != nullptr) {
            form = std::make_shared<Form>();
            form->field->addListener<graphics::InputText::CommitEvent>(form);
            form->show();
        }
        knock();
        const auto size = display->getScreenSize();
        std::cout << "started " << size.width << 'x' << size.height << " with "
                  << orvane::system::getResourceDirectory() << std::endl;
    }
};

ORVANE_MAIN_CLASS(Probe)
