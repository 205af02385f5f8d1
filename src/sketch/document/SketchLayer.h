#pragma once

#include <QList>
#include <QRectF>
#include <QTransform>

#include "geometry/KVRect.h"
#include "pixels/Result.h"
#include "platform/image/BezierPath.h"
#include "runtime/Object.h"

namespace kelvar {

class Layer;
class SketchDocument;
class SketchLayer;
using SketchLayerRef = std::shared_ptr<SketchLayer>;

/// A layer of a Sketch document: a page, an artboard, a group, a shape, a text layer and so on.
///
/// Setters change the document's JSON. `valueForKey` returns any member of the JSON by its key
/// ("rotation", "style.fills"), in addition to the keys of the class description. A layer keeps its
/// JSON alive, but not the document. Lengths are in document units, y down. Each document belongs
/// to one thread, the main one or any other.
class KELVAR_EXPORT SketchLayer : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  /// The class that stands for this kind of layer in scripts.
  const ClassInfo& classInfo() const override;

  /// A layer for a decoded one, with its child layers. It is in no document until it is inserted
  /// into a layer of one.
  static SketchLayerRef create(std::unique_ptr<Layer> node);

  /// What kind of layer it is: the JSON's "_class", such as "artboard", "shapeGroup" or
  /// "rectangle". Unknown kinds are kept and passed through.
  QString kind() const;
  bool isPage() const { return kind() == u"page"; }
  /// True for artboards, symbol masters and frames that lie directly on a page.
  bool isArtboard() const;
  bool isSymbolMaster() const;
  /// A rectangle, oval, triangle, polygon, star or shape path, which has a path of its own.
  bool isShape() const;
  bool isShapeGroup() const { return kind() == u"shapeGroup"; }
  /// A page, an artboard, a symbol master, a group or a shape group.
  bool isGroup() const;

  QString name() const;
  void setName(const QString& name);
  QString objectID() const;
  /// In the coordinates of the parent layer.
  KVRectRef frame() const;
  /// Moves and resizes only the layer itself: its children stay as they are.
  void setFrame(const KVRectRef& frame);
  QRectF frameRect() const;
  bool isVisible() const;
  void setIsVisible(bool isVisible);
  /// Degrees, counterclockwise on screen.
  double rotation() const;
  bool isFlippedHorizontal() const;
  bool isFlippedVertical() const;

  /// The child layers, from bottom to top. A shape has none.
  const QList<SketchLayerRef>& children() const { return children_; }
  /// The layer itself and all its descendants, in drawing order.
  QList<SketchLayerRef> withDescendants() const;
  /// The value of the key "layers": the children, or, for a shape outside shape groups, the shape
  /// itself, as if it were still the only child of a group.
  QVariantList layers() const;
  /// The parent layer; null for a page and for the master of a foreign symbol.
  SketchLayerRef parent() const { return parent_.lock(); }
  /// The artboard that contains the layer, or the layer itself if it is an artboard; null if there
  /// is none.
  SketchLayerRef artboard() const;
  /// The page that the layer is on; null within foreign symbols.
  SketchLayerRef page() const;
  /// The document that it is in; null for a layer that is in none, or whose document is gone.
  std::shared_ptr<SketchDocument> document() const;

  /// Puts a layer above the first `index` child layers of this group, after taking it from where it
  /// is. Fails for pages, for a layer that contains this one, and where layers would be nested too
  /// deeply.
  Result<void> insert(const SketchLayerRef& layer, qsizetype index);
  /// Takes the layer out of its parent. It is in no document then. Nothing happens to a layer
  /// without a parent.
  void removeFromParent();
  /// A copy with new identifiers, which is in no document.
  SketchLayerRef copy() const;

  /// Whether it is selected in its document; see `SketchDocument::select`.
  bool isSelected() const { return isSelected_; }

  /// A shape's outline from (0, 0) to the frame's size, with rounded corners, before the layer's
  /// own flips and rotation. Empty for other kinds.
  BezierPath path() const;
  /// The value of the key "bezierPath". For a shape in a shape group, the outline is in the group's
  /// coordinates, with the shape's flips, rotation and position applied. For any other shape, it is
  /// in the shape's own coordinates, before its flips and rotation, which also apply to its fill.
  BezierPath bezierPath() const;
  /// From the layer's own coordinates to its parent's; see sketch/document/SketchTransform.h.
  QTransform transform() const;

  /// The layer's "userInfo" under `key`; empty if there is none.
  QVariantMap userInfo(const QString& key) const;
  /// An empty map removes the key, and "userInfo" itself if no other key is left.
  void setUserInfo(const QString& key, const QVariantMap& value);

  /// The decoded layer and its JSON, for this library's own use.
  const Layer& node() const { return *node_; }
  /// The same, for changes. Marks the file for saving.
  Layer& edit();

  QVariant valueForKey(const QString& key) const override;
  /// "<rectangle Screen (ID)>".
  QString description() const override;

 private:
  friend class SketchDocument;
  SketchLayer() = default;
  SketchLayerRef self() const;
  void moveTo(const std::shared_ptr<bool>& isChanged);

  /// The layer of a node, with all its descendants. Shares ownership of the node, so that a layer
  /// that outlives its document can still be read.
  static SketchLayerRef make(const std::shared_ptr<Layer>& node,
                             const std::shared_ptr<bool>& isChanged, const SketchLayerRef& parent);

  std::shared_ptr<Layer> node_;
  std::shared_ptr<bool> isChanged_;
  std::weak_ptr<SketchLayer> parent_;
  QList<SketchLayerRef> children_;
  /// Of a layer without a parent.
  std::weak_ptr<SketchDocument> document_;
  bool isSelected_ = false;
};

}  // namespace kelvar
