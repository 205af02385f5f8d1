#pragma once

#include <QHash>
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

/// What the aliases of a tree name, by their key paths, "$root" being the tree itself; what is not
/// in the tree is missing. Keys may have dots: where a path fits several values, the one with the
/// shorter keys is taken. Takes one walk down the tree, however many aliases there are.
KELVAR_EXPORT QHash<QString, QVariant> archiveAliasTargets(const QVariant& tree);

/// Whether a value of a tree is an alias and nothing else.
KELVAR_EXPORT bool isArchiveAlias(const QVariant& value);

}  // namespace kelvar
