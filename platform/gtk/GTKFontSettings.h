#pragma once

namespace orvane::platform {

// Makes texts that are created afterwards use the hint style and the antialiasing of the desktop's
// settings. Without such settings, those of fontconfig apply. GTK must be initialized.
void applyFontSettings();

}  // namespace orvane::platform
