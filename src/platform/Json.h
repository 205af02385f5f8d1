#pragma once

#include <QByteArray>
#include <QVariant>

#include "platform/Export.h"

namespace kelvar {

/// Reads and writes JSON without losing what kind of number stands there.
///
/// A number with a point or an exponent is a `double`, any other a `qlonglong`, a `qulonglong`
/// beyond that, and a `double` again where 64 bits do not hold it. Strings, `bool`, `QVariantList`
/// (or `QStringList`), `QVariantMap`, and `nullptr` for null. Of two members with one name the last
/// counts.
///
/// Input is not trusted: see the limits. Safe from any thread.
class KELVAR_EXPORT Json {
 public:
  enum class Layout { Compact, Indented };

  /// Lists and maps in one another, at most.
  static constexpr int kMaxDepth = 512;
  static constexpr qsizetype kMaxBytes = qsizetype{64} << 20;
  static constexpr qsizetype kMaxValues = qsizetype{1} << 21;

  Json() = delete;

  /// Whether `value` is a map or a list that can be written.
  static bool isValidObject(const QVariant& value);

  /// UTF-8. Empty, and `*error` says why, when there is something in `value` that JSON does not
  /// know, numbers that are not finite included.
  static QByteArray write(const QVariant& value, Layout layout, QString* error);

  /// Invalid, and `*error` says why, when it cannot be read.
  static QVariant read(const QByteArray& bytes, QString* error);
};

}  // namespace kelvar
