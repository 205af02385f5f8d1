#include "host/render/LayerPainter.h"

#include <QGlyphRun>
#include <QLineF>
#include <QScopedValueRollback>
#include <algorithm>
#include <cmath>

#include "host/SketchKind.h"
#include "host/SketchTransform.h"
#include "host/render/GaussianBlur.h"
#include "host/render/LayerOutline.h"
#include "host/render/PaintArea.h"
#include "host/render/PictureTone.h"
#include "host/render/StreakBlur.h"
#include "host/render/SymbolInstance.h"
#include "host/render/UnreadStyle.h"
#include "host/render/canCombine.h"
#include "host/render/paintInBands.h"
#include "platform/ColorProfile.h"

namespace kelvar::render {
namespace {

using namespace Qt::StringLiterals;

/// Farther away nothing can be computed with enough digits.
constexpr double kFarthest = 1e7;
/// The first document version in which the fills of groups and instances tint what is in them.
constexpr int kFirstWithTints = 123;
constexpr int kMostDashes = 10'000;
constexpr qsizetype kMostWarnings = 100;
constexpr double kMostBlur = 500;
/// A document's "colorSpace"; the others are sRGB and that of whatever screen it is.
constexpr int kDisplayP3 = 2;

bool isSane(const QRectF& frame) {
  const auto isNear = [](double v) { return std::abs(v) <= kFarthest; };
  return isNear(frame.x()) && isNear(frame.y()) && isNear(frame.width()) && isNear(frame.height());
}

qint64 pixelsOf(const QRect& rect) {
  return std::max<qint64>(rect.width(), 0) * std::max<qint64>(rect.height(), 0);
}

QPainterPath rectPath(const QRectF& rect) {
  QPainterPath path;
  path.addRect(rect);
  return path;
}

bool hasOutline(const SketchJson& layer) {
  return isSketchShape(layer) || classOf(layer) == u"shapeGroup";
}

/// Groups and instances have no paint of their own to be drawn with, and so need pixels for their
/// shadows.
bool isPlainContainer(const SketchJson& layer) {
  const QString kind = classOf(layer);
  return kind == u"symbolInstance" || (kind == u"group" && !isSketchFrame(layer));
}

bool isOpaque(const Paint& paint) {
  if (paint.opacity < 1 || paint.blendMode != BlendMode::Normal) return false;
  if (paint.kind == Paint::Kind::Color) return paint.color.alpha() == 255;
  return paint.kind == Paint::Kind::Gradient &&
         std::all_of(paint.gradient.stops.begin(), paint.gradient.stops.end(),
                     [](const GradientStop& stop) { return stop.color.alpha() == 255; });
}

/// The widest blur that a layer is seen through, in its units; 0 for none.
double ownBlur(const LayerStyle& style) {
  double deviation = 0;
  for (const Blur& blur : style.blurs) {
    if (blur.kind != Blur::Kind::Background) deviation = std::max(deviation, blur.radius);
  }
  return std::min(deviation, kMostBlur);
}

/// How far around it, in pixels, a layer's own blur looks for each pixel.
int reachOfBlur(const Blur& blur, double scale) {
  if (blur.kind == Blur::Kind::Background || !(blur.radius > 0)) return 0;
  const double radius = std::min(blur.radius * scale, kMostBlur);
  return blur.kind == Blur::Kind::Gaussian ? blurReach(radius) : int(std::ceil(radius));
}

/// The same of all of them, one after the other.
int ownBlurReach(const LayerStyle& style, double scale) {
  int reach = 0;
  for (const Blur& blur : style.blurs) reach += reachOfBlur(blur, scale);
  return std::min(reach, int(3 * kMostBlur));
}

/// What lies around an outline that is filled by the odd-even rule.
QPainterPath everythingBut(const QPainterPath& outline, double margin) {
  QPainterPath rest;
  rest.setFillRule(Qt::OddEvenFill);
  rest.addRect(outline.boundingRect().adjusted(-margin, -margin, margin, margin));
  rest.addPath(outline);
  return rest;
}

/// Cuts the canvas with an outline in its coordinates.
Canvas cutCanvas(const Canvas& canvas, const QPainterPath& outline) {
  Canvas result = canvas;
  result.clips.append(canvas.toPicture.map(outline));
  return result;
}

/// What documents of Sketch 43 show of a bitmap; of all others the whole.
QRectF cropOf(const SketchJson& bitmap, const QRectF& frame) {
  const QRectF part = textRectIn(bitmap, "clippingMask");
  if (part.isEmpty()) return frame;
  return {part.x() * frame.width(), part.y() * frame.height(), part.width() * frame.width(),
          part.height() * frame.height()};
}

/// As sharp as the picture is: each at the size that it has there.
void paintEmblems(const TextShape& shape, const Canvas& canvas) {
  for (const TextShape::Area& area : shape.areas) {
    for (const TextShape::Emblem& emblem : area.emblems) {
      const double scale = std::clamp(scaleOf(emblem.place * canvas.toPicture), 1e-3, 1e3);
      QRawFont font = emblem.font;
      font.setPixelSize(std::clamp(emblem.size * scale, 1.0, 1000.0));
      QGlyphRun glyph;
      glyph.setRawFont(font);
      glyph.setGlyphIndexes({emblem.glyph});
      glyph.setPositions({QPointF()});
      QPainter painter;
      begin(&painter, canvas);
      painter.setOpacity(area.color.alphaF());
      painter.setWorldTransform(emblem.place, true);
      painter.scale(1 / scale, 1 / scale);
      painter.drawGlyphRun({}, glyph);
    }
  }
}

/// Onto a canvas of that space; the emblems are in sRGB.
void paintEmblemsInDisplayP3(const TextShape& shape, const Canvas& canvas) {
  const bool hasEmblems = std::any_of(shape.areas.begin(), shape.areas.end(),
                                      [](const auto& area) { return !area.emblems.isEmpty(); });
  if (!hasEmblems) return;
  Surface alone = Surface::of(canvas.surface->rect());
  if (alone.isEmpty()) return;
  paintEmblems(shape, {&alone, canvas.toPicture, {}});
  alone.pixels = toDisplayP3(alone.pixels);
  compose(alone, canvas, BlendMode::Normal, 1);
}

/// Without dashes that would be too many to draw.
LayerStyle withBearableDashes(LayerStyle style, const QPainterPath& outline) {
  double sum = 0;
  for (const double dash : style.dashes) sum += dash;
  if (sum > 0 && outline.length() / sum > kMostDashes) style.dashes.clear();
  return style;
}

}  // namespace

LayerPainter::LayerPainter(const SketchDocument& document, const QSet<QString>& withoutPictures,
                           const std::stop_token& stop)
    : document_(document),
      withoutPictures_(withoutPictures),
      stop_(stop),
      documentVersion_(integerIn(document.meta(), "version")),
      paintsDisplayP3_(integerIn(document.document(), "colorSpace") == kDisplayP3) {}

void LayerPainter::warn(const QString& sentence) {
  if (warnings_.size() > kMostWarnings || warnings_.contains(sentence)) return;
  warnings_.append(warnings_.size() < kMostWarnings ? sentence : u"There is more like that."_s);
}

void LayerPainter::warnOfUnreadStyle(const SketchJson& layer) {
  for (const QString& member : unreadMembers(memberOf(layer, "style"))) {
    if (unreadStyle_.contains(member)) continue;
    unreadStyle_.insert(member);
    warn(u"The style of \"%1\" has \"%2\", which is not known here and is left out."_s.arg(
        textIn(layer, "name"), member));
  }
}

bool LayerPainter::hasRoomFor(qint64 pixels, const SketchJson& layer) {
  if (pixels <= kMostHeldPixels) return true;
  warn(u"\"%1\" lies within too many others that are drawn by themselves; it is not."_s.arg(
      textIn(layer, "name")));
  return false;
}

void LayerPainter::paintContents(const SketchJson& container, const Canvas& canvas) {
  const Subject subject{container, readLayerStyle(memberOf(container, "style")), canvas,
                        classOf(container)};
  if (!isSketchFrame(container) && !isSketchArtboard(container)) return paintGroup(subject);
  warnOfUnreadStyle(container);
  // An instance shows what reaches out of its master, unless that is to be cut.
  constexpr int kCut = 1;
  const bool isMaster = subject.kind == u"symbolMaster";
  paintInFrame(subject, isMaster ? integerIn(container, "clippingBehavior") == kCut
                                 : cutsItsContents(container));
}

/// A mask cuts the layers above it, up to the first that breaks the chain.
void LayerPainter::paintRange(const SketchJson& layers, size_t first, size_t last, Canvas canvas) {
  if (depth_ >= kMostDepth) {
    return warn(u"Layers are nested too deep; not all of them are drawn."_s);
  }
  const QScopedValueRollback deeper(depth_, depth_ + 1);
  const QScopedValueRollback<const SketchJson*> inside(below_, nullptr);
  const QList<QPainterPath> outside = canvas.clips;
  const auto breaksChain = [&](size_t i) { return flagIn(layers[i], "shouldBreakMaskChain"); };
  for (size_t i = first; i < last; ++i) {
    const SketchJson& layer = layers[i];
    if (breaksChain(i)) canvas.clips = outside;
    below_ = i > 0 ? &layers[i - 1] : nullptr;
    paintLayer(layer, canvas);
    if (!flagIn(layer, "hasClippingMask") || !flagIn(layer, "isVisible", true)) continue;
    if (integerIn(layer, "clippingMaskMode") == 0) {
      canvas.clips.append(canvas.toPicture.map(maskOutline(layer)));
      continue;
    }
    const qint64 held = heldPixels_ + 2 * pixelsOf(canvas.surface->rect());
    if (!hasRoomFor(held, layer)) continue;
    const QScopedValueRollback holds(heldPixels_, held);
    size_t end = i + 1;
    while (end < last && !breaksChain(end)) ++end;
    Surface masked = Surface::of(canvas.surface->rect()), mask = masked;
    paintRange(layers, i + 1, end, {&masked, canvas.toPicture, {}});
    paintLayer(layer, {&mask, canvas.toPicture, {}});
    QPainter painter(&masked.pixels);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, mask.pixels);
    painter.end();
    compose(masked, canvas, BlendMode::Normal, 1);
    i = end - 1;
  }
}

