#pragma once

#include <QByteArray>
#include <QString>

#include "platform/Export.h"

namespace kelvar {

/// Base64 (RFC 4648), standard and URL-safe. A null result means that memory ran out, which is
/// logged; an empty result is not null.
class KELVAR_EXPORT MF_Base64Codec {
 public:
  /// Standard alphabet, padded, without line breaks.
  static QString base64StringFromData(const QByteArray& data);

  /// Lenient: skips characters outside the standard alphabet, including spaces, line breaks, "-"
  /// and "_"; requires no padding; drops trailing bits that do not make a whole byte. A string with
  /// a character outside ASCII decodes to zero bytes.
  static QByteArray dataFromBase64String(const QString& string);

  /// Removes the padding and replaces "+" and "/" with "-" and "_".
  static QString base64UrlEncodedStringFromBase64String(QString string);

  /// The inverse. The padding follows from the length alone.
  static QString base64StringFromBase64UrlEncodedString(QString string);
};

KELVAR_EXPORT QString base64String(const QString& string);
KELVAR_EXPORT QString base64String(const QByteArray& data);
KELVAR_EXPORT QString base64UrlEncodedString(const QString& string);
KELVAR_EXPORT QString base64UrlEncodedString(const QByteArray& data);

/// Null if the bytes are not UTF-8.
KELVAR_EXPORT QString stringFromBase64String(const QString& string);
KELVAR_EXPORT QString stringFromBase64UrlEncodedString(const QString& string);

KELVAR_EXPORT QByteArray dataWithBase64String(const QString& string);
KELVAR_EXPORT QByteArray dataWithBase64UrlEncodedString(const QString& string);

}  // namespace kelvar
