#pragma once

#include <QByteArray>
#include <QString>

#include "platform/Export.h"

namespace kelvar {

/// Base64 (RFC 4648) in its standard and its URL-safe form. A null result says that there was too
/// little memory, and a line about it was logged; an empty one is not null.
class KELVAR_EXPORT MF_Base64Codec {
 public:
  /// The standard form, padded, without line breaks.
  static QString base64StringFromData(const QByteArray& data);

  /// Lenient: skips what is not of the standard alphabet, blanks, line breaks, "-" and "_"
  /// included, needs no padding, and drops a last character that makes no whole byte. A string
  /// with a character outside ASCII decodes to no bytes at all.
  static QByteArray dataFromBase64String(const QString& string);

  /// Drops the padding and writes "-" and "_" for "+" and "/".
  static QString base64UrlEncodedStringFromBase64String(QString string);

  /// The way back. The padding follows from the length, whatever the characters are.
  static QString base64StringFromBase64UrlEncodedString(QString string);
};

KELVAR_EXPORT QString base64String(const QString& string);
KELVAR_EXPORT QString base64String(const QByteArray& data);
KELVAR_EXPORT QString base64UrlEncodedString(const QString& string);
KELVAR_EXPORT QString base64UrlEncodedString(const QByteArray& data);

/// Null when the bytes are not UTF-8.
KELVAR_EXPORT QString stringFromBase64String(const QString& string);
KELVAR_EXPORT QString stringFromBase64UrlEncodedString(const QString& string);

KELVAR_EXPORT QByteArray dataWithBase64String(const QString& string);
KELVAR_EXPORT QByteArray dataWithBase64UrlEncodedString(const QString& string);

}  // namespace kelvar