void LayerPainter::paintLayer(const SketchJson& layer, const Canvas& canvas) {
  if (isStopped() || !layer.is_object() || !flagIn(layer, "isVisible", true)) return;
  if (layersLeft_-- <= 0) return warn(u"There are too many layers; not all of them are drawn."_s);
  if (!isSane(rectIn(layer, "frame"))) {
    return warn(u"\"%1\" lies too far away and is left out."_s.arg(textIn(layer, "name")));
  }
  Subject subject{layer, readLayerStyle(memberOf(layer, "style")),
                  canvas.within(sketchTransform(layer)), classOf(layer)};
  if (!(scaleOf(subject.canvas.toPicture) < kFarthest)) {
    return warn(u"\"%1\" is enlarged too far and is left out."_s.arg(textIn(layer, "name")));
  }
  const bool isLeaf = hasOutline(subject.layer) || subject.kind == u"text";
  if (isLeaf && reachOnCanvas(subject).isEmpty()) return;
  warnOfUnreadStyle(layer);
  if (isSketchArtboard(layer)) return paintArtboard(subject);
  const bool leftOutPictures = leavesOutPictures_;
  leavesOutPictures_ = withoutPictures_.contains(textIn(layer, "do_objectID"));
  paintBackgroundBlur(subject);
  const LayerStyle& style = subject.style;
  const bool standsAlone =
      style.opacity < 1 || style.blendMode != BlendMode::Normal || ownBlur(style) > 0 ||
      (isPlainContainer(subject.layer) && (!style.shadows.isEmpty() || tints(subject)));
  if (standsAlone) {
    paintByItself(&subject);
  } else {
    paintSubject(subject);
  }
  leavesOutPictures_ = leftOutPictures;
}

