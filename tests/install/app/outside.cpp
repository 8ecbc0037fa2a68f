#include <orvane/orvane.h>

using namespace orvane::display;

// An application as somebody else writes it: against the installed copy, from its own folder.
struct Outside {
    void main() {
        const auto rect = DisplayFactory::createRect();
        rect->set(0, 0, 64, 48);
        rect->setFillColor(0xFF19A7A0);
        Display::instance()->add(rect);
    }
};

ORVANE_MAIN_CLASS(Outside)
