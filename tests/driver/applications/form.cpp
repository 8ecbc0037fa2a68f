#include <orvane/orvane.h>

#include <memory>
#include <string>

using namespace orvane::display;
using events::TouchEventListenerState;

namespace {

// Counts presses, and how far they are dragged; the third press begins an animation of a second.
struct Touch : events::TouchEventListener {
    TouchEventListenerState operator()(const std::shared_ptr<DisplayObject>& object,
                                       const events::TouchEvent& event) override {
        if (event.phase == events::TouchEventPhase::Moved) {
            object->translate(static_cast<float>(event.delta.x), static_cast<float>(event.delta.y));
        }
        if (event.phase != events::TouchEventPhase::Ended) {
            return TouchEventListenerState::Changed;
        }
        ++presses;
        count->setContent(std::to_string(presses) + " presses");
        if (presses == 3) {
            move = std::make_shared<animation::ValueAnimation>(
                "move", animation::AttributeName::TranslationX, std::vector<float>{0, 60});
            move->setAnimatable(object->extractAnimationLayer());
            move->setDuration(1);
            move->setCompletionCallback([this] { count->setContent("moved"); });
            move->run();
        }
        return TouchEventListenerState::Ended;
    }

    int presses = 0;
    std::shared_ptr<graphics::Text> count;
    std::shared_ptr<animation::ValueAnimation> move;
};

std::shared_ptr<graphics::Rect> createSquare(float x, unsigned color) {
    const auto square = DisplayFactory::createRect();
    square->set(x, 10, 40, 40);
    square->setFillColor(color);
    return square;
}

}  // namespace

// A square that is pressed and dragged, two more of the same kind, a hidden text, a field, and a
// text that a timed task changes.
struct Form {
    std::shared_ptr<Touch> touch = std::make_shared<Touch>();

    void main() {
        const auto page = DisplayFactory::createContainer();
        const auto handle = createSquare(10, 0xFFF2545B);
        handle->addListener<events::TouchEvent>(touch);
        handle->getOrCreateAccessibilityElement()->setLabel("Handle");
        page->add(handle);
        page->add(createSquare(110, 0xFF2F6F8F));
        const auto group = DisplayFactory::createContainer();
        group->add(createSquare(160, 0xFFFFC857));
        page->add(group);
        // Lines without a stroke paint nothing.
        const auto other = DisplayFactory::createContainer();
        for (const float x : {20.0F, 30.0F}) {
            const auto line = DisplayFactory::createLine();
            line->set(x, 5, x + 10, 6);
            (x == 20 ? group : other)->add(line);
        }
        page->add(other);

        touch->count = DisplayFactory::createText(false);
        touch->count->setContent("no press");
        page->add(touch->count);
        const auto hidden = DisplayFactory::createText(false);
        hidden->setContent("no press");
        hidden->setVisible(false);
        page->add(hidden);
        Display::instance()->add(page);

        const auto field = DisplayFactory::createInputText(false, false, 0);
        field->setBounds({10, 70, 180, 30});
        field->setContent("typed");
        Display::instance()->add(field);

        orvane::Runtime::GetInstance()->run(
            [hidden] {
                orvane::thread::dispatch_main([hidden] {
                    hidden->setContent("task");
                    hidden->setVisible(true);
                });
            },
            30);
    }
};

ORVANE_MAIN_CLASS(Form)
