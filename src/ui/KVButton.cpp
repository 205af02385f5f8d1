#include "ui/KVButton.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "runtime/ClassInfo.h"
#include "ui/View.h"
#include "ui/showWholeText.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVButton::theClass);

constexpr int kLeastWidth = 64;
constexpr int kLeastHeight = 26;
/// Free at either side of the title, beyond what styles leave.
constexpr int kTitleMargin = 6;

}  // namespace

const ClassInfo& KVButton::theClass() {
  static const ClassInfo kClass =
      Description<View>("KVButton")
          .initialiser("init", [] { return View::adopt(new KVButton); })
          .property("hidden", &View::isHidden, &View::setHidden)
          .operation("awakeFromNib", onWidget(&KVButton::awakeFromNib))
          .property("title", onWidget(&KVButton::text), onWidget(&KVButton::setText))
          .property("backgroundColor", onWidget(&KVButton::backgroundColor),
                    onWidget(&KVButton::setBackgroundColor))
          .property("textColor", onWidget(&KVButton::textColor), onWidget(&KVButton::setTextColor));
  return kClass;
}

KVButton::KVButton(QWidget* parent) : QPushButton(parent) {}

void KVButton::awakeFromNib() {
  if (textColor_.isValid()) styledTitle_ = {text(), textColor_, font()};
}

QSize KVButton::sizeHint() const {
  return (QPushButton::sizeHint() + QSize(2 * kTitleMargin, 0)).expandedTo({0, kLeastHeight});
}

QSize KVButton::minimumSizeHint() const {
  const QSize whole = QPushButton::minimumSizeHint();
  return {std::min(whole.width(), kLeastWidth), std::max(whole.height(), kLeastHeight)};
}

void KVButton::paintEvent(QPaintEvent* event) {
  if (backgroundColor_.isValid()) {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(event->rect(), backgroundColor_);
  }
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  if (isStyled()) {
    QColor dimmed = styledTitle_.color;
    dimmed.setAlphaF(dimmed.alphaF() / 2);
    option.palette.setColor(QPalette::ButtonText, styledTitle_.color);
    option.palette.setColor(QPalette::Disabled, QPalette::ButtonText, dimmed);
    painter.setFont(styledTitle_.font);
  }
  option.text = elided();
  painter.drawControl(QStyle::CE_PushButton, option);
}

QString KVButton::elided() const {
  QStyleOptionButton option;
  initStyleOption(&option);
  const QRect inside = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this);
  const QFontMetrics metrics(isStyled() ? styledTitle_.font : font());
  return metrics.elidedText(text(), Qt::ElideRight, inside.width());
}

bool KVButton::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !toolTip().isEmpty() || elided() == text()) {
    return QPushButton::event(event);
  }
  return showWholeText(this, event, text());
}

}  // namespace kelvar
