#include "platform/files/ZipArchive.h"

#include "platform/QtError.h"
#include "platform/SharedLibrary.h"

namespace kelvar {

Result<std::shared_ptr<ZipArchive>> ZipArchive::read(const QByteArray& bytes) {
  using Read = void (*)(const QByteArray&, Result<std::shared_ptr<ZipArchive>>*);
  static const auto kRead =
      reinterpret_cast<Read>(resolveSymbol(KELVAR_ZIP_LIBRARY, "kelvarReadZipArchive"));
  if (bytes.size() > kMaxArchiveBytes) {
    return failure(Error::Kind::TooLarge,
                   QStringLiteral("it is larger than %1 MiB").arg(kMaxArchiveBytes >> 20));
  }
  if (!kRead) {
    return failure(Error::Kind::Unsupported,
                   QStringLiteral("the library that reads ZIP archives is missing"));
  }
  Result<std::shared_ptr<ZipArchive>> archive;
  kRead(bytes, &archive);
  return archive;
}

}  // namespace kelvar
