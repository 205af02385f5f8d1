#pragma once

#include <QWidget>
#include <functional>

class QLabel;
class QToolButton;

namespace kelvar::cli {

/// The line below the canvas: what the window is doing, and the zoom.
class StatusBar : public QWidget {
 public:
  explicit StatusBar(QWidget* parent = nullptr);

  std::function<void()> onZoomIn;
  std::function<void()> onZoomOut;
  std::function<void()> onFit;

  void setStatus(const QString& message);
  /// `zoom` in screen pixels per pixel of the image.
  void setZoom(double zoom);

 private:
  QToolButton* addButton(const QString& text, const QString& name,
                         std::function<void()> StatusBar::*callback);

  QLabel* status_ = nullptr;
  QToolButton* zoom_ = nullptr;
};

}  // namespace kelvar::cli
