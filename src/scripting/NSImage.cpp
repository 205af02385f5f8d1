#include "scripting/NSImage.h"

#include "platform/ImageFile.h"
#include "platform/Log.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSImage::theClass);

}  // namespace

const ClassInfo& NSImage::theClass() {
  static const ClassInfo kClass =
      Description<NSImage>("NSImage")
          .initialiser("initWithContentsOfFile:", &NSImage::initWithContentsOfFile)
          .property("size", &NSImage::size, &NSImage::setSize)
          .property("isValid", &NSImage::isValid)
          .operation("writeToFile:", &NSImage::writeToFile);
  return kClass;
}

std::shared_ptr<NSImage> NSImage::initWithContentsOfFile(const QString& path) {
  QString error;
  const ImageRef image = ImageFile::read(path, {}, &error);
  if (image) return std::make_shared<NSImage>(QVariant::fromValue(image));
  logLine(u"NSImage: %@", {error});
  return nullptr;
}

bool NSImage::writeToFile(const QString& path) const {
  QString error;
  if (ImageFile::write(*image_, path, &error)) return true;
  logLine(u"NSImage: %@", {error});
  return false;
}

}  // namespace kelvar
