// The layout is drawn in Tahoma. Where the system has no face of that name
// registered, the compatible one of Debian's fonts-wine package is loaded for
// the application, once.
#pragma once

namespace tessaly {

void LoadLayoutFonts();

} // namespace tessaly
