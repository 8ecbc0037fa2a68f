#pragma once

// Plain C, so that an application can be written in any language.

// How an application library exports its class Main: as a data symbol of this type. The symbol is
// named after the class, _TtC<length><module>4Main, where the library is lib<module>.dylib and
// <length> is the number of characters of <module>.
typedef struct OrvaneMainClass {
    // OrvaneMainClassVersion. A record with another version is ignored.
    unsigned int version;
    // Creates an object of the class, which is never released.
    void* (*make)(void);
    // Calls the object's `main` function, on the thread that starts the application.
    void (*sendMain)(void* object);
} OrvaneMainClass;

// The version of OrvaneMainClass that this header declares.
enum { OrvaneMainClassVersion = 1 };
