#include "ui/GlyphButton.h"

#include <QPainter>
#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <QSvgRenderer>

namespace kelvar {

GlyphButton::GlyphButton(QWidget* parent) : QToolButton(parent) { setFocusPolicy(Qt::StrongFocus); }

void GlyphButton::setGlyph(const QString& glyph) {
  glyph_ = glyph;
  update();
}

QPixmap GlyphButton::tinted(const QColor& color, double pixelsPerPoint) const {
  QPixmap pixmap((QSizeF(iconSize()) * pixelsPerPoint).toSize());
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QSvgRenderer(glyph_).render(&painter);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(pixmap.rect(), color);
  painter.end();
  pixmap.setDevicePixelRatio(pixelsPerPoint);
  return pixmap;
}

void GlyphButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionToolButton option;
  initStyleOption(&option);
  // Named for both modes, or the style would make it paler still where it is disabled.
  const QPixmap picture =
      tinted(option.palette.color(QPalette::ButtonText), painter.deviceTransform().m11());
  option.icon = QIcon(picture);
  option.icon.addPixmap(picture, QIcon::Disabled);
  painter.drawComplexControl(QStyle::CC_ToolButton, option);
  if (!hasFocus()) return;
  // Styles leave the focus of a button without a bezel unmarked.
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(option.palette.color(QPalette::Highlight), 1.5));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
}

}  // namespace kelvar
