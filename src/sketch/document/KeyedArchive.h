#pragma once

#include <QByteArray>
#include <QVariant>

namespace kelvar::render {

/// The root object of a keyed archive (a binary property list with "$objects" and references by
/// number into them), in which documents before Sketch 50 store their text.
///
/// Dictionaries become maps, arrays become lists, and strings and bytes stay as they are; any other
/// object becomes a map of its members. Invalid if the input is not such an archive, contains a
/// cycle or is too large. The format was inferred from existing archives.
QVariant readKeyedArchive(const QByteArray& archive);

}  // namespace kelvar::render
