#include "platform/ZipArchive.h"

#include "platform/LibraryBeside.h"

namespace kelvar {

std::shared_ptr<ZipArchive> ZipArchive::read(const QByteArray& bytes, QString* error) {
  using Read = ZipArchive* (*)(const QByteArray&, QString*);
  static const auto kRead =
      reinterpret_cast<Read>(functionBeside(KELVAR_ZIP_LIBRARY, "kelvarReadZipArchive"));
  if (bytes.size() > kMaxArchiveBytes) {
    *error = QStringLiteral("it is larger than %1 MiB").arg(kMaxArchiveBytes >> 20);
    return nullptr;
  }
  if (kRead) return std::shared_ptr<ZipArchive>(kRead(bytes, error));
  *error = QStringLiteral("the library that reads ZIP archives is missing");
  return nullptr;
}

}  // namespace kelvar
