#include "sketch/classes/MSImageData.h"

#include <QCryptographicHash>

#include "platform/Log.h"
#include "platform/QtError.h"
#include "platform/image/ImageFile.h"
#include "runtime/ClassInfo.h"
#include "sketch/document/LayerStyle.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MSImageData::staticClassInfo);

/// Documents hold PNG files.
MSImageDataRef withData(const QByteArray& bytes) {
  const Result<ImageRef> image = ImageFile::fromBytes(bytes, {});
  if (!image) return nullptr;
  return bytes.startsWith("\x89PNG") ? std::make_shared<MSImageData>(bytes)
                                     : MSImageData::fromImage(*image);
}

}  // namespace

const ClassInfo& MSImageData::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<MSImageData>("MSImageData")
          .initializer("initWithImage:", &MSImageData::fromImage,
                       "Creates image data from an image; nil if it has no pixels.")
          .initializer(
              "initWithImage:convertColorSpace:",
              [](const ImageRef& image, bool) { return fromImage(image); },
              "Creates image data from an image, whose colors are sRGB already.")
          .initializer("initWithData:", withData,
                       "Creates image data from the bytes of an image file; nil if they are none.")
          .initializer(
              "initWithData:sha1:",
              [](const QByteArray& bytes, const QVariant&) { return withData(bytes); },
              "Creates image data from the bytes of an image file, whose hash is calculated.")
          .operation("image", &MSImageData::image, "Returns the image; nil if it is damaged.")
          .operation("data", &MSImageData::bytes, "Returns the bytes of the image file.")
          .operation("sha1", &MSImageData::sha1, "Returns the hash of the bytes, in digits.");
  return kClass;
}

MSImageDataRef MSImageData::fromImage(const ImageRef& image) {
  if (!image || !image->isValid()) return nullptr;
  return std::make_shared<MSImageData>(ImageFile::toPng(*image));
}

MSImageDataRef MSImageData::of(const SketchJson& json, const SketchDocumentRef& document) {
  const ImageReference reference = readImageReference(json);
  if (reference.data) {
    return std::make_shared<MSImageData>(QByteArray::fromBase64(reference.data->toLatin1()));
  }
  if (reference.name.isEmpty() || !document) return nullptr;
  QByteArray bytes = document->file(reference.name);
  // Early documents leave the extension out.
  if (bytes.isNull()) bytes = document->file(reference.name + QStringLiteral(".png"));
  return bytes.isNull() ? nullptr : std::make_shared<MSImageData>(bytes);
}

SketchJson MSImageData::storeIn(const SketchDocumentRef& document) const {
  if (document) {
    return {{"_class", "MSJSONFileReference"},
            {"_ref_class", "MSImageData"},
            {"_ref", document->addImage(bytes_).toStdString()}};
  }
  const QByteArray hash = QCryptographicHash::hash(bytes_, QCryptographicHash::Sha1);
  return {{"_class", "MSJSONOriginalDataReference"},
          {"_ref_class", "MSImageData"},
          {"_ref", "images/" + hash.toHex().toStdString()},
          {"data", {{"_data", bytes_.toBase64().toStdString()}}},
          {"sha1", {{"_data", hash.toBase64().toStdString()}}}};
}

ImageRef MSImageData::image() const {
  const Result<ImageRef> image = ImageFile::fromBytes(bytes_, {});
  if (!image) logLine(u"MSImageData: %@", {messageOf(image.error())});
  return image.value_or(nullptr);
}

QString MSImageData::sha1() const {
  return QString::fromLatin1(QCryptographicHash::hash(bytes_, QCryptographicHash::Sha1).toHex());
}

}  // namespace kelvar
