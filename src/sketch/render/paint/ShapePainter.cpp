#include "sketch/render/paint/ShapePainter.h"

#include <algorithm>

#include "sketch/render/LayerOutline.h"
#include "sketch/render/paint/FillPainter.h"
#include "sketch/render/paint/canCombine.h"
#include "sketch/render/paint/compose.h"
#include "sketch/render/paint/paintInBands.h"

namespace kelvar::render {
namespace {

using namespace Qt::StringLiterals;

constexpr int kMaxDashes = 10'000;

bool isOpaque(const Paint& paint) {
  if (paint.opacity < 1 || paint.blendMode != BlendMode::Normal) return false;
  if (paint.kind == Paint::Kind::Color) return paint.color.alpha() == 255;
  return paint.kind == Paint::Kind::Gradient &&
         std::all_of(paint.gradient.stops.begin(), paint.gradient.stops.end(),
                     [](const GradientStop& stop) { return stop.color.alpha() == 255; });
}

/// What lies around an outline that is filled by the odd-even rule.
QPainterPath invertedPath(const QPainterPath& outline, double margin) {
  QPainterPath rest;
  rest.setFillRule(Qt::OddEvenFill);
  rest.addRect(outline.boundingRect().adjusted(-margin, -margin, margin, margin));
  rest.addPath(outline);
  return rest;
}

/// Without dashes that would be too many to draw.
LayerStyle limitDashes(LayerStyle style, const QPainterPath& outline) {
  double sum = 0;
  for (const double dash : style.dashes) sum += dash;
  if (sum > 0 && outline.length() / sum > kMaxDashes) style.dashes.clear();
  return style;
}

QPainterPath rectPath(const QRectF& rect) {
  QPainterPath path;
  path.addRect(rect);
  return path;
}

}  // namespace

ShapePainter::Body ShapePainter::Body::of(const LayerStyle& style) {
  return {.isFilled = !style.fills.isEmpty(),
          .isOpaque = std::any_of(style.fills.begin(), style.fills.end(), render::isOpaque)};
}

ImageRef ShapePainter::patternOf(const LayerContext& context, const Paint& paint) {
  const bool isShown = paint.kind == Paint::Kind::Pattern && !context.item->leavesOutImages;
  return isShown ? images_.image(paint.image) : nullptr;
}

void ShapePainter::paintFills(const LayerContext& context, const QPainterPath& outline) {
  for (const Paint& fill : context.style().fills) {
    if (list_.isStopped()) return;
    if (fill.kind == Paint::Kind::Noise) {
      list_.warn(u"The noise on \"%1\" has a different grain pattern."_s.arg(context.layer().name));
    }
    paintWith(context, fill, outline, context.box(), context.canvas);
  }
}

void ShapePainter::tint(const LayerContext& context, BitmapTile* tile) {
  const QTransform& toImage = context.canvas.toImage();
  const QPainterPath everything =
      rectPath(toImage.inverted().mapRect(QRectF(tile->rect()).adjusted(-1, -1, 1, 1)));
  for (const Paint& fill : context.style().fills) {
    if (list_.isStopped()) return;
    const ImageRef image = patternOf(context, fill);
    ScopedPainter painter(PaintContext(tile, toImage));
    painter->setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter->setOpacity(fill.opacity);
    fillPath(painter.get(), everything, fill, context.box(), image);
  }
}

void ShapePainter::paintWith(const LayerContext& context, const Paint& paint,
                             const QPainterPath& area, const QRectF& box,
                             const PaintContext& canvas) {
  if (paint.kind == Paint::Kind::Pattern && context.item->leavesOutImages) return;
  const ImageRef image = patternOf(context, paint);
  if (const auto composition = compositionOf(paint.blendMode)) {
    return paintInBands(canvas, area, list_.stop(), [&](const PaintContext& part) {
      ScopedPainter painter(part);
      painter->setCompositionMode(*composition);
      painter->setOpacity(paint.opacity);
      fillPath(painter.get(), area, paint, box, image);
    });
  }
  BitmapTile alone = BitmapTile::of(
      touchedPixels(canvas.toImage().mapRect(area.boundingRect()), 0, canvas.tile().rect()));
  if (alone.isEmpty()) return;
  paintInBands({&alone, canvas.toImage()}, area, list_.stop(), [&](const PaintContext& part) {
    ScopedPainter painter(part);
    fillPath(painter.get(), area, paint, box, image);
  });
  compose(alone, canvas, paint.blendMode, paint.opacity);
}

void ShapePainter::paintBorders(const LayerContext& context, const QPainterPath& outline) {
  if (context.style().borders.isEmpty()) return;
  const LayerStyle style = limitDashes(context.style(), outline);
  const double detail = scaleOf(context.canvas.toImage());
  const bool isOpen = isOpenOutline(outline);
  for (const Border& border : style.borders) {
    if (list_.isStopped()) return;
    const double width = border.thickness;
    if (isOpen || border.position == Border::Position::Center) {
      QPainterPath area = strokeArea(outline, style, width, detail);
      area.addPath(markerArea(outline, style, width));
      paintWith(context, border.paint, area, context.box(), context.canvas);
      continue;
    }
    const bool isInside = border.position == Border::Position::Inside;
    const QPainterPath side =
        isInside ? outline : invertedPath(plainOutline(context, outline), 4 * width);
    // Twice the width, of which the side shows one half.
    const QPainterPath area = strokeArea(outline, style, 2 * width, detail);
    const QRectF box =
        isInside ? context.box() : context.box().adjusted(-width, -width, width, width);
    paintWith(context, border.paint, area, box, context.canvas.clipped(side));
  }
}

bool ShapePainter::combines(const LayerContext& context, const QPainterPath& first,
                            const QPainterPath& second) {
  if (canCombine(first, second)) return true;
  list_.warn(u"The outline of \"%1\" crosses itself too often for its borders to be exact."_s.arg(
      context.layer().name));
  return false;
}

QPainterPath ShapePainter::plainOutline(const LayerContext& context, const QPainterPath& outline) {
  const bool isPlain = outline.fillRule() == Qt::OddEvenFill || !combines(context, outline);
  return isPlain ? outline : outline.simplified();
}

QList<QPainterPath> ShapePainter::bordersForShadow(const LayerContext& context,
                                                   const QPainterPath& outline, bool isFilled) {
  const LayerStyle style = limitDashes(context.style(), outline);
  const QTransform& toImage = context.canvas.toImage();
  QList<QPainterPath> borders;
  for (const Border& border : style.borders) {
    if (list_.isStopped()) return {};
    const bool isCentered = border.position == Border::Position::Center || isOpenOutline(outline);
    if (border.position == Border::Position::Inside && isFilled && !isCentered) continue;
    const double width = isCentered ? border.thickness : 2 * border.thickness;
    QPainterPath area = strokeArea(outline, style, width, scaleOf(toImage));
    if (border.position == Border::Position::Inside && !isCentered &&
        combines(context, area, outline)) {
      area = area.intersected(outline);
    }
    borders.append(toImage.map(area));
  }
  return borders;
}

QPainterPath ShapePainter::spreadEdge(const LayerContext& context, const QPainterPath& filled,
                                      const QList<QPainterPath>& borders, bool isFilled) {
  QPainterPath edge = isFilled || borders.isEmpty() ? filled : borders.first();
  const QList<Shadow>& shadows = context.style().shadows;
  const bool isSpread = std::any_of(shadows.begin(), shadows.end(),
                                    [](const Shadow& shadow) { return shadow.spread != 0; });
  if (!isSpread) return edge;
  for (const QPainterPath& border : borders.mid(isFilled ? 0 : 1)) {
    if (!list_.isStopped() && combines(context, edge, border)) edge = edge.united(border);
  }
  return edge;
}

ShadowSource ShapePainter::shadowSourceOf(const LayerContext& context, const QPainterPath& outline,
                                          const Body& body) {
  const QList<QPainterPath> borders = bordersForShadow(context, outline, body.isFilled);
  if (list_.isStopped()) return {};
  const QPainterPath filled = context.canvas.toImage().map(outline);
  const QPainterPath edge = spreadEdge(context, filled, borders, body.isFilled);
  QPainterPath everything = filled;
  QRectF bounds = filled.boundingRect();
  for (const QPainterPath& border : borders) {
    everything.addPath(border);
    bounds |= border.boundingRect();
  }
  const bool isFilled = body.isFilled;
  const auto draw = [=, stop = list_.stop()](BitmapTile* tile, double spread) {
    paintInBands({tile, {}}, everything, stop, [&](const PaintContext& part) {
      ScopedPainter painter(part);
      if (isFilled) painter->fillPath(filled, Qt::black);
      for (const QPainterPath& border : borders) painter->fillPath(border, Qt::black);
      if (spread == 0) return;
      // A negative spread erodes the outline.
      if (spread < 0) painter->setCompositionMode(QPainter::CompositionMode_DestinationOut);
      painter->strokePath(edge, spreadPen(spread));
    });
  };
  return {bounds, draw, isFilled && !body.isOpaque};
}

void ShapePainter::paintShadows(const LayerContext& context, const ShadowSource& source) {
  const double scale = scaleOf(context.canvas.toImage());
  for (const Shadow& shadow : context.style().shadows) {
    if (list_.isStopped()) return;
    paintShadow(source, shadow, scale, context.canvas, list_.stop());
  }
}

void ShapePainter::paintShadows(const LayerContext& context, const QPainterPath& outline) {
  const LayerStyle& style = context.style();
  if (style.shadows.isEmpty()) return;
  Body body = Body::of(style);
  // Without any paint, a shape casts the shadow that it would cast if it were filled.
  if (context.layer().hasOutline() && style.borders.isEmpty()) body.isFilled = true;
  paintShadows(context, shadowSourceOf(context, outline, body));
}

void ShapePainter::paintInnerShadows(const LayerContext& context, const QPainterPath& outline) {
  const QTransform& toImage = context.canvas.toImage();
  for (const Shadow& shadow : context.style().innerShadows) {
    if (list_.isStopped()) return;
    paintInnerShadow(toImage.map(outline), shadow, scaleOf(toImage), context.canvas, list_.stop());
  }
}

}  // namespace kelvar::render
