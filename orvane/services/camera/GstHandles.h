#pragma once

#include <gst/gst.h>

#include <memory>

namespace orvane::services {

// Releases a reference to a GstObject.
struct GstObjectUnref {
    void operator()(gpointer object) const { gst_object_unref(object); }
};
template <typename Object>
using GstRef = std::unique_ptr<Object, GstObjectUnref>;

struct GstCapsUnref {
    void operator()(GstCaps* caps) const { gst_caps_unref(caps); }
};
using GstCapsRef = std::unique_ptr<GstCaps, GstCapsUnref>;

struct GstSampleUnref {
    void operator()(GstSample* sample) const { gst_sample_unref(sample); }
};
using GstSampleRef = std::unique_ptr<GstSample, GstSampleUnref>;

struct GstMessageUnref {
    void operator()(GstMessage* message) const { gst_message_unref(message); }
};
using GstMessageRef = std::unique_ptr<GstMessage, GstMessageUnref>;

}  // namespace orvane::services
