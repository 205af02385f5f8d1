#include "ui/InterfaceFile.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QPushButton>

#include "Panel.h"
#include "platform/LogCapture.h"
#include "ui/KVPopupCell.h"
#include "ui/KVViewController.h"

namespace kelvar {
namespace {

void write(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

/// A form with one widget inside another.
QByteArray form(const char* widgetClass, const char* name, const char* properties = "") {
  return QByteArray("<ui version=\"4.0\"><widget class=\"QWidget\" name=\"top\"><widget class=\"") +
         widgetClass + "\" name=\"" + name + "\">" + properties + "</widget></widget></ui>";
}

TEST(InterfaceFileTest, CustomFormReplacesBuiltInForm) {
  const QTemporaryDir folder;
  write(folder.filePath(text("KVPopupCell.ui")), form("QLabel", "titleField"));
  for (const bool byEnvironment : {false, true}) {
    if (byEnvironment) qputenv("KELVAR_INTERFACE_DIR", folder.path().toUtf8());
    const auto cell = KVPopupCell::initWithNibName({}, byEnvironment ? QString() : folder.path());
    cell->setName(text("Phone"));
    ASSERT_TRUE(cell->view());
    EXPECT_EQ(cell->view()->objectName(), u"top");
    EXPECT_EQ(cell->titleField()->text(), u"Phone");
    EXPECT_FALSE(cell->popupButton());
    cell->reloadData();
    EXPECT_TRUE(KVViewController::initWithNibName()->view())
        << "the other forms are still built in";
  }
  qunsetenv("KELVAR_INTERFACE_DIR");
}

TEST(InterfaceFileTest, SkipsUnreadableForm) {
  const QTemporaryDir folder;
  for (const QByteArray& bytes :
       {QByteArray(), QByteArray("<ui"), QByteArray("<ui version=\"3\"/>"), QByteArray("\0\1\2", 3),
        form("QLabel", "x").chopped(9)}) {
    write(folder.filePath(text("KVPopupCell.ui")), bytes);
    const LogCapture log;
    const auto cell = KVPopupCell::initWithNibName({}, folder.path());
    ASSERT_TRUE(cell && cell->view()) << bytes.data();
    EXPECT_TRUE(cell->popupButton());
    EXPECT_TRUE(log.lines().value(0).contains(u"KVPopupCell.ui cannot be read")) << bytes.data();
  }
  write(folder.filePath(text("Other.ui")), "<ui");
  const auto other = KVPopupCell::initWithNibName(text("Other"), folder.path());
  ASSERT_TRUE(other);
  EXPECT_FALSE(other->view());
  other->reloadData();
}

TEST(InterfaceFileTest, LogsMismatchedOutletsAndActions) {
  const QTemporaryDir folder;
  write(folder.filePath(text("A.ui")), form("QComboBox", "imageQualityPopupButton"));
  write(folder.filePath(text("B.ui")),
        form("QPushButton", "anything",
             "<property name=\"action\"><string>noSuch:</string></property>"));
  const LogCapture log;
  const auto a = KVViewController::initWithNibName(text("A"), folder.path());
  ASSERT_TRUE(a->view());
  EXPECT_FALSE(a->imageQualityPopupButton());
  const auto b = KVViewController::initWithNibName(text("B"), folder.path());
  ASSERT_TRUE(b->view());
  QTest::mouseClick(b->view()->findChild<QPushButton*>(), Qt::LeftButton);
  EXPECT_EQ(
      log.lines(),
      QStringList({text("KVViewController: the outlet imageQualityPopupButton is a QComboBox"),
                   text("KVViewController has no action noSuch:")}));
}

/// Every built-in form is accessible by keyboard and screen reader.
TEST(InterfaceFileTest, ControlsHaveNamesAndTabOrder) {
  QDirIterator forms(text(":/kelvar/ui"), {text("*.ui")});
  int count = 0;
  while (forms.hasNext()) {
    const QString name = QFileInfo(forms.next()).baseName();
    Panel panel;
    const auto controller = KVViewController::initWithNibName(name);
    panel.add(controller->view());
    controller->view()->show();
    panel.show();
    QSet<QWidget*> controls;
    for (QWidget* const each : controller->view()->findChildren<QWidget*>()) {
      const auto* const button = qobject_cast<QAbstractButton*>(each);
      if (!button && !qobject_cast<QComboBox*>(each)) continue;
      if (!each->isVisible()) continue;
      controls.insert(each);
      const QString spoken =
          each->accessibleName().isEmpty() && button ? button->text() : each->accessibleName();
      EXPECT_FALSE(spoken.isEmpty()) << qPrintable(each->objectName());
    }
    EXPECT_FALSE(controls.isEmpty()) << qPrintable(name);
    for (qsizetype i = controls.size(); i >= 0; --i) {
      QTest::keyClick(&panel.window(), Qt::Key_Tab);
      controls.remove(QApplication::focusWidget());
    }
    EXPECT_TRUE(controls.isEmpty()) << qPrintable(name);
    ++count;
  }
  EXPECT_EQ(count, 5);
}

TEST(InterfaceFileTest, LongTextsDoNotWidenForms) {
  const QString longText = text("a rather long text ").repeated(200);
  const auto row = KVViewController::initWithNibName();
  const auto line = KVViewController::initWithNibName(text("KVMessageLine"));
  line->setMessage(longText);
  line->setActionTitle(longText);
  const auto cell = KVPopupCell::initWithNibName();
  cell->setName(longText);
  cell->setPopupMenu(KVMenu::menuWithItems(
      {QVariantMap{{text("title"), longText}, {text("identifier"), text("a")}}}));
  cell->setSelectedIdentifier(text("a"));
  Panel panel;
  const auto banner = KVViewController::initWithNibName(text("KVSoftMessage"));
  for (QWidget* const view : {row->view(), line->view(), cell->view(), banner->view()}) {
    panel.add(view);
  }
  banner->showSoftMessage(text("x").repeated(500), {}, 1);
  panel.show();
  QCoreApplication::processEvents();
  EXPECT_LE(panel.window().minimumSizeHint().width(), 320);
  for (QWidget* const each : panel.window().findChildren<QWidget*>()) {
    if (!each->isVisible() || each->window() != &panel.window()) continue;
    const QRect place(each->mapTo(&panel.window(), QPoint()), each->size());
    EXPECT_LE(place.right(), 320) << qPrintable(each->objectName());
    EXPECT_GT(place.width(), 0) << qPrintable(each->objectName());
  }
}

}  // namespace
}  // namespace kelvar
