#pragma once

#include <QByteArray>
#include <QVariant>

namespace kelvar::render {

/// The root object of a keyed archive (a binary property list with "$objects" and references by
/// number into them), as documents before Sketch 50 keep their texts.
///
/// Dictionaries become maps, arrays lists, strings and bytes themselves; any other object is a map
/// of its members. Invalid for what is no such archive, and where an object contains itself or the
/// whole is too large. Source: the archives themselves.
QVariant readKeyedArchive(const QByteArray& archive);

}  // namespace kelvar::render
