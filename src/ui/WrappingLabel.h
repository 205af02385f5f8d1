#pragma once

#include <QLabel>

namespace kelvar {

/// Plain text in as many lines as it needs, with its `margin` free on all sides.
class WrappingLabel : public QLabel {
  Q_OBJECT

 public:
  explicit WrappingLabel(QWidget* parent = nullptr);

  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace kelvar
