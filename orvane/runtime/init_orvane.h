#pragma once

#include "orvane/commons/Export.h"

// Configures the logger "default": standard output, never a file. A host calls this function first,
// then orvane::Runtime::GetInstance() and initSwift(); embedding::Session makes all three calls.
// A second call has no further effect.
extern "C" ORVANE_EXPORT void init_orvane();
