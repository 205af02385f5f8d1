#include "sketch/render/paint/PaintContext.h"

#include <algorithm>

namespace kelvar::render {

class PaintContext::TilePainter {
 public:
  explicit TilePainter(BitmapTile* tile) : tile_(tile) {}
  ~TilePainter() { uncut(0); }

  BitmapTile& tile() const { return *tile_; }

  QPainter& cutWith(const QList<QPainterPath>& clips) {
    if (!painter_.isActive()) start();
    const auto [firstOther, unused] =
        std::mismatch(applied_.begin(), applied_.end(), clips.begin(), clips.end());
    const qsizetype shared = firstOther - applied_.begin();
    uncut(shared);
    for (const QPainterPath& clip : clips.mid(shared)) {
      painter_.save();
      cut(&painter_, clip);
      applied_.append(clip);
    }
    return painter_;
  }

  QTransform toTile() const {
    return QTransform::fromTranslate(-tile_->origin.x(), -tile_->origin.y());
  }

 private:
  void uncut(qsizetype count) {
    for (; applied_.size() > count; applied_.removeLast()) painter_.restore();
  }

  void start() {
    painter_.begin(&tile_->pixels);
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter_.setPen(Qt::NoPen);
    painter_.setWorldTransform(toTile());
  }

  BitmapTile* const tile_;
  QPainter painter_;
  /// Each on the painter's stack of saved states.
  QList<QPainterPath> applied_;
};

PaintContext::PaintContext(BitmapTile* tile, const QTransform& toImage,
                           const QList<QPainterPath>& clips)
    : painter_(std::make_shared<TilePainter>(tile)), toImage_(toImage), clips_(clips) {}

BitmapTile& PaintContext::tile() const { return painter_->tile(); }

PaintContext PaintContext::within(const QTransform& inner) const {
  PaintContext result = *this;
  result.toImage_ = inner * toImage_;
  return result;
}

PaintContext PaintContext::clipped(const QPainterPath& outline) const {
  return clippedInImage(toImage_.map(outline));
}

PaintContext PaintContext::clippedInImage(const QPainterPath& outline) const {
  PaintContext result = *this;
  result.clips_.append(outline);
  return result;
}

PaintContext PaintContext::clippedOnly(const QList<QPainterPath>& clips) const {
  PaintContext result = *this;
  result.clips_ = clips;
  return result;
}

ScopedPainter::ScopedPainter(const PaintContext& context)
    : owner_(context.painter_), painter_(&owner_->cutWith(context.clips_)) {
  painter_->save();
  painter_->setWorldTransform(context.toImage_ * owner_->toTile());
}

ScopedPainter::~ScopedPainter() { painter_->restore(); }

void cut(QPainter* painter, const QPainterPath& outline) {
  QPainterPath path = outline;
  const QPointF inside = outline.boundingRect().center();
  path.addPolygon(QPolygonF({inside, inside + QPointF(1e-4, 0), inside}));
  painter->setClipPath(path, Qt::IntersectClip);
}

}  // namespace kelvar::render
