#include "ui/showWholeText.h"

#include <gtest/gtest.h>

#include "Panel.h"
#include "ui/ElidedLabel.h"
#include "ui/KVButton.h"

namespace kelvar {
namespace {

/// The tool tip of the widget.
QString toolTipOf(QWidget& widget) {
  QToolTip::hideText();  // Asynchronous.
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
  const QPoint middle = widget.rect().center();
  QHelpEvent event(QEvent::ToolTip, middle, widget.mapToGlobal(middle));
  QApplication::sendEvent(&widget, &event);
  return QToolTip::isVisible() ? QToolTip::text() : QString();
}

TEST(showWholeTextTest, ShowsElidedText) {
  const QString name = text("Tom & Jerry's very long artboard name for the second screen");
  Panel panel;
  auto* const label = new ElidedLabel(&panel.window());
  auto* const button = new KVButton(&panel.window());
  auto* const popUp = new PopUpButton(&panel.window());
  label->setText(name);
  button->setText(name);
  popUp->setToolTip(text("Artboard"));
  popUp->setTitle(name);
  panel.show();
  const struct {
    QWidget* widget;
    QString uncut;
  } cases[] = {{label, {}}, {button, {}}, {popUp, text("Artboard")}};
  for (const auto& [widget, uncut] : cases) {
    widget->setVisible(true);
    widget->resize(80, 28);
    EXPECT_TRUE(toolTipOf(*widget).contains(name.toHtmlEscaped()))
        << widget->metaObject()->className();
    widget->resize(1200, 28);
    EXPECT_EQ(toolTipOf(*widget), uncut) << widget->metaObject()->className();
  }
  QToolTip::hideText();
}

}  // namespace
}  // namespace kelvar