/// Where the layer can leave something, in the coordinates around it. Generous: a blur is followed
/// until it cannot be seen, a text may be as wide as its letters could make it.
QRectF LayerPainter::reachOf(const SketchJson& layer) {
  if (isStopped() || !flagIn(layer, "isVisible", true) || layersLeft_ <= 0) return {};
  const QString kind = classOf(layer);
  const LayerStyle style = readLayerStyle(memberOf(layer, "style"));
  QRectF reach({0, 0}, rectIn(layer, "frame").size());
  if (kind == u"symbolInstance") {
    reach |= reachOfInstance(layer);
  } else if (kind == u"text") {
    reach = reachOfText(layer);
  } else if (!hasOutline(layer)) {
    reach |= reachOfContents(layer);
  }
  double margin = 1;
  for (const Border& border : style.borders) {
    margin = std::max(margin, border.thickness * std::max(4.0, style.miterLimit));
  }
  QRectF shadows = reach;
  for (const Shadow& shadow : style.shadows) {
    const double blurred = 1.5 * shadow.blurRadius + std::max(0.0, 4 * shadow.spread);
    shadows |= reach.adjusted(-blurred, -blurred, blurred, blurred).translated(shadow.offset);
  }
  margin += 3 * ownBlur(style);
  return sketchTransform(layer).mapRect(shadows.adjusted(-margin, -margin, margin, margin));
}

QRectF LayerPainter::reachOfText(const SketchJson& text) {
  const TextRuns runs = readTextRuns(text);
  double size = 0;
  for (const TextRun& run : runs.runs) size = std::max(size, run.style.size + run.style.kerning);
  const bool isOneLine = integerIn(text, "textBehaviour") == 0;
  const double across = isOneLine ? size * double(runs.text.size()) : 2 * size;
  const double down = 2 * size * double(1 + runs.text.count(u'\n'));
  const QRectF straight =
      QRectF({0, 0}, rectIn(text, "frame").size()).adjusted(-across, -2 * size, across, down);
  const QPainterPath path = pathUnder(text);
  if (path.isEmpty()) return straight;
  return straight | path.boundingRect().adjusted(-down, -down, down, down);
}

