#pragma once

#include <QVBoxLayout>
#include <QWidget>

namespace kelvar {

/// Filled by a control that can be exchanged for one of another kind.
class ControlBox : public QWidget {
  Q_OBJECT

 public:
  ControlBox() { layout_.setContentsMargins(0, 0, 0, 0); }

  QWidget* control() const { return control_; }
  /// Deletes the previous control. The new one takes over its font and whether it is enabled.
  void setControl(QWidget* control) {
    if (control_) {
      control->setFont(control_->font());
      control_->hide();
      control_->deleteLater();
      layout_.removeWidget(control_);
    }
    control_ = control;
    control->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    control->setMinimumSize(1, 1);
    layout_.addWidget(control);
    setFocusProxy(control);
  }

  QSize sizeHint() const override { return control_ ? control_->sizeHint() : QSize(); }

 private:
  QVBoxLayout layout_{this};
  QWidget* control_ = nullptr;
};

}  // namespace kelvar
