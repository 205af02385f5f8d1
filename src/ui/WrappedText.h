#pragma once

#include <QFont>
#include <QString>
#include <QTextLayout>

namespace kelvar {

/// Plain text in lines of a given width in points, broken between words, and within a word that
/// is wider than a line. Lines are as far apart as the font wants.
class WrappedText {
 public:
  WrappedText(const QString& text, const QFont& font, double width);

  /// Of all lines; that of one line for the empty text.
  double height() const { return height_; }
  void draw(QPainter* painter, const QPointF& topLeft) const { layout_.draw(painter, topLeft); }

 private:
  QTextLayout layout_;
  double height_ = 0;
};

}  // namespace kelvar
