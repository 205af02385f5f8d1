#pragma once

#include "runtime/Object.h"
#include "sketch/document/SketchDocument.h"
#include "sketch/document/SketchJson.h"

namespace kelvar {

class MSImageData;
using MSImageDataRef = std::shared_ptr<MSImageData>;

/// An image of a document as scripts see it: the content of a bitmap layer or of a fill.
class MSImageData : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// The bytes of an image file.
  explicit MSImageData(QByteArray bytes) : bytes_(std::move(bytes)) {}
  /// Null for null and for an image without pixels.
  static MSImageDataRef fromImage(const ImageRef& image);
  /// What the JSON of a fill or a bitmap refers to. Null if it refers to nothing, or to a file of a
  /// document that is gone or does not have it.
  static MSImageDataRef of(const SketchJson& reference, const SketchDocumentRef& document);

  /// Puts the image into the document and returns the reference to it. For a null document, the
  /// reference holds the image itself.
  SketchJson storeIn(const SketchDocumentRef& document) const;

  /// Null, with a line in the log, if it cannot be decoded.
  ImageRef image() const;
  const QByteArray& bytes() const { return bytes_; }
  QString sha1() const;

 private:
  const QByteArray bytes_;
};

}  // namespace kelvar
