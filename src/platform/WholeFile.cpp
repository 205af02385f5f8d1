#include "platform/WholeFile.h"

#include <unistd.h>

#include <QFile>
#include <QSaveFile>

namespace kelvar {

bool WholeFile::read(const QString& path, qsizetype most, QByteArray* bytes, QString* error) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    *error = QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
    return false;
  }
  *bytes = file.read(most + 1);
  if (file.error() != QFileDevice::NoError) {
    *error = QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
    return false;
  }
  if (bytes->size() <= most) return true;
  *error = QStringLiteral("cannot read %1: it is larger than %2 MiB").arg(path).arg(most >> 20);
  return false;
}

bool WholeFile::write(const QString& path, const QByteArray& bytes, QString* error) {
  QSaveFile file(path);
  // QSaveFile flushes too, but overlooks what fails in it.
  const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
                         file.flush() && ::fdatasync(file.handle()) == 0 && file.commit();
  if (!isWritten) *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
  return isWritten;
}

}  // namespace kelvar
