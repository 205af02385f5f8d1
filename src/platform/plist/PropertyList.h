#pragma once

#include <QByteArray>
#include <QVariant>

#include "pixels/Result.h"
#include "platform/Export.h"

namespace kelvar {

/// Reads and writes property lists.
///
/// A property-list value is a string, a number, a boolean, a date, bytes, a list of such values or
/// a map from strings to them. In a `QVariant`, these are `QString`, the integer and real types,
/// `bool`, `QDateTime`, `QByteArray`, `QVariantList` (a `QStringList` is accepted, too) and
/// `QVariantMap`. A null `QString`, an invalid date and JSON's null are not property-list values.
///
/// Reading restores the type of each value: true is not 1, and 1 is not 1.0. Integers are read as
/// `qlonglong`, or as `qulonglong` if they are too large for that; reals as `double`, or as `float`
/// if the binary format says so; dates in UTC. Dates have a precision of milliseconds, or in XML of
/// whole seconds.
///
/// The numbered references of keyed archives are read from the binary format as maps with the one
/// key "CF$UID", which is how the XML format writes them.
///
/// Input is not trusted: see the limits. Safe from any thread.
class KELVAR_EXPORT PropertyList {
 public:
  enum class Format {
    Xml,
    Binary,
    OpenStep,  ///< Read only. It has strings, bytes, lists and maps.
  };

  /// Maximum depth of nested lists and maps.
  static constexpr int kMaxDepth = 512;
  /// Maximum size of a document. If the binary format refers to one object from several places,
  /// each reference counts toward both limits.
  static constexpr qsizetype kMaxBytes = qsizetype{64} << 20;
  static constexpr qsizetype kMaxValues = qsizetype{1} << 21;

  PropertyList() = delete;

  /// Whether `value` and everything in it are property-list values, nested no deeper than
  /// `kMaxDepth`.
  static bool isPropertyList(const QVariant& value);

  /// Fails if `value` is not a property list or the format cannot represent it: XML allows no
  /// control characters other than tab and line breaks, and only the years 1 to 9999.
  static Result<QByteArray> write(const QVariant& value, Format format);

  /// Detects the format. On success, stores it in `*found` unless `found` is null.
  static Result<QVariant> read(const QByteArray& bytes, Format* found = nullptr);
};

}  // namespace kelvar
