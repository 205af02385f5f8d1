#pragma once

#include <QByteArray>
#include <QVariant>

#include "pixels/Result.h"
#include "platform/Export.h"

namespace kelvar {

/// Reads and writes JSON, keeping integers and reals distinct.
///
/// A number with a decimal point or an exponent is a `double`. Any other number is a `qlonglong` if
/// it fits, or else a `qulonglong`, or else a `double`. The other values are `QString`, `bool`,
/// `QVariantList` (a `QStringList` can be written too), `QVariantMap`, and `nullptr` for null. If
/// two members have the same name, the last one counts.
///
/// Input is not trusted: see the limits. Safe from any thread.
class KELVAR_EXPORT Json {
 public:
  enum class Layout { Compact, Indented };

  /// Maximum depth of nested lists and maps.
  static constexpr int kMaxDepth = 512;
  static constexpr qsizetype kMaxBytes = qsizetype{64} << 20;
  static constexpr qsizetype kMaxValues = qsizetype{1} << 21;

  Json() = delete;

  /// Whether `value` is a map or a list that can be written.
  static bool isValidObject(const QVariant& value);

  /// Returns UTF-8. Fails if `value` contains something that JSON cannot represent, such as a
  /// number that is not finite.
  static Result<QByteArray> write(const QVariant& value, Layout layout = Layout::Compact);

  static Result<QVariant> read(const QByteArray& bytes);

  /// Also fails if the value is neither an object nor a list.
  static Result<QVariant> readContainer(const QByteArray& bytes);
};

}  // namespace kelvar
