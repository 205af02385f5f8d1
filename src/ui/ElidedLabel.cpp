#include "ui/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

#include "ui/showWholeText.h"

namespace kelvar {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) { setTextFormat(Qt::PlainText); }

QSize ElidedLabel::minimumSizeHint() const {
  const int few = fontMetrics().averageCharWidth() * 4;
  return {std::min(few, sizeHint().width()), QLabel::minimumSizeHint().height()};
}

QString ElidedLabel::elided() const {
  QString line = text();
  line.replace(u'\n', u' ');
  return fontMetrics().elidedText(line, Qt::ElideRight, contentsRect().width());
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  style()->drawItemText(&painter, contentsRect(), int(alignment() | Qt::TextSingleLine), palette(),
                        isEnabled(), elided(), foregroundRole());
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !toolTip().isEmpty() || elided() == text()) {
    return QLabel::event(event);
  }
  return showWholeText(this, event, text());
}

}  // namespace kelvar
