#pragma once

#include <gst/gst.h>

#include <optional>

#include "orvane/services/ServiceFailure.h"

namespace orvane::services {

// Builds a pipeline: adds elements to it and links each to the one before. After a failure it does
// nothing more, and reports the first one.
class ElementChain {
public:
    // The pipeline is borrowed.
    explicit ElementChain(GstElement* pipeline) : pipeline_(pipeline) {}

    // Add an element, which the pipeline owns. Null after a failure:
    GstElement* add(const char* factory);
    // Takes a new element; null is a failure.
    GstElement* add(GstElement* element);
    // Links the last element to one that the pipeline has already.
    void linkTo(GstElement* element);

    const std::optional<ServiceFailure>& failure() const { return failure_; }

private:
    GstElement* pipeline_;
    GstElement* last_ = nullptr;
    std::optional<ServiceFailure> failure_ = {};
};

// Starts a pipeline. Returns what is known at once about why it does not start; the pipeline's bus
// reports what follows.
std::optional<ServiceFailure> play(GstElement* pipeline);

}  // namespace orvane::services
