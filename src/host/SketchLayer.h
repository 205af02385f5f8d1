#pragma once

#include <QList>
#include <QRectF>
#include <QTransform>
#include <nlohmann/json_fwd.hpp>

#include "geometry/KVRect.h"
#include "platform/BezierPath.h"
#include "runtime/Object.h"

namespace kelvar {

class SketchDocument;
class SketchLayer;
using SketchLayerRef = std::shared_ptr<SketchLayer>;

/// A layer of a Sketch document: a page, an artboard, a group, a shape, a text and so on.
///
/// Everything is read from the document's JSON at each call, and what is set goes into it. Any
/// member of the JSON is answered by its key ("rotation", "style.fills"), beside the keys of the
/// description. A layer keeps the JSON of its page alive, not the document. Lengths are in
/// document units, y down. Main thread, or any one thread for a document.
class KELVAR_EXPORT SketchLayer : public Object {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// What kind of layer it is: the JSON's "_class", such as "artboard", "shapeGroup" or
  /// "rectangle". Kinds that nobody knows are kept and passed through.
  QString kind() const;
  bool isPage() const { return kind() == u"page"; }
  /// Artboards, symbol masters, which are artboards too, and frames that lie on a page.
  bool isArtboard() const;
  /// A rectangle, oval, triangle, polygon, star or shape path, which has a path of its own.
  bool isShape() const;
  bool isShapeGroup() const { return kind() == u"shapeGroup"; }

  QString name() const;
  void setName(const QString& name);
  QString objectID() const;
  /// In the coordinates of the layer around it.
  KVRectRef frame() const;
  /// Moves and resizes the layer alone: what lies within it stays as it is.
  void setFrame(const KVRectRef& frame);
  QRectF frameRect() const;
  bool isVisible() const;
  void setIsVisible(bool isVisible);
  /// Degrees, counter-clockwise on screen.
  double rotation() const;
  bool isFlippedHorizontal() const;
  bool isFlippedVertical() const;

  /// The layers within it, the lowest first. A shape has none.
  const QList<SketchLayerRef>& children() const { return children_; }
  /// The layer itself and all below it, in the order in which they are drawn.
  QList<SketchLayerRef> withDescendants() const;
  /// What the key "layers" answers: the children, and for a shape that stands by itself the shape,
  /// as if it were still the only child of a group.
  QVariantList layers() const;
  /// The layer around it; null for a page and for the master of a foreign symbol.
  SketchLayerRef parent() const { return parent_.lock(); }
  /// The artboard around it, or the layer itself; null when it lies on the page.
  SketchLayerRef artboard() const;
  /// The page that it is on; null within foreign symbols.
  SketchLayerRef page() const;

  /// A shape's outline from (0, 0) to the frame's size, with rounded corners, before the layer's
  /// own flips and rotation. Empty for other kinds.
  BezierPath path() const;
  /// What the key "bezierPath" answers, the outline in the coordinates of the layer that it stands
  /// for: for a shape in a shape group those of the group, its flips, rotation and place applied;
  /// for a shape that stands by itself its own, before its flips and rotation, which turn its fill
  /// along with it.
  BezierPath bezierPath() const;
  /// From the layer's own coordinates to those around it; see host/SketchTransform.h.
  QTransform transform() const;

  /// The layer's "userInfo" under `key`; empty when there is none.
  QVariantMap userInfo(const QString& key) const;
  /// An empty map removes the key, and "userInfo" with its last one.
  void setUserInfo(const QString& key, const QVariantMap& value);

  /// The layer's JSON. See host/SketchJson.h for how to read it.
  const nlohmann::ordered_json& json() const { return *json_; }
  /// The same, to be changed. The list of its layers must be left as it is. Marks the file for
  /// saving. No more than eight members may be added before it is called again.
  nlohmann::ordered_json& edit();

  QVariant valueForKey(const QString& key) const override;
  /// "<rectangle Screen (ID)>".
  QString description() const override;

 private:
  friend class SketchDocument;
  SketchLayer() = default;
  SketchLayerRef self() const;

  /// The layer whose JSON is `json`, with all below it.
  static SketchLayerRef make(const std::shared_ptr<nlohmann::ordered_json>& json,
                             const std::shared_ptr<bool>& isChanged, const SketchLayerRef& parent);

  std::shared_ptr<nlohmann::ordered_json> json_;
  std::shared_ptr<bool> isChanged_;
  std::weak_ptr<SketchLayer> parent_;
  QList<SketchLayerRef> children_;
};

}  // namespace kelvar
