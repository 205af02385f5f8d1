#pragma once

#include <QRectF>
#include <QTransform>
#include <memory>
#include <string>
#include <vector>

#include "sketch/document/ImageReference.h"
#include "sketch/document/LayerStyle.h"
#include "sketch/document/SketchJson.h"

namespace kelvar {

/// The kind of a layer, from the JSON's "_class".
enum class LayerKind {
  Unknown,
  Page,
  Artboard,
  SymbolMaster,
  SymbolInstance,
  Group,
  ShapeGroup,
  Rectangle,
  Oval,
  Triangle,
  Polygon,
  Star,
  ShapePath,
  Text,
  Bitmap,
  Slice,
  Hotspot
};

/// The contents of a layer's JSON, except for its style. Lengths are in document units, y down.
struct LayerProperties {
  LayerKind kind = LayerKind::Unknown;
  /// The JSON's "_class", known or not.
  QString kindName;
  QString name, objectID;
  bool isVisible = true;

  /// In the coordinates of the parent layer.
  QRectF frame;
  /// Degrees, counterclockwise on screen.
  double rotation = 0;
  bool isFlippedHorizontal = false, isFlippedVertical = false;
  /// From the layer's own coordinates to its parent's.
  QTransform transform;

  /// A group with a background of its own. Newer documents use these instead of artboards and can
  /// nest them.
  bool isFrame = false;
  /// Whether an artboard or a frame clips contents that extend beyond it, and whether instances of
  /// a symbol master do so.
  bool clipsContent = false, clipsInstance = false;
  bool hasBackground = false;
  QColor background;
  bool exportsBackground = true, showsBackgroundInInstance = false;

  /// A mask cuts the layers above it, up to the first that breaks the chain.
  bool isMask = false, isAlphaMask = false, breaksMaskChain = false;
  /// How a part of a shape group is combined with those below it; -1 if it is not combined.
  int booleanOperation = -1;

  /// For an instance: the symbol, its scale factor, and whether the instance sets the spacing of
  /// its layout.
  QString symbolID;
  double symbolScale = 1;
  bool hasSpacing = false;

  /// For a bitmap. `crop` is in fractions of the frame's sides and empty for the whole image.
  ImageReference image;
  QRectF crop;
  bool fillReplacesImage = false;

  /// For a text layer: whether the text runs along the outline of the layer below it.
  bool followsPath = false;

  /// A rectangle, oval, triangle, polygon, star or shape path, which has a path of its own.
  bool isShape() const { return kind >= LayerKind::Rectangle && kind <= LayerKind::ShapePath; }
  /// A shape or a shape group. The outline of a group is made up of its parts.
  bool hasOutline() const { return isShape() || kind == LayerKind::ShapeGroup; }
  /// An artboard or a symbol master, which is also an artboard.
  bool isArtboard() const { return kind == LayerKind::Artboard || kind == LayerKind::SymbolMaster; }
  /// A group or an instance without paint of its own.
  bool isPlainContainer() const {
    return kind == LayerKind::SymbolInstance || (kind == LayerKind::Group && !isFrame);
  }
  /// The layer's frame in its own coordinates.
  QRectF box() const { return {{0, 0}, frame.size()}; }
};

/// A layer of a document or of an expanded symbol: a node that owns its child layers and the JSON
/// that it was read from.
///
/// The JSON is decoded on first use, and again after a change. Nodes never move in memory, even
/// when members or child layers are added. Each document belongs to one thread, the main one or any
/// other.
class Layer {
 public:
  using Children = std::vector<std::shared_ptr<Layer>>;

  /// `json` is an object. Moves the child layers out of it.
  explicit Layer(SketchJson json);
  Layer(const Layer&) = delete;
  Layer& operator=(const Layer&) = delete;

  /// Valid until the next call of `change`, as is the style.
  const LayerProperties& properties() const;
  const render::LayerStyle& style() const;
  /// From bottom to top.
  const Children& children() const { return children_; }
  /// Adds a child layer at this index, at most their number. The layer must not be in any other
  /// list, nor contain this one.
  void insertChild(size_t index, std::shared_ptr<Layer> child);
  /// Takes the child layer at this index out of the list.
  std::shared_ptr<Layer> takeChild(size_t index);

  /// The JSON without the child layers: their list is empty here.
  const SketchJson& json() const { return json_; }
  /// The same, for changes: discards the decoded properties and style, so make the change before
  /// reading them again. The list of layers must not be changed.
  SketchJson& change();

  /// The JSON with the child layers, as it was read.
  SketchJson toJson() const;
  /// Appends that JSON as UTF-8 on a single line.
  void appendTo(std::string* text) const;
  /// Calls `use` with the JSON of the layer and of each of its descendants.
  template <class Use>
  void eachJson(const Use& use) const {
    use(json_);
    for (const auto& child : children_) child->eachJson(use);
  }

 private:
  SketchJson json_;
  Children children_;
  mutable std::unique_ptr<const LayerProperties> properties_;
  mutable std::unique_ptr<const render::LayerStyle> style_;
};

}  // namespace kelvar
