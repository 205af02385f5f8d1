#pragma once

#include <QSet>
#include <optional>
#include <stop_token>

#include "sketch/document/SketchDocument.h"
#include "sketch/render/VersionRules.h"
#include "sketch/render/displaylist/DisplayItem.h"
#include "sketch/render/displaylist/RenderWarnings.h"
#include "sketch/render/text/FontWidthCalibration.h"
#include "sketch/render/text/TextPreviews.h"

namespace kelvar::render {

/// The contents of one drawing: a tree of items with decoded layers, from bottom to top, in which
/// symbols are expanded, overrides applied and text laid out.
///
/// The tree is built lazily: each part is created once, when it is first needed for painting or for
/// the bounds of an enclosing item, and is freed after its item is painted. A symbol that contains
/// exponentially many layers therefore costs time, which a stop can end, but not memory. Requires
/// an application with fonts. Once a stop is requested, the results are incomplete.
class DisplayList {
 public:
  /// Maximum number of layers in total, with symbols expanded. A document with more almost
  /// certainly nests symbols that multiply each other.
  static constexpr int kMaxLayers = 200'000;
  /// Maximum number of nested instances whose layouts change, for the same reason.
  static constexpr int kLayoutBudget = 10'000;
  /// Maximum depth of nested layers and symbols, each of which takes some of the stack.
  static constexpr int kMaxDepth = 400;
  /// Maximum number of JSON values, of about a hundred bytes each, in symbols that are expanded for
  /// the bounds of an enclosing item and kept until they are painted. Beyond this limit, a symbol
  /// is expanded again.
  static constexpr size_t kMaxHeldValues = size_t{1} << 20;

  /// Omits the images of layers whose identifiers are in `withoutImages`. All arguments must
  /// outlive this object.
  DisplayList(const SketchDocument& document, const QSet<QString>& withoutImages,
              RenderWarnings* warnings, const std::stop_token& stop);

  /// The item that a drawing begins with.
  DisplayItem itemOf(const Layer& layer) const;

  /// The items in a group, an artboard, a page or the master of a symbol.
  DisplayItem::List& contentsOf(DisplayItem* container);
  /// The master of an instance's symbol as the instance shows it; null if it is missing.
  DisplayItem* masterOf(DisplayItem* instance);
  /// Whether an instance is inside its own symbol.
  static bool isRecursive(const DisplayItem& instance);

  /// The area that the item may paint, including borders, shadows and blurs, in its parent's
  /// coordinates. A generous estimate: it includes all visible parts of a blur, and assumes the
  /// greatest width that a text's letters could have.
  const QRectF& boundsOf(DisplayItem* item);
  /// The outline of a shape or a shape group, an artboard or a frame, in its own coordinates.
  const QPainterPath& outlineOf(DisplayItem* item);
  /// The area that a mask leaves visible, in its parent's coordinates.
  QPainterPath maskOutlineOf(DisplayItem* item);
  const TextLayout& textOf(DisplayItem* item);

  /// Frees what was made for an item that has been painted.
  void release(DisplayItem* item);
  /// Frees it once `kMaxHeldValues` are held: it is made again when it is needed.
  void releaseWhenFull(DisplayItem* item) {
    if (heldValues_ > kMaxHeldValues) release(item);
  }

  /// Counts a layer that is drawn or inspected. False if there are too many.
  bool takeLayer() { return layersLeft_-- > 0; }
  void warn(const QString& warning) { warnings_->add(warning); }
  const VersionRules& rules() const { return rules_; }
  bool isStopped() const { return stop_.stop_requested(); }
  const std::stop_token& stop() const { return stop_; }

 private:
  DisplayItem::List itemsIn(const Layer& container, const QStringList& symbolStack,
                            int depth) const;
  void writeOut(DisplayItem* instance);
  QRectF boundsOfContents(DisplayItem* container);
  QRectF boundsOfInstance(DisplayItem* instance);
  QRectF boundsOfText(DisplayItem* text);
  const TextRuns& textRunsOf(DisplayItem* text);
  /// The path that the text runs along, in the text's coordinates.
  QPainterPath pathUnder(DisplayItem* text);
  void warnOfText(const DisplayItem& text, bool hasPath);

  const SketchDocument& document_;
  const VersionRules rules_;
  const QSet<QString>& withoutImages_;
  RenderWarnings* const warnings_;
  const std::stop_token stop_;
  int layersLeft_ = kMaxLayers;
  int layoutBudget_ = kLayoutBudget;
  size_t heldValues_ = 0;
  std::optional<FontWidthCalibrations> calibrations_;
  std::optional<TextPreviews> previews_;
  /// Fonts with missing characters that a warning names.
  QSet<QString> incompleteFonts_;
};

}  // namespace kelvar::render