QRectF LayerPainter::reachOfContents(const SketchJson& container) {
  if (depth_ >= kMostDepth) return {};
  const QScopedValueRollback deeper(depth_, depth_ + 1);
  QRectF reach;
  const QScopedValueRollback<const SketchJson*> inside(below_, nullptr);
  for (const SketchJson& layer : listIn(container, "layers")) {
    if (layer.is_object()) reach |= reachOf(layer);
    below_ = &layer;
  }
  return reach;
}

SketchJson LayerPainter::expanded(const SketchJson& instance) {
  QStringList warnings;
  const SketchJson content =
      expandedInstance(instance, document_, &measuresLeft_, &warnings, stop_);
  for (const QString& warning : warnings) warn(warning);
  return content;
}

QRectF LayerPainter::reachOfInstance(const SketchJson& instance) {
  const QString symbolID = textIn(instance, "symbolID");
  if (openSymbols_.contains(symbolID) || layersLeft_-- <= 0) return {};
  openSymbols_.append(symbolID);
  const QRectF reach = reachOfContents(expanded(instance));
  openSymbols_.removeLast();
  const double scale = numberIn(instance, "scale", 1);
  return scale > 0 ? QTransform::fromScale(scale, scale).mapRect(reach) : reach;
}

QRect LayerPainter::reachOnCanvas(const Subject& subject) {
  const QTransform toPicture = sketchTransform(subject.layer).inverted() * subject.canvas.toPicture;
  const QRectF reach = toPicture.mapRect(reachOf(subject.layer));
  return touchedPixels(reach, 0, subject.canvas.surface->rect());
}

bool LayerPainter::tints(const Subject& subject) const {
  return documentVersion_ >= kFirstWithTints && !subject.style.fills.isEmpty() &&
         isPlainContainer(subject.layer);
}

void LayerPainter::paintByItself(Subject* subject) {
  const Canvas below = subject->canvas;
  const int reach = ownBlurReach(subject->style, scaleOf(below.toPicture));
  const QRect rect = reachOnCanvas(*subject).adjusted(-reach, -reach, reach, reach);
  const qint64 held = heldPixels_ + pixelsOf(rect);
  if (!hasRoomFor(held, subject->layer)) return paintSubject(*subject);
  const QScopedValueRollback holds(heldPixels_, held);
  Surface alone = Surface::of(rect);
  if (alone.isEmpty()) return;
  subject->canvas = {&alone, below.toPicture, {}};
  paintSubject(*subject);
  if (tints(*subject)) tint(*subject, below.toPicture, &alone);
  // The shadow of it all may bring what lies outside into sight.
  const bool castsShadows = isPlainContainer(subject->layer) && !subject->style.shadows.isEmpty();
  blurAlone(*subject, below.toPicture, castsShadows ? alone.rect() : below.surface->rect(), &alone);
  if (castsShadows) {
    // The shadows belong to the group, and fade with it.
    Surface content = alone;
    alone.pixels.fill(Qt::transparent);
    const Caster caster{QRectF(content.rect()),
                        [&](Surface* onto, double) {
                          compose(content, {onto, {}, {}}, BlendMode::Normal, 1);
                        },
                        false};
    paintShadows(*subject, caster);
    compose(content, {&alone, {}, {}}, BlendMode::Normal, 1);
  }
  compose(alone, below, subject->style.blendMode, subject->style.opacity);
}

/// Lays the fills of a group or an instance over what was drawn of it, and over nothing else.
void LayerPainter::tint(const Subject& subject, const QTransform& toPicture, Surface* alone) {
  const QPainterPath everything =
      rectPath(toPicture.inverted().mapRect(QRectF(alone->rect()).adjusted(-1, -1, 1, 1)));
  for (const Paint& fill : subject.style.fills) {
    if (isStopped()) return;
    if (fill.kind == Paint::Kind::Pattern && leavesOutPictures_) continue;
    const bool isPattern = fill.kind == Paint::Kind::Pattern;
    QPainter painter;
    begin(&painter, {alone, toPicture, {}});
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.setOpacity(fill.opacity);
    paintArea(&painter, everything, fill, subject.frame(),
              isPattern ? pictureOf(*fill.image) : nullptr);
  }
}

