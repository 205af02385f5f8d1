#pragma once

#include <QToolButton>

namespace kelvar {

/// A tool button whose picture is an SVG in one colour: the palette's colour for text, so that it
/// serves light and dark palettes.
class GlyphButton : public QToolButton {
  Q_OBJECT
  /// The SVG's file or resource.
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
