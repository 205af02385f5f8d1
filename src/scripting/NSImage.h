#pragma once

#include "platform/image/Image.h"
#include "scripting/Boxed.h"

namespace kelvar {

/// An image as scripts see it: read from a file, measured, written to a file.
class NSImage : public Boxed {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// `image` holds an `ImageRef` that is not null.
  explicit NSImage(const QVariant& image) : image_(image.value<ImageRef>()) {}
  /// Null, with a line in the log, if the file cannot be read.
  static std::shared_ptr<NSImage> initWithContentsOfFile(const QString& path);

  QVariant value() const override { return QVariant::fromValue(image_); }
  size_t bytes() const override { return size_t(image_->pixels().sizeInBytes()); }
  QSizeF size() const { return image_->size(); }
  void setSize(const QSizeF& size) { image_->setSize(size); }
  bool isValid() const { return image_->isValid(); }
  /// Writes PNG, JPEG or WebP by the path's extension. False, with a line in the log, if that
  /// fails.
  bool writeToFile(const QString& path) const;

 private:
  ImageRef image_;
};

}  // namespace kelvar
