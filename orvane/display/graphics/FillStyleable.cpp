#include "orvane/display/graphics/FillStyleable.h"

#include "orvane/commons/reportMisuse.h"

namespace orvane::display::graphics {

namespace {

void refuse() {
    commons::reportMisuse("FillStyleable::setFillGradient",
                          "the object keeps its fill: it can have no gradient");
}

}  // namespace

void FillStyleable::setFillGradient(const RadialGradient&) {
    refuse();
}

void FillStyleable::setFillGradient(const ConicGradient&) {
    refuse();
}

}  // namespace orvane::display::graphics
