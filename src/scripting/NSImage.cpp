#include "scripting/NSImage.h"

#include <QUrl>
#include <cmath>

#include "pixels/ImageLimits.h"
#include "platform/Log.h"
#include "platform/Permissions.h"
#include "platform/QtError.h"
#include "platform/image/ImageFile.h"
#include "runtime/ClassInfo.h"
#include "runtime/raise.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSImage::staticClassInfo);

std::shared_ptr<NSImage> initWithContentsOfURL(const QUrl& url) {
  if (!url.isLocalFile()) raise(QStringLiteral("an image is read from the URL of a file alone"));
  return NSImage::initWithContentsOfFile(url.toLocalFile());
}

std::shared_ptr<NSImage> initWithData(const QByteArray& bytes) {
  const Result<ImageRef> image = ImageFile::fromBytes(bytes, {});
  if (image) return std::make_shared<NSImage>(QVariant::fromValue(*image));
  logLine(u"NSImage: %@", {messageOf(image.error())});
  return nullptr;
}

std::shared_ptr<NSImage> initWithSize(const QSizeF& size) {
  if (size.isEmpty())
    return std::make_shared<NSImage>(QVariant::fromValue(std::make_shared<Image>()));
  const double width = std::ceil(size.width()), height = std::ceil(size.height());
  if (!fitsImageLimits(width, height)) {
    raise(QStringLiteral("an image of that size is too large"));
  }
  QImage pixels(int(width), int(height), QImage::Format_ARGB32_Premultiplied);
  pixels.fill(Qt::transparent);
  return std::make_shared<NSImage>(QVariant::fromValue(std::make_shared<Image>(pixels, size)));
}

}  // namespace

const ClassInfo& NSImage::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<NSImage>("NSImage")
          .initializer("initWithSize:", initWithSize,
                       "Creates a transparent image of this size, with a pixel for each point.")
          .initializer("initWithContentsOfFile:", &NSImage::initWithContentsOfFile,
                       "Reads an image from a PNG, JPEG or WebP file; nil if that fails.")
          .initializer("initByReferencingFile:", &NSImage::initWithContentsOfFile,
                       "Reads an image from a PNG, JPEG or WebP file; nil if that fails.")
          .initializer("initWithData:", initWithData,
                       "Reads an image from the bytes of a PNG, JPEG or WebP file; nil if they are "
                       "none.")
          .initializer("initWithContentsOfURL:", initWithContentsOfURL,
                       "Reads an image from the URL of a file; nil if that fails.")
          .initializer("initByReferencingURL:", initWithContentsOfURL,
                       "Reads an image from the URL of a file; nil if that fails.")
          .classOperation(
              "imageNamed:", [](const QString&) { return QVariant(); },
              "Returns nil, as the desktop has no images for scripts.")
          .property("size", &NSImage::size, &NSImage::setSize,
                    "The nominal size in points, which may differ from the size in pixels.")
          .property("isValid", &NSImage::isValid, "Whether the image has pixels.")
          .operation("writeToFile:", &NSImage::writeToFile,
                     "Writes a PNG, JPEG or WebP file, by the path's extension, and returns "
                     "whether that succeeded.");
  return kClass;
}

std::shared_ptr<NSImage> NSImage::initWithContentsOfFile(const QString& path) {
  const auto image = Permissions::check(Permissions::Kind::Read, path).and_then([&] {
    return ImageFile::read(path, {});
  });
  if (image) return std::make_shared<NSImage>(QVariant::fromValue(*image));
  logLine(u"NSImage: %@", {messageOf(image.error())});
  return nullptr;
}

bool NSImage::writeToFile(const QString& path) const {
  const auto written = Permissions::check(Permissions::Kind::Write, path).and_then([&] {
    return ImageFile::write(*image_, path);
  });
  if (written) return true;
  logLine(u"NSImage: %@", {messageOf(written.error())});
  return false;
}

}  // namespace kelvar
