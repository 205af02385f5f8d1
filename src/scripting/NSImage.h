#pragma once

#include "platform/Image.h"
#include "scripting/Boxed.h"

namespace kelvar {

/// A picture, for scripts: read from a file, measured, written to a file.
class NSImage : public Boxed {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// `image` is an `ImageRef` that is not null.
  explicit NSImage(const QVariant& image) : image_(image.value<ImageRef>()) {}
  /// Null, and a line in the log, when the file cannot be read.
  static std::shared_ptr<NSImage> initWithContentsOfFile(const QString& path);

  QVariant value() const override { return QVariant::fromValue(image_); }
  size_t bytes() const override { return size_t(image_->pixels().sizeInBytes()); }
  QSizeF size() const { return image_->size(); }
  void setSize(const QSizeF& size) { image_->setSize(size); }
  bool isValid() const { return image_->isValid(); }
  /// PNG, JPEG or WebP by the path's ending. False, and a line in the log, when that fails.
  bool writeToFile(const QString& path) const;

 private:
  ImageRef image_;
};

}  // namespace kelvar