/// What a motion smears has the blur's radius on both sides; a zoom reaches as far at the corners.
void LayerPainter::blurAlone(const Subject& subject, const QTransform& toPicture,
                             const QRect& needed, Surface* alone) {
  const QPointF origin = alone->origin;
  const double scale = scaleOf(toPicture);
  int later = 0;
  for (const Blur& own : subject.style.blurs) later += reachOfBlur(own, scale);
  for (const Blur& own : subject.style.blurs) {
    // The blurs that follow look around what is needed in the end.
    later -= reachOfBlur(own, scale);
    const QRect inAlone = needed.translated(-alone->origin).adjusted(-later, -later, later, later);
    const double radius = std::min(own.radius * scale, kMostBlur);
    if (own.kind == Blur::Kind::Gaussian) blur(&alone->pixels, radius, stop_);
    if (own.kind == Blur::Kind::Motion) {
      const QPointF streak = QLineF::fromPolar(radius, own.angle).p2();
      smear(
          &alone->pixels, inAlone, radius, [=](const QPointF&) { return streak; }, stop_);
    }
    if (own.kind == Blur::Kind::Zoom) {
      const QSizeF size = subject.frame().size();
      const QPointF center =
          toPicture.map(QPointF(own.center.x() * size.width(), own.center.y() * size.height()));
      const double half = std::hypot(size.width(), size.height()) / 2 * scale;
      smear(
          &alone->pixels, inAlone, radius,
          [=](const QPointF& at) {
            return (at + origin - center) * (radius / std::max(half, 1.0));
          },
          stop_);
      warn(u"The zoom blur of \"%1\" may be weaker or stronger than it should be."_s.arg(
          textIn(subject.layer, "name")));
    }
  }
}

void LayerPainter::paintSubject(const Subject& subject) {
  if (hasOutline(subject.layer)) return paintShape(subject);
  if (subject.kind == u"text") return paintText(subject);
  if (subject.kind == u"bitmap") return paintBitmap(subject);
  if (isSketchFrame(subject.layer)) return paintInFrame(subject, cutsItsContents(subject.layer));
  if (subject.kind == u"group" || subject.kind == u"page") return paintGroup(subject);
  if (subject.kind == u"symbolInstance") return paintInstance(subject);
  if (subject.kind == u"slice" || subject.kind == u"MSImmutableHotspotLayer") return;
  warn(u"\"%1\" is a layer of an unknown kind, \"%2\"; what is in it is drawn."_s.arg(
      textIn(subject.layer, "name"), subject.kind));
  paintGroup(subject);
}

void LayerPainter::paintGroup(const Subject& subject) {
  const SketchJson& layers = listIn(subject.layer, "layers");
  paintRange(layers, 0, layers.size(), subject.canvas);
}

void LayerPainter::paintArtboard(const Subject& subject) {
  if (flagIn(subject.layer, "hasBackgroundColor")) {
    QPainter painter;
    begin(&painter, subject.canvas);
    painter.fillPath(outlineOf(subject.layer),
                     readColor(memberOf(subject.layer, "backgroundColor")));
  }
  paintInFrame(subject, cutsItsContents(subject.layer));
}

/// What is in an artboard or a frame, on its fills and under its borders.
void LayerPainter::paintInFrame(const Subject& subject, bool isCut) {
  const QPainterPath outline = outlineOf(subject.layer);
  if (!subject.style.shadows.isEmpty()) paintShadows(subject, casterOf(subject, outline));
  paintFills(subject, outline);
  Subject contents = subject;
  if (isCut) contents.canvas = cutCanvas(subject.canvas, outline);
  paintGroup(contents);
  paintInnerShadows(subject, outline);
  paintBorders(subject, outline);
}

void LayerPainter::paintInstance(const Subject& subject) {
  const QString symbolID = textIn(subject.layer, "symbolID");
  const QString name = textIn(subject.layer, "name");
  if (openSymbols_.contains(symbolID)) {
    return warn(u"The symbol of \"%1\" contains itself; it is left out there."_s.arg(name));
  }
  const SketchJson content = expanded(subject.layer);
  if (content.is_null()) {
    return warn(u"The symbol of \"%1\" is missing."_s.arg(name));
  }
  for (const char* spacing : {"horizontalSpacing", "verticalSpacing"}) {
    if (numberIn(subject.layer, spacing) == 0) continue;
    warn(u"The spacing that \"%1\" sets for its layout is left out."_s.arg(name));
  }
  openSymbols_.append(symbolID);
  const double scale = numberIn(subject.layer, "scale", 1);
  Canvas canvas = subject.canvas;
  if (scale > 0 && scale != 1) canvas = canvas.within(QTransform::fromScale(scale, scale));
  if (flagIn(content, "hasBackgroundColor") &&
      flagIn(content, "includeBackgroundColorInInstance")) {
    QPainter painter;
    begin(&painter, canvas);
    painter.fillPath(rectPath({{0, 0}, rectIn(content, "frame").size()}),
                     readColor(memberOf(content, "backgroundColor")));
  }
  paintContents(content, canvas);
  openSymbols_.removeLast();
}

