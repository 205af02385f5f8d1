#include "sketch/render/paint/LayerPainter.h"

#include <QScopedValueRollback>
#include <algorithm>
#include <cmath>

#include "sketch/render/UnsupportedFeatures.h"
#include "sketch/render/displaylist/LayerBounds.h"
#include "sketch/render/paint/BitmapPainter.h"
#include "sketch/render/paint/FillPainter.h"
#include "sketch/render/paint/LayerBlur.h"
#include "sketch/render/paint/TextPainter.h"
#include "sketch/render/paint/compose.h"

namespace kelvar::render {
namespace {

using namespace Qt::StringLiterals;

/// Farther away nothing can be computed with enough digits.
constexpr double kMaxCoordinate = 1e7;

bool isWithinCoordinateLimits(const QRectF& frame) {
  const auto isNear = [](double v) { return std::abs(v) <= kMaxCoordinate; };
  return isNear(frame.x()) && isNear(frame.y()) && isNear(frame.width()) && isNear(frame.height());
}

qint64 pixelsOf(const QRect& rect) {
  return std::max<qint64>(rect.width(), 0) * std::max<qint64>(rect.height(), 0);
}

/// Instances and pages show what reaches out of a master, unless that is to be cut.
bool clips(const LayerProperties& frame) {
  return frame.kind == LayerKind::SymbolMaster ? frame.clipsInstance : frame.clipsContent;
}

void fillBackground(const QPainterPath& outline, const QColor& color, const PaintContext& canvas) {
  ScopedPainter painter(canvas);
  painter->fillPath(outline, color);
}

/// Whether an outline, in pixels, is a rectangle of whole ones.
bool isAlongPixels(const QPainterPath& outline) {
  const QRectF box = outline.boundingRect();
  const auto isNear = [](double a, double b) { return std::abs(a - b) < 1e-6; };
  for (int i = 0; i < outline.elementCount(); ++i) {
    const auto [x, y, kind] = outline.elementAt(i);
    const bool isCorner = (isNear(x, box.left()) || isNear(x, box.right())) &&
                          (isNear(y, box.top()) || isNear(y, box.bottom()));
    if (!isCorner || !isNear(x, std::round(x)) || !isNear(y, std::round(y))) return false;
  }
  return true;
}

size_t endOfMaskChain(const DisplayItem::List& items, size_t first, size_t last) {
  while (first < last && !items[first].properties().breaksMaskChain) ++first;
  return first;
}

void composeWith(QPainter::CompositionMode mode, const BitmapTile& above,
                 const PaintContext& below) {
  ScopedPainter painter(below);
  painter->setWorldTransform({});
  painter->setCompositionMode(mode);
  painter->drawImage(above.origin - below.tile().origin, above.pixels);
}

}  // namespace

LayerPainter::LayerPainter(DisplayList* list, DocumentImages* images)
    : list_(*list), images_(*images), shapes_(list, images) {}

void LayerPainter::warnOfUnsupported(const DisplayItem& item) {
  QStringList properties = unsupportedProperties(get(item.layer.json(), "style"));
  if (item.properties().kind == LayerKind::Bitmap) {
    properties += unsupportedOfBitmap(item.layer.json());
  }
  for (const QString& property : properties) {
    if (unsupported_.contains(property)) continue;
    unsupported_.insert(property);
    warn(u"The style of \"%1\" has \"%2\", which is not supported and is left out."_s.arg(
        item.properties().name, property));
  }
}

bool LayerPainter::reservePixels(qint64 pixels, const DisplayItem& item) {
  if (pixels <= kMaxHeldPixels) return true;
  warn(
      u"\"%1\" is nested in too many layers that are drawn in isolation; it is not isolated."_s.arg(
          item.properties().name));
  return false;
}

void LayerPainter::paintContents(DisplayItem* container, const PaintContext& canvas) {
  const LayerContext context{container, canvas};
  const LayerProperties& layer = context.layer();
  if (!layer.isFrame && !layer.isArtboard()) return paintGroup(context);
  warnOfUnsupported(*container);
  paintInFrame(context, clips(layer));
}

/// A mask cuts the layers above it, up to the first that breaks the chain.
void LayerPainter::paintRange(DisplayItem::List* items, size_t first, size_t last,
                              PaintContext canvas) {
  if (depth_ >= kMaxDepth) {
    return warn(u"Layers are nested too deep; not all of them are drawn."_s);
  }
  const QScopedValueRollback deeper(depth_, depth_ + 1);
  const PaintContext outside = canvas;
  for (size_t i = first; i < last; ++i) {
    DisplayItem* const item = &(*items)[i];
    const LayerProperties& layer = item->properties();
    if (layer.breaksMaskChain) canvas = outside;
    const size_t end =
        layer.isMask && layer.isVisible ? endOfMaskChain(*items, i + 1, last) : i + 1;
    const qint64 held = heldPixels_ + 2 * pixelsOf(canvas.tile().rect());
    if (end > i + 1 && !layer.isAlphaMask && paintCut(items, i, end, canvas)) {
      i = end - 1;
    } else {
      paintLayer(item, canvas);
      if (end > i + 1 && !layer.isAlphaMask) {
        canvas = canvas.clipped(list_.maskOutlineOf(item));
      } else if (end > i + 1 && reservePixels(held, *item)) {
        const QScopedValueRollback holds(heldPixels_, held);
        paintMasked(items, i + 1, end, canvas);
        i = end - 1;
      }
    }
    list_.release(item);
  }
}

bool LayerPainter::hasEndlessFills(const DisplayItem& mask) const {
  const LayerStyle& style = mask.style();
  return mask.properties().hasOutline() && style.opacity == 1 &&
         style.blendMode == BlendMode::Normal && style.blurs.isEmpty() && style.borders.isEmpty() &&
         style.innerShadows.isEmpty() && !style.fills.isEmpty() &&
         std::none_of(style.fills.begin(), style.fills.end(),
                      [](const Paint& fill) { return fill.kind == Paint::Kind::Pattern; });
}

/// Clipped one by one, the layers would let through at the edge what lies below each: a light icon
/// would have the dark rim of its mask.
bool LayerPainter::paintCut(DisplayItem::List* items, size_t mask, size_t last,
                            const PaintContext& canvas) {
  DisplayItem* const item = &(*items)[mask];
  const QPainterPath edge = canvas.toImage().map(list_.maskOutlineOf(item));
  const QRect rect = touchedPixels(edge.boundingRect(), 1, canvas.tile().rect());
  const qint64 held = heldPixels_ + 2 * pixelsOf(rect);
  if (rect.isEmpty() || isAlongPixels(edge)) return false;
  // Others may need the rest: what they hold cannot be had in another way.
  if (held > kMaxHeldPixels / 4 || depth_ > kMaxDepth / 2) return false;
  const QScopedValueRollback holds(heldPixels_, held);

  const bool isEndless = hasEndlessFills(*item);
  const LayerContext context{item, canvas.within(item->properties().transform)};
  if (!isEndless) {
    paintLayer(item, canvas);
  } else if (isWithinLimits(context)) {
    warnOfUnsupported(*item);
    shapes_.paintShadows(context, list_.outlineOf(item));
  }
  BitmapTile cutOut{canvas.tile().pixels.copy(rect.translated(-canvas.tile().origin)),
                    rect.topLeft()};
  BitmapTile coverage = BitmapTile::of(rect);
  if (cutOut.isEmpty() || coverage.isEmpty()) return true;
  {
    const PaintContext inside(&cutOut, canvas.toImage());
    if (isEndless) {
      const PaintContext inMask = inside.within(item->properties().transform);
      QPainterPath everywhere;
      everywhere.addPolygon(inMask.toImage().inverted().map(QPolygonF(QRectF(rect))));
      shapes_.paintFills({item, inMask}, everywhere);
    }
    paintRange(items, mask + 1, last, inside);
    fillBackground(edge, Qt::black, {&coverage, {}, canvas.clips()});
    composeWith(QPainter::CompositionMode_DestinationIn, coverage, inside);
  }
  const PaintContext unclipped = canvas.clippedOnly({});
  composeWith(QPainter::CompositionMode_DestinationOut, coverage, unclipped);
  composeWith(QPainter::CompositionMode_Plus, cutOut, unclipped);
  return true;
}

void LayerPainter::paintMasked(DisplayItem::List* items, size_t first, size_t last,
                               const PaintContext& canvas) {
  BitmapTile masked = BitmapTile::of(canvas.tile().rect()), mask = masked;
  paintRange(items, first, last, {&masked, canvas.toImage()});
  paintLayer(&(*items)[first - 1], {&mask, canvas.toImage()});
  composeWith(QPainter::CompositionMode_DestinationIn, mask, {&masked, {}});
  compose(masked, canvas, BlendMode::Normal, 1);
}

bool LayerPainter::isWithinLimits(const LayerContext& context) {
  const QString& name = context.layer().name;
  if (!list_.takeLayer()) {
    warn(u"There are too many layers; not all of them are drawn."_s);
  } else if (!isWithinCoordinateLimits(context.layer().frame)) {
    warn(u"\"%1\" lies too far away and is left out."_s.arg(name));
  } else if (!(scaleOf(context.canvas.toImage()) < kMaxCoordinate)) {
    warn(u"\"%1\" is enlarged too far and is left out."_s.arg(name));
  } else {
    return true;
  }
  return false;
}

void LayerPainter::paintLayer(DisplayItem* item, const PaintContext& canvas) {
  const LayerProperties& layer = item->properties();
  if (list_.isStopped() || !layer.isVisible) return;
  const LayerContext context{item, canvas.within(layer.transform)};
  if (!isWithinLimits(context)) return;
  const bool isLeaf = layer.hasOutline() || layer.kind == LayerKind::Text;
  if (isLeaf && boundsOnTile(context).isEmpty()) return;
  warnOfUnsupported(*item);
  if (layer.isArtboard()) return paintArtboard(context);
  blurBackgrounds(context);
  needsIsolation(context) ? paintIsolated(context) : paintContent(context);
}

QRect LayerPainter::boundsOnTile(const LayerContext& context) {
  const QTransform toImage = context.layer().transform.inverted() * context.canvas.toImage();
  const QRectF bounds = toImage.mapRect(list_.boundsOf(context.item));
  return touchedPixels(bounds, 0, context.canvas.tile().rect());
}

bool LayerPainter::hasGroupFill(const LayerContext& context) const {
  return list_.rules().tintsGroups && !context.style().fills.isEmpty() &&
         context.layer().isPlainContainer();
}

/// Groups and instances have no paint of their own to be painted with, and so need pixels for their
/// shadows and fills.
bool LayerPainter::needsIsolation(const LayerContext& context) const {
  const LayerStyle& style = context.style();
  return style.opacity < 1 || style.blendMode != BlendMode::Normal || ownBlur(style) > 0 ||
         (context.layer().isPlainContainer() &&
          (!style.shadows.isEmpty() || hasGroupFill(context)));
}

void LayerPainter::paintIsolated(const LayerContext& context) {
  const PaintContext& below = context.canvas;
  const LayerStyle& style = context.style();
  const int margin = ownBlurMargin(style, scaleOf(below.toImage()));
  const QRect rect = boundsOnTile(context).adjusted(-margin, -margin, margin, margin);
  const qint64 held = heldPixels_ + pixelsOf(rect);
  if (!reservePixels(held, *context.item)) return paintContent(context);
  const QScopedValueRollback holds(heldPixels_, held);
  BitmapTile alone = BitmapTile::of(rect);
  if (alone.isEmpty()) return;
  paintContent({context.item, {&alone, below.toImage()}});
  if (hasGroupFill(context)) shapes_.tint(context, &alone);
  // The shadow of it all may bring what lies outside into sight.
  const bool castsShadows = context.layer().isPlainContainer() && !style.shadows.isEmpty();
  blurLayer(context, castsShadows ? alone.rect() : below.tile().rect(), &alone, list_.stop());
  if (std::any_of(style.blurs.begin(), style.blurs.end(),
                  [](const Blur& blur) { return blur.kind == Blur::Kind::Zoom; })) {
    warn(u"The zoom blur of \"%1\" may be weaker or stronger than it should be."_s.arg(
        context.layer().name));
  }
  if (castsShadows) castGroupShadows(context, &alone);
  compose(alone, below, style.blendMode, style.opacity);
}

/// The shadows belong to the group, and fade with it.
void LayerPainter::castGroupShadows(const LayerContext& context, BitmapTile* tile) {
  const BitmapTile content = *tile;
  tile->pixels.fill(Qt::transparent);
  const auto draw = [&](BitmapTile* onto, double) {
    compose(content, {onto, {}}, BlendMode::Normal, 1);
  };
  shapes_.paintShadows({context.item, {tile, context.canvas.toImage()}},
                       {QRectF(content.rect()), draw, false});
  compose(content, {tile, {}}, BlendMode::Normal, 1);
}

void LayerPainter::paintContent(const LayerContext& context) {
  const LayerProperties& layer = context.layer();
  if (layer.hasOutline()) return paintShape(context);
  if (layer.isFrame) return paintInFrame(context, layer.clipsContent);
  switch (layer.kind) {
    case LayerKind::Text:
      return paintText(context, list_.textOf(context.item), &list_, &shapes_,
                       images_.usesDisplayP3());
    case LayerKind::Bitmap:
      return paintBitmap(context, &images_, &shapes_);
    case LayerKind::SymbolInstance:
      return paintInstance(context);
    case LayerKind::Slice:
    case LayerKind::Hotspot:
      return;
    case LayerKind::Unknown:
      warn(u"\"%1\" is a layer of an unknown kind, \"%2\"; only its contents are drawn."_s.arg(
          layer.name, layer.kindName));
      [[fallthrough]];
    default:
      return paintGroup(context);
  }
}

void LayerPainter::paintGroup(const LayerContext& context) {
  DisplayItem::List& items = list_.contentsOf(context.item);
  paintRange(&items, 0, items.size(), context.canvas);
}

void LayerPainter::paintArtboard(const LayerContext& context) {
  const LayerProperties& layer = context.layer();
  if (layer.hasBackground &&
      (layer.exportsBackground || list_.rules().showsUnexportedBackgrounds)) {
    fillBackground(list_.outlineOf(context.item), layer.background, context.canvas);
  }
  paintInFrame(context, clips(layer));
}

/// What is in an artboard or a frame, on its fills and under its borders.
void LayerPainter::paintInFrame(const LayerContext& context, bool isClipped) {
  const QPainterPath outline = list_.outlineOf(context.item);
  if (context.layer().isArtboard() && !list_.rules().stylesArtboards) {
    return paintGroup({context.item, isClipped ? context.canvas.clipped(outline) : context.canvas});
  }
  shapes_.paintShadows(context, outline);
  shapes_.paintFills(context, outline);
  paintGroup({context.item, isClipped ? context.canvas.clipped(outline) : context.canvas});
  shapes_.paintInnerShadows(context, outline);
  shapes_.paintBorders(context, outline);
}

void LayerPainter::paintInstance(const LayerContext& context) {
  const LayerProperties& layer = context.layer();
  if (DisplayList::isRecursive(*context.item)) {
    return warn(
        u"The symbol of \"%1\" contains itself; the inner instance is left out."_s.arg(layer.name));
  }
  DisplayItem* const master = list_.masterOf(context.item);
  if (!master) return warn(u"The symbol of \"%1\" is missing."_s.arg(layer.name));
  if (layer.hasSpacing) {
    warn(u"The spacing that \"%1\" sets for its layout is ignored."_s.arg(layer.name));
  }
  const double scale = layer.symbolScale;
  const bool isScaled = scale > 0 && scale != 1;
  const PaintContext canvas =
      isScaled ? context.canvas.within(QTransform::fromScale(scale, scale)) : context.canvas;
  const LayerProperties& shown = master->properties();
  if (shown.hasBackground && shown.showsBackgroundInInstance) {
    QPainterPath box;
    box.addRect(shown.box());
    fillBackground(box, shown.background, canvas);
  }
  paintContents(master, canvas);
}

void LayerPainter::paintShape(const LayerContext& context) {
  const QPainterPath outline = list_.outlineOf(context.item);
  if (outline.isEmpty()) return;
  shapes_.paintShadows(context, outline);
  shapes_.paintFills(context, outline);
  shapes_.paintInnerShadows(context, outline);
  shapes_.paintBorders(context, outline);
}

void LayerPainter::blurBackgrounds(const LayerContext& context) {
  for (const Blur& blur : context.style().blurs) {
    if (list_.isStopped()) return;
    if (blur.kind != Blur::Kind::Background || !(blur.radius > 0)) continue;
    const QPainterPath outline = list_.maskOutlineOf(context.item);
    const QPainterPath place =
        context.canvas.toImage().map(context.layer().transform.inverted().map(outline));
    blurBackground(context, blur, place, list_.stop());
  }
}

}  // namespace kelvar::render
