#pragma once

#include <QHash>
#include <QVariant>

#include "platform/Export.h"

namespace kelvar {

/// Conversion of an archive's tree between JSON and property lists, including objects of unknown
/// classes. A tree already of the requested kind is returned unchanged. The caller limits the
/// depth, as `PropertyList` and `Json` do when they read.

/// Dates and bytes, which JSON does not support, become dictionaries; the dictionary that
/// represents null becomes null.
KELVAR_EXPORT QVariant jsonArchiveTree(const QVariant& tree);

/// The inverse.
KELVAR_EXPORT QVariant propertyListArchiveTree(const QVariant& tree);

/// The targets of all aliases of a tree, by key path; "$root" is the tree itself. Targets that are
/// not in the tree are missing from the result. Keys may contain dots: if a path matches several
/// values, the one with the shorter keys is taken. Traverses the tree once, however many aliases
/// there are.
KELVAR_EXPORT QHash<QString, QVariant> archiveAliasTargets(const QVariant& tree);

/// Whether a value of a tree is an alias and nothing else.
KELVAR_EXPORT bool isArchiveAlias(const QVariant& value);

}  // namespace kelvar
