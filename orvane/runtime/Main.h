#pragma once

#include "orvane/commons/Export.h"
#include "orvane/commons/MainClass.h"

namespace orvane::runtime {

// The record of an application's class; what ORVANE_MAIN_CLASS exports.
template <typename Main>
constexpr OrvaneMainClass mainClass() {
    return {OrvaneMainClassVersion, []() -> void* { return new Main; },
            [](void* object) { static_cast<Main*>(object)->main(); }};
}

}  // namespace orvane::runtime

// Makes `type` the application that this library is: the runtime makes one object of it and calls
// its main(), on the main thread. Write it once in a library, outside any namespace. The class is
// default-constructible and has `void main()`; the object is never destroyed. What main() throws is
// reported, and the program goes on.
//
// ORVANE_MAIN_SYMBOL is the name to export, which follows from the name of the library's file;
// orvane_add_application defines it.
#ifdef ORVANE_MAIN_SYMBOL
#define ORVANE_MAIN_CLASS(type)                                                              \
    extern "C" {                                                                             \
    extern ORVANE_EXPORT const OrvaneMainClass ORVANE_MAIN_SYMBOL;                           \
    constinit const OrvaneMainClass ORVANE_MAIN_SYMBOL = orvane::runtime::mainClass<type>(); \
    }
#else
#define ORVANE_MAIN_CLASS(type)                                                                   \
    static_assert(false,                                                                          \
                  "ORVANE_MAIN_CLASS needs ORVANE_MAIN_SYMBOL, the name under which the runtime " \
                  "looks for the class: build this library with orvane_add_application() of "     \
                  "orvane's CMake package");
#endif
