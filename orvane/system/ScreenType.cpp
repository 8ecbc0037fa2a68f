#include "orvane/system/ScreenType.h"

namespace orvane::system {

// Here, so that the type information by which the runtime knows a host's view stands once.
ScreenTypeView::~ScreenTypeView() = default;

}  // namespace orvane::system
