#include "util/MD5String.h"

#include <QCryptographicHash>

namespace kelvar {

QString MD5String(QStringView string) {
  const qsizetype end = string.indexOf(u'\0');
  const QByteArray bytes = string.first(end < 0 ? string.size() : end).toUtf8();
  const QByteArray digest = QCryptographicHash::hash(bytes, QCryptographicHash::Md5);
  return QString::fromLatin1(digest.toHex().toUpper());
}

}  // namespace kelvar
