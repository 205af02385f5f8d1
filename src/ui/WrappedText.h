#pragma once

#include <QFont>
#include <QString>
#include <QTextLayout>

namespace kelvar {

/// Plain text wrapped to a width in points, at words, or inside a word that is wider than a line.
class WrappedText {
 public:
  WrappedText(const QString& text, const QFont& font, double width);

  /// In points. The height of one line for an empty text.
  double height() const { return height_; }
  void draw(QPainter* painter, const QPointF& topLeft) const { layout_.draw(painter, topLeft); }

 private:
  QTextLayout layout_;
  double height_ = 0;
};

}  // namespace kelvar
