#include "orvane/services/camera/ElementChain.h"

#include <string>

#include "orvane/services/camera/GstHandles.h"
#include "orvane/services/camera/failureFrom.h"

namespace orvane::services {

using Reason = ServiceFailure::Reason;

GstElement* ElementChain::add(const char* factory) {
    if (failure_) {
        return nullptr;
    }
    GstElement* const element = gst_element_factory_make(factory, nullptr);
    if (element == nullptr) {
        failure_ = {Reason::Unavailable, "GStreamer has no element '" + std::string(factory) +
                                             "'; a package of plugins is missing"};
        return nullptr;
    }
    return add(element);
}

GstElement* ElementChain::add(GstElement* element) {
    if (element == nullptr && !failure_) {
        failure_ = {Reason::Failed, "GStreamer cannot use the device"};
    }
    if (failure_) {
        if (element != nullptr) {
            gst_object_unref(gst_object_ref_sink(element));
        }
        return nullptr;
    }
    gst_bin_add(GST_BIN(pipeline_), element);
    if (last_ != nullptr) {
        linkTo(element);
    }
    last_ = element;
    return element;
}

void ElementChain::linkTo(GstElement* element) {
    if (!failure_ && gst_element_link(last_, element) == FALSE) {
        failure_ = {Reason::Failed, "GStreamer cannot connect " +
                                        std::string(GST_OBJECT_NAME(last_)) + " with " +
                                        GST_OBJECT_NAME(element)};
    }
}

std::optional<ServiceFailure> play(GstElement* pipeline) {
    if (gst_element_set_state(pipeline, GST_STATE_PLAYING) != GST_STATE_CHANGE_FAILURE) {
        return {};
    }
    const GstRef<GstBus> bus(gst_element_get_bus(pipeline));
    const GstMessageRef message(gst_bus_pop_filtered(bus.get(), GST_MESSAGE_ERROR));
    return message ? failureFrom(message.get())
                   : ServiceFailure{Reason::Failed, "GStreamer cannot start"};
}

}  // namespace orvane::services
