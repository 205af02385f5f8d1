#include "panel/VerticalScrollArea.h"

#include <QEvent>
#include <QScrollBar>
#include <algorithm>

namespace kelvar::cli {
namespace {

/// Points.
constexpr int kMinWidth = 280;

}  // namespace

VerticalScrollArea::VerticalScrollArea(const QWidget* reserved, QWidget* parent)
    : QScrollArea(parent), reserved_(reserved) {
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

QSize VerticalScrollArea::minimumSizeHint() const {
  const auto minWidth = [](const QWidget* part) {
    return part ? part->minimumSizeHint().width() : 0;
  };
  const int contents = std::max(minWidth(widget()), minWidth(reserved_));
  return {std::max(kMinWidth, contents + verticalScrollBar()->sizeHint().width()),
          QScrollArea::minimumSizeHint().height()};
}

bool VerticalScrollArea::eventFilter(QObject* watched, QEvent* event) {
  if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace kelvar::cli
