// Does not compile: nobody says under which name to export the class.

#include "orvane/runtime/Main.h"

class Application {
public:
    void main() {}
};

ORVANE_MAIN_CLASS(Application)
