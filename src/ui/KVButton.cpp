#include "ui/KVButton.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "runtime/ClassInfo.h"
#include "ui/NSButton.h"
#include "ui/showWholeText.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVButton::staticClassInfo);

class StyledButton : public NSButton {
 public:
  using NSButton::NSButton;
  const ClassInfo& classInfo() const override { return KVButton::staticClassInfo(); }
};

constexpr int kMinWidth = 64;
constexpr int kMinHeight = 26;
/// On each side of the title, in addition to the style's own margin.
constexpr int kTitleMargin = 6;

}  // namespace

const ClassInfo& KVButton::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<StyledButton, NSButton>("KVButton")
          .initializer(
              "init", [] { return View::adopt(new KVButton); }, "Creates a button without a title.")
          .initializer(
              "initWithFrame:",
              [](const QRectF& frame) { return View::adopt(new KVButton, frame); },
              "Creates a button without a title.")
          .operation("awakeFromNib", onWidget(&KVButton::awakeFromNib),
                     "Gives the title its color; called once when the form has loaded.")
          .property("backgroundColor", onWidget(&KVButton::backgroundColor),
                    onWidget(&KVButton::setBackgroundColor),
                    "The color behind the button, or nil for none.")
          .property("textColor", onWidget(&KVButton::textColor), onWidget(&KVButton::setTextColor),
                    "The color that `awakeFromNib` gives the title, or nil for the palette's.");
  return kClass;
}

ViewRef KVButton::makeView(QWidget* widget) { return std::make_shared<StyledButton>(widget); }

KVButton::KVButton(QWidget* parent) : QPushButton(parent) {}

void KVButton::awakeFromNib() {
  if (textColor_.isValid()) styledTitle_ = {text(), textColor_, font()};
}

QSize KVButton::sizeHint() const {
  return (QPushButton::sizeHint() + QSize(2 * kTitleMargin, 0)).expandedTo({0, kMinHeight});
}

QSize KVButton::minimumSizeHint() const {
  const QSize whole = QPushButton::minimumSizeHint();
  return {std::min(whole.width(), kMinWidth), std::max(whole.height(), kMinHeight)};
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
