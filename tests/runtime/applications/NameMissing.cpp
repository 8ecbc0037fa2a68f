// Does not compile: ORVANE_MAIN_SYMBOL, the name of the exported symbol, is not defined.

#include "orvane/runtime/Main.h"

class Application {
public:
    void main() {}
};

ORVANE_MAIN_CLASS(Application)
