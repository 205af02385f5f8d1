#pragma once

#include "sketch/document/DocumentFiles.h"

namespace kelvar::render {

/// How the version of Sketch that saved a document differs from others in what it draws. The rules
/// were found by comparing documents with the previews that Sketch stored in them.
struct VersionRules {
  static VersionRules of(const DocumentFiles& files);

  /// The longest side of a preview, in pixels.
  int maxPreviewSide = 2048;
  /// Whether a preview is an export of the document's first artboard, if there is one, instead of
  /// the open page.
  bool previewsFirstArtboard = false;
  /// Whether a page shows the backgrounds of artboards that are not included in exports.
  bool showsUnexportedBackgrounds = false;
  /// Whether the fills of groups and instances tint their contents.
  bool tintsGroups = false;
  /// Whether artboards and symbol masters are frames with a style. In older documents they also
  /// have one, but it is not drawn.
  bool stylesArtboards = false;
  /// Whether texts with old line spacing take the heights of their lines from the fields of a font
  /// that are meant for Windows.
  bool hasWindowsLineMetrics = false;
  /// Whether the baselines of texts lie on whole pixels.
  bool alignsBaselines = true;
  /// Whether the bounds of a text's glyphs are those of their ink, instead of its lines.
  bool measuresInk = false;
  /// Whether the size of an export includes every shadow up to its blur radius, instead of only the
  /// first shadow up to twice its blur radius.
  bool countsEachShadow = false;
};

}  // namespace kelvar::render
