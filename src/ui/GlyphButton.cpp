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
  option.icon =
      QIcon(tinted(option.palette.color(QPalette::ButtonText), painter.deviceTransform().m11()));
  painter.drawComplexControl(QStyle::CC_ToolButton, option);
}

}  // namespace kelvar
