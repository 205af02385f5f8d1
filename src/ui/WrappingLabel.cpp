#include "ui/WrappingLabel.h"

#include <QPainter>
#include <cmath>

#include "ui/WrappedText.h"

namespace kelvar {
namespace {

constexpr int kDefaultWidth = 300;
constexpr int kMinWidth = 60;

}  // namespace

WrappingLabel::WrappingLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

QSize WrappingLabel::margins() const {
  const QMargins around = contentsMargins();
  return {2 * margin() + around.left() + around.right(),
          2 * margin() + around.top() + around.bottom()};
}

int WrappingLabel::heightForWidth(int width) const {
  const WrappedText wrapped(text(), font(), width - margins().width());
  return int(std::ceil(wrapped.height())) + margins().height();
}

QSize WrappingLabel::sizeHint() const { return {kDefaultWidth, heightForWidth(kDefaultWidth)}; }

QSize WrappingLabel::minimumSizeHint() const {
  return {kMinWidth, fontMetrics().height() + margins().height()};
}

void WrappingLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect inside = rect() - contentsMargins();
  const WrappedText wrapped(text(), font(), inside.width() - 2 * margin());
  painter.setPen(palette().color(foregroundRole()));
  wrapped.draw(&painter, {double(inside.left() + margin()),
                          std::max(0.0, inside.top() + (inside.height() - wrapped.height()) / 2)});
}

}  // namespace kelvar
