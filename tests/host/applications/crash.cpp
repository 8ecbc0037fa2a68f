#include <orvane/orvane.h>

#include <cstdlib>
#include <iostream>

struct Crash {
    void main() {
        std::cout << "crashing" << std::endl;
        std::cerr << "on purpose" << std::endl;
        std::abort();
    }
};

ORVANE_MAIN_CLASS(Crash)
