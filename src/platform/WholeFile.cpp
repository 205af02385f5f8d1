#include "platform/WholeFile.h"

#include <unistd.h>

#include <QFile>
#include <QFileInfo>
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
  QFile device(path);
  QSaveFile file(path);
  const QFileInfo target(path);
  const bool isDevice = target.exists() && !target.isFile();
  // QSaveFile flushes too, but overlooks what fails in it.
  const bool isWritten = isDevice ? device.open(QIODevice::WriteOnly) &&
                                        device.write(bytes) == bytes.size() && device.flush()
                                  : file.open(QIODevice::WriteOnly) &&
                                        file.write(bytes) == bytes.size() && file.flush() &&
                                        ::fdatasync(file.handle()) == 0 && file.commit();
  if (isWritten) return true;
  *error = QStringLiteral("cannot write %1: %2")
               .arg(path, isDevice ? device.errorString() : file.errorString());
  return false;
}

}  // namespace kelvar
