#pragma once

#include <QLabel>

#include "platform/Export.h"

namespace kelvar {

/// One line of plain text, elided at the end if it does not fit. The tool tip then shows all of it.
class KELVAR_EXPORT ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  QString elided() const;
};

}  // namespace kelvar