void LayerPainter::paintShape(const Subject& subject) {
  const QPainterPath outline = outlineOf(subject.layer);
  if (outline.isEmpty()) return;
  if (!subject.style.shadows.isEmpty()) paintShadows(subject, casterOf(subject, outline));
  paintFills(subject, outline);
  paintInnerShadows(subject, outline);
  paintBorders(subject, outline);
}

void LayerPainter::paintFills(const Subject& subject, const QPainterPath& outline) {
  for (const Paint& fill : subject.style.fills) {
    if (isStopped()) return;
    if (fill.kind == Paint::Kind::Noise) {
      warn(u"The noise on \"%1\" has other grains here."_s.arg(textIn(subject.layer, "name")));
    }
    paintWith(fill, outline, subject.frame(), subject.canvas);
  }
}

void LayerPainter::paintWith(const Paint& paint, const QPainterPath& area, const QRectF& box,
                             const Canvas& canvas) {
  const bool isPattern = paint.kind == Paint::Kind::Pattern;
  if (isPattern && leavesOutPictures_) return;
  const ImageRef picture = isPattern ? pictureOf(*paint.image) : nullptr;
  const auto composition = compositionOf(paint.blendMode);
  if (composition) {
    return paintInBands(canvas, area, stop_, [&](const Canvas& part) {
      QPainter painter;
      begin(&painter, part);
      painter.setCompositionMode(*composition);
      painter.setOpacity(paint.opacity);
      paintArea(&painter, area, paint, box, picture);
    });
  }
  Surface alone = Surface::of(
      touchedPixels(canvas.toPicture.mapRect(area.boundingRect()), 0, canvas.surface->rect()));
  if (alone.isEmpty()) return;
  paintInBands({&alone, canvas.toPicture, {}}, area, stop_, [&](const Canvas& part) {
    QPainter painter;
    begin(&painter, part);
    paintArea(&painter, area, paint, box, picture);
  });
  compose(alone, canvas, paint.blendMode, paint.opacity);
}

void LayerPainter::paintBorders(const Subject& subject, const QPainterPath& outline) {
  if (subject.style.borders.isEmpty()) return;
  const LayerStyle style = withBearableDashes(subject.style, outline);
  const double detail = scaleOf(subject.canvas.toPicture);
  const bool isOpen = isOpenOutline(outline);
  for (const Border& border : style.borders) {
    if (isStopped()) return;
    const double width = border.thickness;
    if (isOpen || border.position == Border::Position::Center) {
      QPainterPath area = strokeArea(outline, style, width, detail);
      area.addPath(markerArea(outline, style, width));
      paintWith(border.paint, area, subject.frame(), subject.canvas);
      continue;
    }
    const bool isInside = border.position == Border::Position::Inside;
    const QPainterPath side =
        isInside ? outline : everythingBut(plainOutline(subject, outline), 4 * width);
    // Twice the width, of which the side shows one half.
    const QPainterPath area = strokeArea(outline, style, 2 * width, detail);
    const QRectF box =
        isInside ? subject.frame() : subject.frame().adjusted(-width, -width, width, width);
    paintWith(border.paint, area, box, cutCanvas(subject.canvas, side));
  }
}

bool LayerPainter::combines(const Subject& subject, const QPainterPath& first,
                            const QPainterPath& second) {
  if (canCombine(first, second)) return true;
  warn(u"The outline of \"%1\" crosses itself too often for its borders to be exact."_s.arg(
      textIn(subject.layer, "name")));
  return false;
}

QPainterPath LayerPainter::plainOutline(const Subject& subject, const QPainterPath& outline) {
  const bool isPlain = outline.fillRule() == Qt::OddEvenFill || !combines(subject, outline);
  return isPlain ? outline : outline.simplified();
}

