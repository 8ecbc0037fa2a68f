#pragma once

namespace orvane::platform {

class CGContext;
struct CGRect;
struct NSWebState;

// Paints the likeness of a page, where the desktop cannot show it: a sheet with a globe, the title
// and the address.
void drawWebPage(CGContext& canvas, const CGRect& bounds, const NSWebState& state);

}  // namespace orvane::platform
