#pragma once

#include <QAbstractItemView>
#include <QApplication>
#include <QImage>
#include <QString>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>

#include "ui/PopUpButton.h"

namespace kelvar {

inline QString text(const char* latin) { return QString::fromLatin1(latin); }

/// A window with a column of views, and its own settings.
class Panel {
 public:
  Panel() {
    qputenv("KELVAR_DEFAULTS", folder_.filePath(text("settings.sqlite")).toUtf8());
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.addStretch(1);
    window_.resize(320, 400);
  }
  ~Panel() {
    qunsetenv("KELVAR_DEFAULTS");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  void add(QWidget* view) { layout_.insertWidget(layout_.count() - 1, view); }
  void show() {
    window_.show();
    window_.activateWindow();
    QCoreApplication::processEvents();
  }
  QWidget& window() { return window_; }

 private:
  QTemporaryDir folder_;
  QWidget window_;
  QVBoxLayout layout_{&window_};
};

/// Opens the menu with the mouse and clicks an item.
inline void choose(PopUpButton& button, int index) {
  QTest::mouseClick(&button, Qt::LeftButton);
  QAbstractItemView& view = *button.view();
  const QRect row = view.visualRect(button.model()->index(index, 0));
  QTest::mouseMove(view.viewport(), row.center());
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, row.center());
}

/// Opens the menu with a key and moves down that many items from the selected one.
inline void chooseByKeys(PopUpButton& button, int down) {
  QTest::keyClick(&button, Qt::Key_Space);
  for (int i = 0; i < down; ++i) QTest::keyClick(button.view(), Qt::Key_Down);
  QTest::keyClick(button.view(), Qt::Key_Return);
}

/// The widget painted on a transparent background.
inline QImage painted(QWidget& widget, double pixelsPerPoint) {
  QImage image(widget.size() * pixelsPerPoint, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(pixelsPerPoint);
  image.fill(Qt::transparent);
  widget.render(&image, {}, {}, QWidget::DrawChildren);
  return image;
}

}  // namespace kelvar
