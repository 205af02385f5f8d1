#include "sketch/document/SketchLayer.h"

#include "runtime/ClassInfo.h"
#include "runtime/raise.h"
#include "sketch/document/Layer.h"
#include "sketch/document/SketchPath.h"
#include "sketch/document/UserInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&SketchLayer::staticClassInfo);

/// Nil is what a script passes by mistake.
void rename(SketchLayer& self, const QString& name) {
  if (name.isNull()) raise(QStringLiteral("the name of a layer is a string, not nil"));
  self.setName(name);
}

}  // namespace

const ClassInfo& SketchLayer::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<SketchLayer>("SketchLayer")
          .property("name", &SketchLayer::name, rename, "The layer's name.")
          .property("kind", &SketchLayer::kind,
                    "The kind of layer as the document names it, such as \"artboard\", "
                    "\"shapeGroup\" or \"rectangle\".")
          .property("objectID", &SketchLayer::objectID, "The layer's identifier.")
          .property("frame", &SketchLayer::frame, &SketchLayer::setFrame,
                    "The layer's frame in its parent; the contents stay as they are.")
          .property("isVisible", &SketchLayer::isVisible, &SketchLayer::setIsVisible,
                    "Whether the layer is drawn.")
          .property("rotation", &SketchLayer::rotation,
                    "Rotation in degrees, counter-clockwise on screen.")
          .property("isFlippedHorizontal", &SketchLayer::isFlippedHorizontal,
                    "Whether the layer is mirrored left to right.")
          .property("isFlippedVertical", &SketchLayer::isFlippedVertical,
                    "Whether the layer is mirrored top to bottom.")
          .property(
              "layers", &SketchLayer::layers,
              "The layers inside, lowest first. The key path of a shape outside a shape group "
              "leads to the shape itself, so that the outline is found in all documents.")
          .property(
              "artboards",
              [](const SketchLayer& self) {
                QVariantList artboards;
                for (const SketchLayerRef& child : self.children()) {
                  if (child->isArtboard()) artboards.append(toVariant(child));
                }
                return artboards;
              },
              "The artboards on the page.")
          .property("bezierPath", &SketchLayer::bezierPath,
                    "The shape's outline: in its shape group's coordinates, or before its own "
                    "flips and rotation if it stands alone.")
          .property("parent", &SketchLayer::parent, "The layer around this one, or nil for a page.")
          .property("artboard", &SketchLayer::artboard,
                    "The artboard around the layer, or the layer itself; nil if it lies directly "
                    "on the page.")
          .property("page", &SketchLayer::page, "The page that the layer is on.");
  return kClass;
}

SketchLayerRef SketchLayer::make(const std::shared_ptr<Layer>& node,
                                 const std::shared_ptr<bool>& isChanged,
                                 const SketchLayerRef& parent) {
  const SketchLayerRef layer(new SketchLayer);
  layer->node_ = node;
  layer->isChanged_ = isChanged;
  layer->parent_ = parent;
  for (const auto& child : node->children()) {
    layer->children_.append(make(child, isChanged, layer));
  }
  return layer;
}

QString SketchLayer::kind() const { return node_->properties().kindName; }

bool SketchLayer::isArtboard() const {
  if (node_->properties().isArtboard()) return true;
  const SketchLayerRef around = parent();
  return node_->properties().isFrame && around && around->isPage();
}

bool SketchLayer::isSymbolMaster() const {
  return node_->properties().kind == LayerKind::SymbolMaster;
}
bool SketchLayer::isShape() const { return node_->properties().isShape(); }

QString SketchLayer::name() const { return node_->properties().name; }
void SketchLayer::setName(const QString& name) { edit().change()["name"] = name.toStdString(); }
QString SketchLayer::objectID() const { return node_->properties().objectID; }
QRectF SketchLayer::frameRect() const { return node_->properties().frame; }
KVRectRef SketchLayer::frame() const { return KVRectFromCGRect(frameRect()); }
bool SketchLayer::isVisible() const { return node_->properties().isVisible; }
void SketchLayer::setFrame(const KVRectRef& frame) {
  setRect(&edit().change(), "frame", rectOrZero(frame));
}
void SketchLayer::setIsVisible(bool isVisible) { edit().change()["isVisible"] = isVisible; }
double SketchLayer::rotation() const { return node_->properties().rotation; }
bool SketchLayer::isFlippedHorizontal() const { return node_->properties().isFlippedHorizontal; }
bool SketchLayer::isFlippedVertical() const { return node_->properties().isFlippedVertical; }

SketchLayerRef SketchLayer::self() const {
  return std::static_pointer_cast<SketchLayer>(std::const_pointer_cast<Object>(shared_from_this()));
}

QList<SketchLayerRef> SketchLayer::withDescendants() const {
  QList<SketchLayerRef> all{self()};
  for (const SketchLayerRef& child : children_) all += child->withDescendants();
  return all;
}

QVariantList SketchLayer::layers() const {
  QVariantList layers;
  for (const SketchLayerRef& child : children_) layers.append(toVariant(child));
  const SketchLayerRef around = parent();
  if (isShape() && !(around && around->isShapeGroup())) {
    layers.append(toVariant(self()));
  }
  return layers;
}

SketchLayerRef SketchLayer::artboard() const {
  SketchLayerRef layer = self();
  while (layer && !layer->isArtboard()) layer = layer->parent();
  return layer;
}

SketchLayerRef SketchLayer::page() const {
  SketchLayerRef layer = self();
  while (layer && !layer->isPage()) layer = layer->parent();
  return layer;
}

BezierPath SketchLayer::path() const {
  return isShape() ? sketchPath(node_->json(), frameRect().size()) : BezierPath();
}

BezierPath SketchLayer::bezierPath() const {
  const SketchLayerRef around = parent();
  if (!around || !around->isShapeGroup()) return path();
  return path().mapped(transform());
}

QTransform SketchLayer::transform() const { return node_->properties().transform; }

QVariantMap SketchLayer::userInfo(const QString& key) const {
  return userInfoOf(node_->json(), key);
}

void SketchLayer::setUserInfo(const QString& key, const QVariantMap& value) {
  kelvar::setUserInfo(&edit().change(), key, value);
}

Layer& SketchLayer::edit() {
  *isChanged_ = true;
  return *node_;
}

QVariant SketchLayer::valueForKey(const QString& key) const {
  if (classInfo().property(key)) return Object::valueForKey(key);
  const QByteArray name = key.toUtf8();
  const SketchJson& json = node_->json();
  return json.contains(name.constData()) ? variantFromSketchJson(json[name.constData()])
                                         : QVariant();
}

QString SketchLayer::description() const {
  return QStringLiteral("<%1 %2 (%3)>").arg(kind(), name(), objectID());
}

}  // namespace kelvar
