#pragma once

#include <QVariant>

#include "platform/Export.h"

namespace kelvar {

/// The tree of an archive, whatever its classes, as the other kind of format has it. A tree that
/// is of the wanted kind already comes back as it is. Depth is the caller's to bound: what
/// `PropertyList` and `Json` have read is.

/// Dates and bytes, which JSON does not have, become dictionaries; null becomes itself.
KELVAR_EXPORT QVariant jsonArchiveTree(const QVariant& tree);

/// The other way round.
KELVAR_EXPORT QVariant propertyListArchiveTree(const QVariant& tree);

/// What stands at a key path in a tree, "$root" being the tree itself. Invalid when there is
/// nothing. Keys may have dots.
KELVAR_EXPORT QVariant archiveTreeAt(const QVariant& tree, const QString& keyPath);

}  // namespace kelvar
