#pragma once

#include "orvane/commons/Export.h"

// Sets up the log: the logger "default", to standard output and never to a file. The first of the
// three calls that start the runtime; a host goes on with orvane::Runtime::GetInstance() and
// initSwift(). Calling it again changes nothing.
extern "C" ORVANE_EXPORT void init_orvane();
