#pragma once

#include <QImage>

namespace kelvar::examples {

/// The screen of a hiking app, 1170 by 2532 pixels. Its corners are rounded like the phone's,
/// with transparency outside. Requires a QGuiApplication and the typeface Inter.
QImage drawDesign();

}  // namespace kelvar::examples