Caster LayerPainter::casterOf(const Subject& subject, const QPainterPath& outline) {
  const LayerStyle style = withBearableDashes(subject.style, outline);
  const double scale = scaleOf(subject.canvas.toPicture);
  const QTransform toPicture = subject.canvas.toPicture;
  const bool isFilled = !style.fills.isEmpty();
  QList<QPainterPath> borders;
  for (const Border& border : style.borders) {
    if (isStopped()) return {};
    const bool isCentered = border.position == Border::Position::Center || isOpenOutline(outline);
    if (border.position == Border::Position::Inside && isFilled && !isCentered) continue;
    const double width = isCentered ? border.thickness : 2 * border.thickness;
    QPainterPath area = strokeArea(outline, style, width, scale);
    if (border.position == Border::Position::Inside && !isCentered &&
        combines(subject, area, outline)) {
      area = area.intersected(outline);
    }
    borders.append(toPicture.map(area));
  }
  const QPainterPath filled = toPicture.map(outline);
  QPainterPath edge = isFilled || borders.isEmpty() ? filled : borders.first();
  const bool isSpread = std::any_of(style.shadows.begin(), style.shadows.end(),
                                    [](const Shadow& shadow) { return shadow.spread != 0; });
  if (isSpread) {
    for (const QPainterPath& border : borders.mid(isFilled ? 0 : 1)) {
      if (!isStopped() && combines(subject, edge, border)) edge = edge.united(border);
    }
  }
  QPainterPath everything = filled;
  for (const QPainterPath& border : borders) everything.addPath(border);
  const auto draw = [=, stop = stop_](Surface* surface, double spread) {
    paintInBands({surface, {}, {}}, everything, stop, [&](const Canvas& part) {
      QPainter painter;
      begin(&painter, part);
      if (isFilled) painter.fillPath(filled, Qt::black);
      for (const QPainterPath& border : borders) painter.fillPath(border, Qt::black);
      if (spread == 0) return;
      // Less than nothing is taken off the rim.
      if (spread < 0) painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
      painter.strokePath(edge, spreadPen(spread));
    });
  };
  const bool isSolid = std::any_of(style.fills.begin(), style.fills.end(), isOpaque) || !isFilled;
  QRectF bounds = filled.boundingRect();
  for (const QPainterPath& border : borders) bounds |= border.boundingRect();
  return {bounds, draw, !isSolid};
}

void LayerPainter::paintShadows(const Subject& subject, const Caster& caster) {
  const double scale = scaleOf(subject.canvas.toPicture);
  for (const Shadow& shadow : subject.style.shadows) {
    if (isStopped()) return;
    paintShadow(caster, shadow, scale, subject.canvas, stop_);
  }
}

void LayerPainter::paintInnerShadows(const Subject& subject, const QPainterPath& outline) {
  const double scale = scaleOf(subject.canvas.toPicture);
  for (const Shadow& shadow : subject.style.innerShadows) {
    if (isStopped()) return;
    paintInnerShadow(subject.canvas.toPicture.map(outline), shadow, scale, subject.canvas, stop_);
  }
}

void LayerPainter::paintBackgroundBlur(const Subject& subject) {
  for (const Blur& glass : subject.style.blurs) {
    if (isStopped()) return;
    if (glass.kind != Blur::Kind::Background || !(glass.radius > 0)) continue;
    const QPainterPath outline = maskOutline(subject.layer);
    const QPainterPath place =
        subject.canvas.toPicture.map(sketchTransform(subject.layer).inverted().map(outline));
    const double deviation = std::min(glass.radius * scaleOf(subject.canvas.toPicture), kMostBlur);
    const int reach = blurReach(deviation);
    const QRect rect = touchedPixels(place.boundingRect(), reach, subject.canvas.surface->rect());
    if (rect.isEmpty()) continue;
    const QPoint origin = subject.canvas.surface->origin;
    Surface seen{subject.canvas.surface->pixels.copy(rect.translated(-origin)), rect.topLeft()};
    blur(&seen.pixels, deviation, stop_);
    if (glass.saturation != 1) {
      seen.pixels = toned(seen.pixels, {{.saturation = glass.saturation}});
    }
    Canvas within = subject.canvas;
    within.clips.append(place);
    compose(seen, within, BlendMode::Normal, 1);
  }
}

QPainterPath LayerPainter::pathUnder(const SketchJson& text) {
  if (!below_ || !flagIn(text, "automaticallyDrawOnUnderlyingPath")) return {};
  const QTransform toText = sketchTransform(*below_) * sketchTransform(text).inverted();
  return toText.map(outlineOf(*below_));
}

TextShape LayerPainter::textOf(const SketchJson& layer) {
  TextBox box = readTextBox(layer);
  box.path = pathUnder(layer);
  const bool frameTells = box.fitsText && box.behaviour == TextBox::Behaviour::AutoWidth;
  if (!frameTells && !measures_) measures_ = measureFonts(document_);
  const TextRuns runs = readTextRuns(layer);
  const TextShape shape = shapeText(runs, box, measures_.value_or(FontMeasures()));
  warnOfText(layer, runs, shape, !box.path.isEmpty());
  return shape;
}

