#include <orvane/orvane.h>

using namespace orvane::display;

// Follows the pointer while the button is down.
struct Drag : events::TouchEventListener {
    events::TouchEventListenerState operator()(const std::shared_ptr<DisplayObject>& object,
                                               const events::TouchEvent& event) override {
        object->translate(float(event.delta.x), float(event.delta.y));
        return event.phase == events::TouchEventPhase::Ended
                   ? events::TouchEventListenerState::Ended
                   : events::TouchEventListenerState::Changed;
    }
};

struct Main {
    std::shared_ptr<Drag> drag = std::make_shared<Drag>();  // held here: objects hold it weakly

    void main() {
        const auto ball = DisplayFactory::createCircle();
        ball->set(100, 100, 80);  // the top left corner of its box, and the radius
        ball->setFillColor(0xFFF2545B);
        ball->addListener<events::TouchEvent>(drag);
        Display::instance()->add(ball);
    }
};

ORVANE_MAIN_CLASS(Main)
