#pragma once

#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>

namespace kelvar {

/// Answers the event that asks for a tool tip with the whole of a text that is shown cut short.
inline bool showWholeText(QWidget* widget, const QEvent* event, const QString& text) {
  // As HTML, whose lines are broken where the tool tip is too wide.
  const QString whole = QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped());
  QToolTip::showText(static_cast<const QHelpEvent*>(event)->globalPos(), whole, widget);
  return true;
}

}  // namespace kelvar
