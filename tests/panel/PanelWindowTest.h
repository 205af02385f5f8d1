#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAction>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "mockup/Images.h"
#include "panel/CanvasView.h"
#include "panel/PanelWindow.h"
#include "panel/visibleChild.h"
#include "ui/PopUpButton.h"

namespace kelvar::cli {

/// A window and images in a temporary folder, used through the mouse and the keys.
class PanelWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    // Where file dialogs store their state.
    qputenv("XDG_CONFIG_HOME", dir_.path().toUtf8());
    noise(400, 300).save(path("photo.png"));
    noise(60, 90, 5).save(path("app.png"));
    noise(90, 60, 9).save(path("site.png"));
    window_.resize(1100, 700);
    window_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
    view_ = window_.findChild<QWidget*>(QStringLiteral("canvasView"));
  }

  QString path(const char* name) const { return dir_.filePath(QString::fromLatin1(name)); }

  QByteArray bytes(const char* name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  MockupSession& session() { return window_.session(); }
  const PanelModel& model() const { return window_.session().model(); }

  bool wait(const std::function<bool()>& until) { return QTest::qWaitFor(until, kMaxWait); }

  /// With the photo open and the designs in the menu.
  void open() {
    session().open(path("photo.png"));
    session().addDesigns({path("app.png"), path("site.png")});
    ASSERT_TRUE(wait([&] { return model().arrangement().designs.size() == 2 && settled(); }));
  }

  bool settled() { return session().hasMockup() && !session().isBusy(); }

  /// The position of a pixel of the image in the view.
  QPoint at(double x, double y) const {
    return static_cast<CanvasView*>(view_)->viewport().toView({x, y}).toPoint();
  }

  void click(const QPoint& point, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(view_, Qt::LeftButton, keys, point);
  }

  /// A shortcut of the window. It is activated first, as there is no window manager.
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    activate(&window_);
    QTest::keyClick(&window_, key, modifiers);
  }

  void activate(QWidget* window) {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  }

  void drag(const QPoint& from, const QPoint& to) {
    QTest::mousePress(view_, Qt::LeftButton, {}, from);
    for (int i = 1; i <= 4; ++i) QTest::mouseMove(view_, from + (to - from) * i / 4);
    QTest::mouseRelease(view_, Qt::LeftButton, {}, to);
  }

  void drawShape(const std::array<QPoint, 4>& corners) {
    if (!static_cast<CanvasView*>(view_)->isDrawing()) key(Qt::Key_N);
    for (const QPoint& corner : corners) click(at(corner.x(), corner.y()));
  }

  template <class T>
  T* control(const char* name) {
    return visibleChild<T>(window_, name);
  }

  void press(const char* name) {
    auto* const button = control<QAbstractButton>(name);
    ASSERT_TRUE(button) << name;
    ASSERT_TRUE(wait([&] { return settled() && button->isEnabled(); })) << name;
    QTest::mouseClick(button, Qt::LeftButton);
  }

  /// Opens the pop-up and chooses an item with the keys.
  void choose(PopUpButton* button, int steps) {
    ASSERT_TRUE(button);
    ASSERT_TRUE(wait([&] { return settled() && button->isEnabled(); }));
    QTest::mouseClick(button, Qt::LeftButton);
    QWidget* const list = button->view();
    ASSERT_TRUE(wait([&] { return list->isVisible(); }));
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < steps; ++i) QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    ASSERT_TRUE(wait([&] { return !list->isVisible(); }));
  }

  /// Triggers the action and enters the file in its dialog.
  void throughDialog(const char* action, const QString& file) {
    window_.findChild<QAction*>(QLatin1String(action))->trigger();
    QFileDialog* dialog = nullptr;
    ASSERT_TRUE(wait([&] { return (dialog = window_.findChild<QFileDialog*>()) != nullptr; }));
    activate(dialog);
    auto* const name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    ASSERT_TRUE(name) << "the dialog is Qt's own";
    name->setText(file);
    const auto accept = dialog->acceptMode() == QFileDialog::AcceptOpen ? QDialogButtonBox::Open
                                                                        : QDialogButtonBox::Save;
    QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(accept), Qt::LeftButton);
    ASSERT_TRUE(wait([&] { return !window_.findChild<QFileDialog*>(); }));
  }

  /// Answers the question that the window asks, and waits until it is closed.
  void answer(const QString& button) {
    QPointer<QMessageBox> box;
    ASSERT_TRUE(wait([&] { return !(box = window_.findChild<QMessageBox*>()).isNull(); }));
    for (QAbstractButton* each : box->buttons()) {
      if (each->text().remove(u'&') != button) continue;
      each->click();
      ASSERT_TRUE(wait([&] { return box.isNull(); })) << "the question stays open";
      return;
    }
    FAIL() << "no button " << button.toStdString();
  }

  QString error() {
    auto* const label = control<QLabel>("errorLabel");
    return label ? label->text() : QString();
  }

  QTemporaryDir dir_;
  PanelWindow window_;
  QWidget* view_ = nullptr;
};

}  // namespace kelvar::cli
