#pragma once

#include <QLabel>

#include "platform/Export.h"

namespace kelvar {

/// Plain text wrapped to the label's width, inside its `margin` and contents margins. It can become
/// narrower than its longest word.
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
  /// The sum of both sides' margins.
  QSize margins() const;
};

}  // namespace kelvar
