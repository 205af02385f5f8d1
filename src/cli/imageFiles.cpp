#include "cli/imageFiles.h"

#include "cli/CommandError.h"
#include "cli/timeLimit.h"
#include "platform/Log.h"
#include "platform/files/FileName.h"
#include "platform/image/ImageFile.h"

namespace kelvar::cli {

ImageRef readImage(const std::string& path, const QSizeF& rasterizationSize) {
  ImageFile::ReadOptions options;
  if (!rasterizationSize.isEmpty()) {
    options.rasterizationSize = [=](const QSizeF&) { return rasterizationSize; };
  }
  ImageRef image = orThrow(ImageFile::read(fileNameFromBytes(path), options));
  logLine(u"Read an image of %@ by %@ pixels",
          {QString::number(image->pixelWidth()), QString::number(image->pixelHeight())});
  return image;
}

void checkImageOutput(const std::string& output, const char* otherExtensions) {
  const QString name = fileNameFromBytes(output);
  if (!ImageFile::hasSupportedExtension(name)) {
    misuse(QStringLiteral("-o takes a file that ends in %1png, jpg, jpeg or webp, or -, not \"%2\"")
               .arg(QLatin1String(otherExtensions), name));
  }
  orThrow(ImageFile::checkWritable(name));
}

void writeImage(const Image& image, const std::string& output) {
  const QString name = fileNameFromBytes(output);
  liftTimeLimitForStream(output);
  orThrow(ImageFile::write(image, name));
  liftTimeLimit();
  logLine(u"Wrote %@", {name});
}

void checkJsonOutput(bool json, const std::string& output) {
  if (json && output == "-") {
    misuse(QStringLiteral("--json and -o - cannot both write to standard output"));
  }
}

}  // namespace kelvar::cli
