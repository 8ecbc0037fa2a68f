#pragma once

// Marks a class or function that liborvane.so exports. All other symbols are hidden, so that they
// cannot clash with symbols of an application.
#define ORVANE_EXPORT __attribute__((visibility("default")))
