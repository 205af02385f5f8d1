#pragma once

#include <QList>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>
#include <memory>

#include "sketch/render/paint/BitmapTile.h"

namespace kelvar::render {

/// Where and how something is painted: a tile, the transform from the layer's coordinates to the
/// image's pixels, and the outlines, in the image's pixels, to which everything is clipped.
///
/// Copies of a context share a painter, which keeps the clip of the last operation: rasterizing an
/// outline takes longer than painting most of what it clips. The tile must outlive the contexts,
/// and its pixels must not be replaced during that time.
class PaintContext {
 public:
  PaintContext(BitmapTile* tile, const QTransform& toImage, const QList<QPainterPath>& clips = {});

  BitmapTile& tile() const;
  const QTransform& toImage() const { return toImage_; }
  const QList<QPainterPath>& clips() const { return clips_; }

  /// The same context in inner coordinates, which `inner` maps to those of this context.
  PaintContext within(const QTransform& inner) const;
  /// Clipped to one more outline, which is in the coordinates of this context or in the image's
  /// pixels.
  PaintContext clipped(const QPainterPath& outline) const;
  PaintContext clippedInImage(const QPainterPath& outline) const;
  /// Clipped only to these outlines, which are in the image's pixels; not clipped if there are
  /// none.
  PaintContext clippedOnly(const QList<QPainterPath>& clips) const;

 private:
  friend class ScopedPainter;
  class TilePainter;

  std::shared_ptr<TilePainter> painter_;
  QTransform toImage_;
  QList<QPainterPath> clips_;
};

/// A painter for one operation: antialiased, clipped, in the context's coordinates, and otherwise
/// in its default state. Only one may exist per tile at a time.
class ScopedPainter {
 public:
  explicit ScopedPainter(const PaintContext& context);
  ~ScopedPainter();
  ScopedPainter(const ScopedPainter&) = delete;
  ScopedPainter& operator=(const ScopedPainter&) = delete;

  QPainter* operator->() { return painter_; }
  QPainter* get() { return painter_; }

 private:
  /// Keeps the painter alive if the context was a temporary.
  std::shared_ptr<PaintContext::TilePainter> owner_;
  QPainter* painter_;
};

/// Clips to an outline in the painter's coordinates. QPainter itself clips rectangles at whole
/// pixels; this function gives them smooth edges, too.
void cut(QPainter* painter, const QPainterPath& outline);

}  // namespace kelvar::render
