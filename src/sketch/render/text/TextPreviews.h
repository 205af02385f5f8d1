#pragma once

#include <QRectF>
#include <optional>
#include <vector>

#include "platform/image/PdfPages.h"
#include "sketch/render/text/TextLayout.h"

namespace kelvar {
class SketchDocument;
}

namespace kelvar::render {

/// The texts that a document shows, as Sketch drew them with its own fonts. Documents of Sketch 54
/// to 70 have them as pages of a PDF, for people who lack the fonts. Most say which page is which
/// text; in others the text and the size of a page tell.
class TextPreviews {
 public:
  /// `document` must outlive this object. Reads nothing yet.
  explicit TextPreviews(const SketchDocument& document) : document_(document) {}

  /// The layout of the text in a layer with this frame in its parent; none if the document does not
  /// show that text in that size, or not as outlines. A single color is that of `runs`.
  std::optional<TextLayout> find(const TextRuns& runs, const QRectF& frame);

 private:
  struct Preview {
    int page = 0;
    /// What the document says about the page; none if it says nothing.
    std::optional<TextRuns> runs = {};
    QSizeF size = {};  ///< Of the frame; empty if it is not known.
    QString characters = {};
    std::optional<PageOutlines> outlines = {};
  };

  void load();
  void loadFromMetadata(const QByteArray& metadata);
  void loadFromPages();
  const PageOutlines* outlinesOf(Preview* preview);

  const SketchDocument& document_;
  bool isLoaded_ = false;
  std::optional<PdfPages> pages_;
  std::vector<Preview> previews_;
};

}  // namespace kelvar::render
