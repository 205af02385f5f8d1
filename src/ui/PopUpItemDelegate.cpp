#include "ui/PopUpItemDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>

#include "ui/PopUpButton.h"

namespace kelvar {
namespace {

// Points.
constexpr int kMarkColumn = 24;
constexpr int kRowHeight = 28;
constexpr int kRowPadding = 6;
constexpr int kSeparatorHeight = 9;

constexpr float kSeparatorAlpha = 0.35F;

/// Combo boxes mark separators this way.
bool isSeparator(const QModelIndex& index) {
  return index.data(Qt::AccessibleDescriptionRole) == QStringLiteral("separator");
}

void drawSeparator(QPainter& painter, const QStyleOptionViewItem& option) {
  // Separators are disabled items, and the disabled color is too pale for a line.
  QColor color = option.palette.color(QPalette::Active, QPalette::Text);
  color.setAlphaF(kSeparatorAlpha);
  const QRect line(option.rect.left() + kRowPadding, option.rect.center().y(),
                   option.rect.width() - 2 * kRowPadding, 1);
  painter.fillRect(line, color);
}

void drawMark(QPainter& painter, const QRect& column, const QColor& color) {
  const QPointF center = QRectF(column).center();
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const QPointF tick[] = {center + QPointF(-3.5, 0.5), center + QPointF(-1, 3),
                          center + QPointF(4, -3)};
  painter.drawPolyline(tick, 3);
  painter.restore();
}

}  // namespace

PopUpItemDelegate::PopUpItemDelegate(PopUpButton* button)
    : QStyledItemDelegate(button), button_(*button) {}

void PopUpItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
  if (isSeparator(index)) return drawSeparator(*painter, option);
  QStyleOptionViewItem item = option;
  initStyleOption(&item, index);
  const QStyle* const style = QApplication::style();
  const bool selected = item.state & QStyle::State_Selected;
  style->drawPrimitive(QStyle::PE_PanelItemViewItem, &item, painter, item.widget);
  const QColor color = item.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
  QRect rest = item.rect;
  rest.setLeft(rest.left() + kMarkColumn);
  if (button_.isMarked(index.row())) {
    drawMark(*painter, {item.rect.topLeft(), QSize(kMarkColumn, item.rect.height())}, color);
  }
  if (!item.icon.isNull()) {
    const QRect place(rest.left(), rest.center().y() - item.decorationSize.height() / 2,
                      item.decorationSize.width(), item.decorationSize.height());
    item.icon.paint(painter, place);
    rest.setLeft(place.right() + kRowPadding);
  }
  rest.setRight(rest.right() - kRowPadding);
  painter->setPen(color);
  painter->drawText(rest, int(Qt::AlignVCenter | Qt::TextSingleLine),
                    item.fontMetrics.elidedText(item.text, item.textElideMode, rest.width()));
}

QSize PopUpItemDelegate::sizeHint(const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const {
  if (isSeparator(index)) return {0, kSeparatorHeight};
  QStyleOptionViewItem item = option;
  initStyleOption(&item, index);
  const int image = item.icon.isNull() ? 0 : item.decorationSize.width() + kRowPadding;
  const int height = std::max({kRowHeight, item.fontMetrics.height() + kRowPadding,
                               item.icon.isNull() ? 0 : item.decorationSize.height() + 6});
  return {kMarkColumn + image + item.fontMetrics.horizontalAdvance(item.text) + 4 * kRowPadding,
          height};
}

}  // namespace kelvar
