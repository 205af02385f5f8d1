#pragma once

#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>

namespace kelvar {

/// Handles a tool tip event by showing the whole of a text that is elided.
inline bool showWholeText(QWidget* widget, const QEvent* event, const QString& text) {
  // HTML wraps where plain text would make the tool tip too wide.
  const QString whole = QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped());
  QToolTip::showText(static_cast<const QHelpEvent*>(event)->globalPos(), whole, widget);
  return true;
}

}  // namespace kelvar
