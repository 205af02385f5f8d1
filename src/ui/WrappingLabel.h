#pragma once

#include <QLabel>

#include "platform/Export.h"

namespace kelvar {

/// Plain text in as many lines as it needs, with its `margin` free on all sides, and its contents
/// margins beside it. It can become narrower than its words.
class KELVAR_EXPORT WrappingLabel : public QLabel {
  Q_OBJECT

 public:
  explicit WrappingLabel(QWidget* parent = nullptr);

  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  /// Free at either side, and above and below.
  QSize margins() const;
};

}  // namespace kelvar
