#pragma once

// Marks what liborvane.so shows to the world. Everything else is hidden, so that the library's
// inner names cannot clash with an application's.
#define ORVANE_EXPORT __attribute__((visibility("default")))
