#pragma once

#include <QStringList>

namespace kelvar {

/// `format` with the next of `arguments` for each "%@": "(null)" for a null one, and when they run
/// out.
QString formatted(QStringView format, const QStringList& arguments);

}  // namespace kelvar
