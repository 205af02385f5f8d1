#pragma once

#include <QRectF>

#include "platform/image/BezierPath.h"
#include "scripting/Boxed.h"

namespace kelvar {

/// A vector path as scripts see it. They can add to it; what receives one takes a copy.
class NSBezierPath : public Boxed {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  NSBezierPath() = default;
  /// `path` holds a `BezierPath`.
  explicit NSBezierPath(const QVariant& path) : path_(path.value<BezierPath>()) {}

  QVariant value() const override { return QVariant::fromValue(path_); }
  QString description() const override;

  const BezierPath& path() const { return path_; }
  /// Adds the elements of another path.
  void append(const BezierPath& path);
  void appendRect(const QRectF& rect);
  void appendOval(const QRectF& rect);
  /// The radii are limited to half the sides.
  void appendRoundedRect(const QRectF& rect, double xRadius, double yRadius);
  /// Raises, as the host does, for an element before the first move.
  void append(const BezierPath::Element& element);
  /// Raises for an empty path.
  QPointF currentPoint() const;
  void clear() { path_ = {}; }

 private:
  BezierPath path_;
};

}  // namespace kelvar
