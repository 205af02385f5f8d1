#pragma once

#include <QColor>
#include <QDataStream>
#include <QList>
#include <QPainterPath>
#include <QSizeF>
#include <QtNumeric>

namespace kelvar {

/// What a page shows as filled outlines, in order. Units are points, y down.
struct PageOutlines {
  struct Shape {
    QPainterPath path;
    QColor color;
    /// Where a glyph begins on its baseline; NaN for other shapes.
    double x = qQNaN(), baseline = qQNaN();
  };
  QSizeF size;
  QList<Shape> shapes;
  /// Whether the page has images or patterns, which are not in `shapes`.
  bool isIncomplete = false;
};

inline QDataStream& operator<<(QDataStream& stream, const PageOutlines::Shape& shape) {
  return stream << shape.path << shape.color << shape.x << shape.baseline;
}
inline QDataStream& operator>>(QDataStream& stream, PageOutlines::Shape& shape) {
  return stream >> shape.path >> shape.color >> shape.x >> shape.baseline;
}
inline QDataStream& operator<<(QDataStream& stream, const PageOutlines& page) {
  return stream << page.size << page.shapes << page.isIncomplete;
}
inline QDataStream& operator>>(QDataStream& stream, PageOutlines& page) {
  return stream >> page.size >> page.shapes >> page.isIncomplete;
}

}  // namespace kelvar