void LayerPainter::warnOfText(const SketchJson& layer, const TextRuns& runs, const TextShape& shape,
                              bool hasPath) {
  for (const QString& font : shape.missingFonts) {
    warn(u"The font %1 is not installed; another stands in."_s.arg(font));
  }
  const QString name = textIn(layer, "name");
  if (shape.lacksCharacters) {
    warn(u"Some characters of \"%1\" are in no font here."_s.arg(name));
  }
  if (flagIn(layer, "automaticallyDrawOnUnderlyingPath")) {
    warn((hasPath ? u"Where on the path below it \"%1\" begins is a guess."_s
                  : u"There is no shape below \"%1\" for it to run along."_s)
             .arg(name));
  }
  if (std::any_of(runs.runs.begin(), runs.runs.end(),
                  [](const TextRun& run) { return run.style.hasVariations; })) {
    warn(u"Of the font variations of \"%1\" only the weight is drawn."_s.arg(name));
  }
}

void LayerPainter::paintText(const Subject& subject) {
  const TextShape shape = textOf(subject.layer);
  paintsDisplayP3_ ? paintEmblemsInDisplayP3(shape, subject.canvas)
                   : paintEmblems(shape, subject.canvas);
  const QPainterPath outline = shape.outline();
  if (outline.isEmpty()) return;
  const LayerStyle& style = subject.style;
  if (!style.shadows.isEmpty()) {
    Subject filled = subject;
    if (style.fills.isEmpty()) {
      for (const TextShape::Area& area : shape.areas) {
        Paint paint{};
        paint.color = area.color;
        filled.style.fills.append(paint);
      }
    }
    paintShadows(subject, casterOf(filled, outline));
  }
  if (style.fills.isEmpty()) {
    paintInBands(subject.canvas, outline, stop_, [&](const Canvas& part) {
      QPainter painter;
      begin(&painter, part);
      for (const TextShape::Area& area : shape.areas) painter.fillPath(area.path, area.color);
    });
  } else {
    paintFills(subject, outline);
  }
  paintInnerShadows(subject, outline);
  paintBorders(subject, outline);
}

void LayerPainter::paintBitmap(const Subject& subject) {
  const QRectF frame = subject.frame();
  const QPainterPath outline = rectPath(frame);
  const bool showsPicture = !flagIn(subject.layer, "fillReplacesImage") && !leavesOutPictures_;
  const ImageRef picture = showsPicture ? pictureOf(memberOf(subject.layer, "image")) : nullptr;
  QImage pixels = picture ? picture->pixels() : QImage();
  if (!pixels.isNull()) {
    pixels = toned(shrunkFor(pixels, frame, subject.canvas.toPicture), subject.style.colorControls);
  }
  const QRectF crop = cropOf(subject.layer, frame);
  const auto drawPicture = [&](const Canvas& canvas) {
    if (pixels.isNull()) return;
    QPainter painter;
    begin(&painter, canvas);
    if (crop != frame) cut(&painter, rectPath(crop));
    painter.drawImage(frame, pixels);
  };
  if (!subject.style.shadows.isEmpty()) {
    Caster caster = casterOf(subject, outline);
    const auto drawRest = caster.draw;
    caster.draw = [&, drawRest](Surface* surface, double spread) {
      drawPicture({surface, subject.canvas.toPicture, {}});
      drawRest(surface, spread);
    };
    paintShadows(subject, caster);
  }
  drawPicture(subject.canvas);
  paintFills(subject, outline);
  paintInnerShadows(subject, outline);
  paintBorders(subject, outline);
}

QPainterPath LayerPainter::outlineOf(const SketchJson& layer) {
  QStringList warnings;
  const QPainterPath outline = layerOutline(layer, &warnings, stop_);
  for (const QString& warning : warnings) warn(warning);
  return outline;
}

/// What a layer that masks lets through, in the coordinates around it.
QPainterPath LayerPainter::maskOutline(const SketchJson& layer) {
  const QString kind = classOf(layer);
  const QTransform toParent = sketchTransform(layer);
  if (hasOutline(layer) || isSketchFrame(layer)) return toParent.map(outlineOf(layer));
  if (kind == u"text") return toParent.map(textOf(layer).outline());
  return toParent.map(rectPath({{0, 0}, rectIn(layer, "frame").size()}));
}

ImageRef LayerPainter::pictureOf(const SketchJson& reference) {
  const ImageRef picture = document_.image(reference);
  if (picture && picture->isValid()) {
    if (!paintsDisplayP3_) return picture;
    ImageRef& inDisplayP3 = inDisplayP3_[picture];
    if (!inDisplayP3) inDisplayP3 = std::make_shared<Image>(toDisplayP3(picture->pixels()));
    return inDisplayP3;
  }
  warn(u"A picture is missing or cannot be read: %1."_s.arg(textIn(reference, "_ref")));
  return nullptr;
}

}  // namespace kelvar::render
