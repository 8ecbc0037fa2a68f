#include "orvane/system/ScreenTypeView.h"

namespace orvane::system {

// Not inline: the type information that dynamic_cast compares must exist once, in this library.
ScreenTypeView::~ScreenTypeView() = default;

}  // namespace orvane::system
