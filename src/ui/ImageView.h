#pragma once

#include <QPixmap>
#include <QWidget>

#include "platform/image/Image.h"

namespace kelvar {

/// Shows an image, centered and scaled down to fit. It is not magnified beyond its nominal size.
class KELVAR_EXPORT ImageView : public QWidget {
  Q_OBJECT

 public:
  explicit ImageView(QWidget* parent = nullptr);

  ImageRef image() const { return image_; }
  /// Null for none.
  void setImage(ImageRef image);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ImageRef image_;
  /// The image at the size in which it was last painted.
  QPixmap scaled_;
};

}  // namespace kelvar
