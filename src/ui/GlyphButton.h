#pragma once

#include <QToolButton>

namespace kelvar {

/// A tool button whose icon is an SVG drawn in the palette's text color, so that it works with
/// light and dark palettes.
class GlyphButton : public QToolButton {
  Q_OBJECT
  /// The SVG's file name or resource path.
  Q_PROPERTY(QString glyph READ glyph WRITE setGlyph)

 public:
  explicit GlyphButton(QWidget* parent = nullptr);

  QString glyph() const { return glyph_; }
  void setGlyph(const QString& glyph);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QPixmap tinted(const QColor& color, double pixelsPerPoint) const;

  QString glyph_;
};

}  // namespace kelvar
