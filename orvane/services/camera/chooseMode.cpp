#include "orvane/services/camera/chooseMode.h"

#include <cmath>
#include <cstdlib>
#include <tuple>

#include "orvane/services/CameraRequest.h"

namespace orvane::services {

namespace {

struct StructureFree {
    void operator()(GstStructure* structure) const { gst_structure_free(structure); }
};
using Structure = std::unique_ptr<GstStructure, StructureFree>;

// How far a mode is from a request; the smaller is the better one.
using Distance = std::tuple<long, double, bool>;

Distance distanceOf(const GstStructure* mode, const CameraRequest& request) {
    int width = 0;
    int height = 0;
    int numerator = 0;
    int denominator = 1;
    gst_structure_get_int(mode, "width", &width);
    gst_structure_get_int(mode, "height", &height);
    gst_structure_get_fraction(mode, "framerate", &numerator, &denominator);
    const double rate = double{1} * numerator / denominator;
    return {std::labs(long{width} - request.width) + std::labs(long{height} - request.height),
            std::abs(rate - request.rate), gst_structure_has_name(mode, "image/jpeg") != FALSE};
}

}  // namespace

GstCapsRef chooseMode(const GstCaps* modes, const CameraRequest& request) {
    Structure best;
    for (guint i = 0; i < gst_caps_get_size(modes); ++i) {
        const GstCapsFeatures* const features = gst_caps_get_features(modes, i);
        const GstStructure* const offered = gst_caps_get_structure(modes, i);
        const bool isRaw = gst_structure_has_name(offered, "video/x-raw") != FALSE;
        if ((!isRaw && gst_structure_has_name(offered, "image/jpeg") == FALSE) ||
            gst_caps_features_is_equal(features, GST_CAPS_FEATURES_MEMORY_SYSTEM_MEMORY) == FALSE) {
            continue;
        }
        Structure mode(gst_structure_copy(offered));
        gst_structure_fixate_field_nearest_int(mode.get(), "width", request.width);
        gst_structure_fixate_field_nearest_int(mode.get(), "height", request.height);
        int numerator = 0;
        int denominator = 1;
        gst_util_double_to_fraction(request.rate, &numerator, &denominator);
        gst_structure_fixate_field_nearest_fraction(mode.get(), "framerate", numerator,
                                                    denominator);
        if (!best || distanceOf(mode.get(), request) < distanceOf(best.get(), request)) {
            best = std::move(mode);
        }
    }
    if (!best) {
        return nullptr;
    }
    GstCaps* const caps = gst_caps_new_empty();
    gst_caps_append_structure(caps, best.release());
    return GstCapsRef(caps);
}

}  // namespace orvane::services
