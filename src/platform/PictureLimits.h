#pragma once

#include <QString>

namespace kelvar {

/// None, or why a picture of that size is beyond ImageFile's limits or has no pixels.
QString sizeObjection(qint64 width, qint64 height);

}  // namespace kelvar
