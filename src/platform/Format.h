#pragma once

#include <QStringList>

namespace kelvar {

/// Replaces each "%@" in `format` with the next of `arguments`; with "(null)" if that is null or
/// there are no more.
QString formatted(QStringView format, const QStringList& arguments);

}  // namespace kelvar
