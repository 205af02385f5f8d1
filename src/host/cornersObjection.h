#pragma once

#include <QPointF>
#include <QString>
#include <array>

#include "platform/Export.h"

namespace kelvar {

/// Why no picture can be mapped onto these corners, as a clause for the person who drew them, or a
/// null string when it can. `where` stands behind what is named, as in "the corners in --points";
/// it may be empty.
KELVAR_EXPORT QString cornersObjection(const std::array<QPointF, 4>& corners, const QString& where);

}  // namespace kelvar
