#pragma once

#include <gst/gst.h>

#include "orvane/services/ServiceFailure.h"

namespace orvane::services {

// Returns what an error message of a pipeline means for the application.
ServiceFailure failureFrom(GstMessage* message);

}  // namespace orvane::services
