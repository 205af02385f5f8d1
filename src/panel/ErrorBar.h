#pragma once

#include <QFrame>

class QLabel;

namespace kelvar::cli {

/// The bar across the top of the window with the last error. Hidden until there is one.
class ErrorBar : public QFrame {
 public:
  explicit ErrorBar(QWidget* parent = nullptr);

  /// Shows the bar with the message, which may be of any length.
  void showError(const QString& message);

 private:
  QLabel* label_ = nullptr;
};

}  // namespace kelvar::cli
