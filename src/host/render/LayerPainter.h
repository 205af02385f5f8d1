#pragma once

#include <QSet>
#include <QStringList>
#include <map>
#include <optional>
#include <stop_token>

#include "host/SketchDocument.h"
#include "host/SketchJson.h"
#include "host/render/FontMeasures.h"
#include "host/render/LayerStyle.h"
#include "host/render/ShadowPainter.h"
#include "host/render/Surface.h"
#include "host/render/TextShape.h"

namespace kelvar::render {

/// Draws layers and what is in them onto a canvas, the lowest first.
///
/// A layer draws its shadows, its fills, its inner shadows and its borders in this order; one that
/// has an opacity, a blend mode or a blur is drawn by itself first, and then mixed with what lies
/// below. What cannot be drawn is drawn as well as can be, with a line in `warnings`. Once it is to
/// stop, whatever is left is left out, and what was drawn is worth nothing.
class LayerPainter {
 public:
  /// Of all layers together, symbols written out: more is a symbol that multiplies itself.
  static constexpr int kMostLayers = 200'000;
  /// Of nested instances whose layouts change, likewise.
  static constexpr int kMostMeasures = 10'000;
  /// Of layers, symbols and masks in one another, of which each takes some of the stack.
  static constexpr int kMostDepth = 400;
  /// Of layers that are drawn by themselves before they are mixed with what lies below.
  static constexpr qint64 kMostHeldPixels = qint64{1} << 29;

  LayerPainter(const SketchDocument& document, const QSet<QString>& withoutPictures,
               const std::stop_token& stop = {});

  /// The layer in its place in `canvas`, which is in the coordinates around it.
  void paintLayer(const SketchJson& layer, const Canvas& canvas);
  /// What is on an artboard, or in another container, from the canvas's origin on: without the
  /// container's own place, its background included.
  void paintContents(const SketchJson& container, const Canvas& canvas);

  const QStringList& warnings() const { return warnings_; }

  /// Whether the document's colours, and so those of the canvas, are numbers of Display P3 rather
  /// than sRGB.
  bool paintsDisplayP3() const { return paintsDisplayP3_; }

 private:
  /// A layer with what is read of it, on the canvas of its own coordinates.
  struct Subject {
    const SketchJson& layer;
    LayerStyle style;
    Canvas canvas;
    QString kind;
    QRectF frame() const { return {{0, 0}, rectIn(layer, "frame").size()}; }
  };

  void paintRange(const SketchJson& layers, size_t first, size_t last, Canvas canvas);
  void paintByItself(Subject* subject);
  void tint(const Subject& subject, const QTransform& toPicture, Surface* alone);
  /// Right within `needed`, which is in the picture's pixels.
  void blurAlone(const Subject& subject, const QTransform& toPicture, const QRect& needed,
                 Surface* alone);
  void paintSubject(const Subject& subject);

  void paintGroup(const Subject& subject);
  void paintInstance(const Subject& subject);
  void paintArtboard(const Subject& subject);
  void paintInFrame(const Subject& subject, bool isCut);
  void paintShape(const Subject& subject);
  void paintText(const Subject& subject);
  void paintBitmap(const Subject& subject);

  void paintFills(const Subject& subject, const QPainterPath& outline);
  void paintBorders(const Subject& subject, const QPainterPath& outline);
  void paintWith(const Paint& paint, const QPainterPath& area, const QRectF& box,
                 const Canvas& canvas);
  void paintShadows(const Subject& subject, const Caster& caster);
  void paintInnerShadows(const Subject& subject, const QPainterPath& outline);
  void paintBackgroundBlur(const Subject& subject);

  /// See `layerOutline`; its warnings are added to ours.
  QPainterPath outlineOf(const SketchJson& layer);
  QPainterPath maskOutline(const SketchJson& layer);
  Caster casterOf(const Subject& subject, const QPainterPath& outline);
  /// See `canCombine`; warns where it cannot.
  bool combines(const Subject& subject, const QPainterPath& first, const QPainterPath& second = {});
  /// The outline as one that the odd-even rule fills alike.
  QPainterPath plainOutline(const Subject& subject, const QPainterPath& outline);
  TextShape textOf(const SketchJson& layer);
  /// What the text runs along, in its coordinates: the shape below it, where it asks for that.
  QPainterPath pathUnder(const SketchJson& text);
  void warnOfText(const SketchJson& layer, const TextRuns& runs, const TextShape& shape,
                  bool hasPath);
  QRectF reachOf(const SketchJson& layer);
  QRectF reachOfContents(const SketchJson& container);
  QRectF reachOfText(const SketchJson& text);
  /// See `expandedInstance`; its warnings are added to ours.
  SketchJson expanded(const SketchJson& instance);
  QRectF reachOfInstance(const SketchJson& instance);
  QRect reachOnCanvas(const Subject& subject);
  bool tints(const Subject& subject) const;
  ImageRef pictureOf(const SketchJson& reference);
  bool isStopped() const { return stop_.stop_requested(); }
  void warn(const QString& sentence);
  /// Of each kind of thing once, with the first layer that has it.
  void warnOfUnreadStyle(const SketchJson& layer);
  /// Whether that many pixels can be held; else the layer is drawn without.
  bool hasRoomFor(qint64 pixels, const SketchJson& layer);

  const SketchDocument& document_;
  const QSet<QString>& withoutPictures_;
  const std::stop_token stop_;
  const int documentVersion_;
  const bool paintsDisplayP3_;
  /// Pictures in those colours.
  std::map<ImageRef, ImageRef> inDisplayP3_;
  QStringList warnings_;
  QSet<QString> unreadStyle_;
  /// The layer under the one that is drawn or measured, if any.
  const SketchJson* below_ = nullptr;
  QStringList openSymbols_;
  int layersLeft_ = kMostLayers;
  int measuresLeft_ = kMostMeasures;
  int depth_ = 0;
  qint64 heldPixels_ = 0;
  bool leavesOutPictures_ = false;
  std::optional<FontMeasures> measures_;
};

}  // namespace kelvar::render
