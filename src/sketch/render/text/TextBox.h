#pragma once

#include <QPainterPath>
#include <QRectF>
#include <QSizeF>
#include <nlohmann/json_fwd.hpp>

namespace kelvar::render {

/// The frame of a text layer, and how its lines relate to it.
struct TextBox {
  enum class Behavior { AutoWidth = 0, AutoHeight = 1, Fixed = 2 };
  enum class Vertical { Top = 0, Middle = 1, Bottom = 2 };
  /// Where the heights of lines come from: the font's `hhea` table, the fields that are meant for
  /// Windows, or whichever of the two the frame's height shows. `hhea` of old versions of a font
  /// may say what the newer ones only say to Windows.
  enum class Metrics { Font, Windows, Frame };

  QSizeF size;
  Behavior behavior = Behavior::AutoWidth;
  Vertical vertical = Vertical::Top;
  /// Whether the text has the line spacing that Sketch keeps for old documents: with a fixed line
  /// height, glyphs are at the bottom of the line rather than in its middle. Derived from frames
  /// and images in documents from Sketch 49 and 52.
  bool hasOldLineSpacing = false;
  Metrics metrics = Metrics::Font;
  /// Whether the frame was made for this text.
  bool fitsText = true;
  /// The path that the text runs along, in the layer's coordinates. The text starts at the path's
  /// point nearest to its own start. Empty for straight text.
  QPainterPath path = {};
  /// The bounding box of the glyphs as Sketch measured it; empty if it is not known.
  QRectF ink;

  bool breaksLines() const { return behavior != Behavior::AutoWidth; }
  /// Whether Sketch measured ink that can be that of so many lines, of this height in total, in
  /// this frame.
  bool hasInkInside(double height, qsizetype lines) const;
  /// Whether the frame was made for lines of this height in total.
  bool showsHeight(double height) const;
};

/// Reads a text layer's JSON, without the path.
TextBox readTextBox(const nlohmann::ordered_json& layer);

}  // namespace kelvar::render
