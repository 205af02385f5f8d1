#include "ui/WrappingLabel.h"

#include <QPainter>
#include <cmath>

#include "ui/WrappedText.h"

namespace kelvar {
namespace {

constexpr int kUsualWidth = 300;
constexpr int kLeastWidth = 60;

}  // namespace

WrappingLabel::WrappingLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

int WrappingLabel::heightForWidth(int width) const {
  const int margins = 2 * margin();
  return int(std::ceil(WrappedText(text(), font(), width - margins).height())) + margins;
}

QSize WrappingLabel::sizeHint() const { return {kUsualWidth, heightForWidth(kUsualWidth)}; }

QSize WrappingLabel::minimumSizeHint() const {
  return {kLeastWidth, fontMetrics().height() + 2 * margin()};
}

void WrappingLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const WrappedText wrapped(text(), font(), width() - 2 * margin());
  painter.setPen(palette().color(foregroundRole()));
  wrapped.draw(&painter, {double(margin()), std::max(0.0, (height() - wrapped.height()) / 2)});
}

}  // namespace kelvar
