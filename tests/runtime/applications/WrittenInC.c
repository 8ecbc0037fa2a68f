/* An application written in C, which exports three records. The last two are not valid. */

#include <stdio.h>

#include "orvane/commons/MainClass.h"

static int object;

static void* make(void) {
    return &object;
}

static void sendMain(void* receiver) {
    fputs(receiver == &object ? "main in C\n" : "main of another object\n", stderr);
}

#define EXPORT __attribute__((visibility("default")))
EXPORT const OrvaneMainClass _TtC10WrittenInC4Main = {OrvaneMainClassVersion, make, sendMain};
EXPORT const OrvaneMainClass _TtC5Newer4Main = {OrvaneMainClassVersion + 1, make, sendMain};
EXPORT const OrvaneMainClass _TtC6Hollow4Main = {OrvaneMainClassVersion, make, NULL};
