#pragma once

/* Plain C, so that an application can be written in any language. */

/* How an application library shows its class Main: a data symbol of this type under the class's
   runtime name, _TtC<length of module><module>4Main, where the library is lib<module>.dylib and the
   length is in characters. */
typedef struct OrvaneMainClass {
    /* OrvaneMainClassVersion. A record of another version counts as no class at all. */
    unsigned int version;
    /* Makes an object. It is never released. */
    void* (*make)(void);
    /* Sends an object `main`, on the thread of the program that started the application. */
    void (*sendMain)(void* object);
} OrvaneMainClass;

enum { OrvaneMainClassVersion = 1 };
