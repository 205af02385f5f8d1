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
  // Set for both modes; otherwise the style would dim the disabled icon a second time.
  const QPixmap icon =
      tinted(option.palette.color(QPalette::ButtonText), painter.deviceTransform().m11());
  option.icon = QIcon(icon);
  option.icon.addPixmap(icon, QIcon::Disabled);
  painter.drawComplexControl(QStyle::CC_ToolButton, option);
  if (!hasFocus()) return;
  // Styles do not draw a focus frame for buttons without a bezel.
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(option.palette.color(QPalette::Highlight), 1.5));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
}

}  // namespace kelvar
