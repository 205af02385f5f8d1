#pragma once

#include <QPixmap>
#include <QWidget>

#include "platform/Image.h"

namespace kelvar {

/// Shows a picture in proportion, as large as it fits and no larger than it is in points, centred.
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
  /// The picture in the pixels in which it was painted last.
  QPixmap scaled_;
};

}  // namespace kelvar
