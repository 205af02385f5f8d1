#pragma once

#include <QByteArray>
#include <QVariant>

#include "platform/Export.h"

namespace kelvar {

/// Reads and writes property lists.
///
/// A property-list value is a string, a number, a boolean, a date, bytes, a list of such values or
/// a map from strings to them. In a `QVariant` they are `QString`, the integers and reals, `bool`,
/// `QDateTime`, `QByteArray`, `QVariantList` (a `QStringList` is taken too) and `QVariantMap`. A
/// null `QString`, an invalid date and JSON's null are none.
///
/// What is read has its kind again: true is not 1, and 1 is not 1.0. Integers come back as
/// `qlonglong`, those beyond it as `qulonglong`; reals as `double`, and as `float` where the
/// binary form says so; dates in UTC. Dates count in milliseconds, in whole seconds in XML.
///
/// The references by number that keyed archives consist of come back from the binary form as maps
/// with the one key "CF$UID", which is how the XML form writes them.
///
/// Input is not trusted: see the limits. Safe from any thread.
class KELVAR_EXPORT PropertyList {
 public:
  enum class Format {
    Xml,
    Binary,
    OpenStep,  ///< The old text form; read only. It knows strings, bytes, lists and maps.
  };

  /// Lists and maps in one another, at most.
  static constexpr int kMaxDepth = 512;
  /// What a document may have in bytes, and in values. Where the binary form refers to one object
  /// from many places, each mention counts in both.
  static constexpr qsizetype kMaxBytes = qsizetype{64} << 20;
  static constexpr qsizetype kMaxValues = qsizetype{1} << 21;

  PropertyList() = delete;

  /// Whether `value` and all that is in it are property-list values, and no deeper than allowed.
  static bool isPropertyList(const QVariant& value);

  /// Empty, and `*error` says why, for what is no property list or has no place in the format: XML
  /// has no control characters but tab and the line ends, and only the years 1 to 9999.
  static QByteArray write(const QVariant& value, Format format, QString* error);

  /// Invalid, and `*error` says why, when it cannot be read. `found` may be null.
  static QVariant read(const QByteArray& bytes, Format* found, QString* error);
};

}  // namespace kelvar
