#include "util/MF_Base64Codec.h"

#include <QStringConverter>
#include <exception>

#include "platform/Log.h"

namespace kelvar {
namespace {

// Users search their logs for these texts, including the "32".
constexpr QStringView kDecodingFailed = u"WARNING: error occured while decoding base 32 string: %@";
constexpr QStringView kEncodingFailed =
    u"WARNING: error occured while tring to encode base 32 data: %@";

template <class Work>
auto loggingFailure(QStringView format, const Work& work) -> decltype(work()) {
  try {
    return work();
  } catch (const std::exception& error) {
    logLine(format, {QString::fromUtf8(error.what())});
    return {};
  }
}

bool isAscii(const QString& string) {
  char16_t all = 0;
  for (const QChar character : string) all |= character.unicode();
  return all < 0x80;
}

}  // namespace

QString MF_Base64Codec::base64StringFromData(const QByteArray& data) {
  if (data.isEmpty()) return QLatin1String("");
  return loggingFailure(kEncodingFailed, [&] { return QString::fromLatin1(data.toBase64()); });
}

QByteArray MF_Base64Codec::dataFromBase64String(const QString& string) {
  return loggingFailure(kDecodingFailed, [&]() -> QByteArray {
    if (!isAscii(string)) return QByteArray("");
    const QByteArray data = QByteArray::fromBase64(string.toLatin1());
    return data.isNull() ? QByteArray("") : data;
  });
}

QString MF_Base64Codec::base64UrlEncodedStringFromBase64String(QString string) {
  return string.remove(u'=').replace(u'+', u'-').replace(u'/', u'_');
}

QString MF_Base64Codec::base64StringFromBase64UrlEncodedString(QString string) {
  string.replace(u'-', u'+').replace(u'_', u'/');
  const qsizetype over = string.size() % 4;
  return over < 2 ? string : string.append(QString(4 - over, u'='));
}

QString base64String(const QString& string) { return base64String(string.toUtf8()); }

QString base64String(const QByteArray& data) { return MF_Base64Codec::base64StringFromData(data); }

QString base64UrlEncodedString(const QString& string) {
  return MF_Base64Codec::base64UrlEncodedStringFromBase64String(base64String(string));
}

QString base64UrlEncodedString(const QByteArray& data) {
  return MF_Base64Codec::base64UrlEncodedStringFromBase64String(base64String(data));
}

QString stringFromBase64String(const QString& string) {
  const QByteArray bytes = MF_Base64Codec::dataFromBase64String(string);
  if (bytes.isNull()) return {};
  using Flag = QStringConverter::Flag;
  QStringDecoder decode(QStringConverter::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
  const QString decoded = decode(bytes);
  if (decode.hasError()) return {};
  return decoded.isNull() ? QLatin1String("") : decoded;
}

QString stringFromBase64UrlEncodedString(const QString& string) {
  return stringFromBase64String(MF_Base64Codec::base64StringFromBase64UrlEncodedString(string));
}

QByteArray dataWithBase64String(const QString& string) {
  return MF_Base64Codec::dataFromBase64String(string);
}

QByteArray dataWithBase64UrlEncodedString(const QString& string) {
  return dataWithBase64String(MF_Base64Codec::base64StringFromBase64UrlEncodedString(string));
}

}  // namespace kelvar
