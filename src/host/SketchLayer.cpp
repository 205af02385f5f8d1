#include "host/SketchLayer.h"

#include "host/SketchJson.h"
#include "host/SketchKind.h"
#include "host/SketchPath.h"
#include "host/SketchTransform.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&SketchLayer::theClass);

constexpr const char* kUserInfo = "userInfo";

/// A layer's frame as scripts have it: what they set in it moves and resizes the layer. A copy to
/// everybody else.
class LayerFrame : public KVRect {
 public:
  explicit LayerFrame(SketchLayerRef layer) : layer_(std::move(layer)) { read(); }
  static const ClassInfo& theClass() {
    static const ClassInfo kClass =
        Description<LayerFrame, KVRect>("KVRect")
            .property("x", &KVRect::x, setter<&KVRect::setX>)
            .property("y", &KVRect::y, setter<&KVRect::setY>)
            .property("width", &KVRect::width, setter<&KVRect::setWidth>)
            .property("height", &KVRect::height, setter<&KVRect::setHeight>);
    return kClass;
  }
  const ClassInfo& classInfo() const override { return theClass(); }

 private:
  void read() {
    const QRectF rect = layer_->frameRect();
    setX(rect.x());
    setY(rect.y());
    setWidth(rect.width());
    setHeight(rect.height());
  }

  template <void (KVRect::*set)(double)>
  static void setter(LayerFrame& self, double value) {
    // The others may have been set through another frame of the layer.
    self.read();
    (self.*set)(value);
    self.layer_->setFrame(std::static_pointer_cast<KVRect>(self.shared_from_this()));
  }

  const SketchLayerRef layer_;
};

/// For members that are added: the list of them would copy itself to grow, and with it the layers
/// within, which others hold by their place.
void makeRoom(SketchJson::object_t* members) {
  constexpr size_t kRoom = 8;
  if (members->capacity() - members->size() >= kRoom) return;
  SketchJson::object_t larger;
  larger.reserve(members->size() + 2 * kRoom);
  for (auto& [key, value] : *members) larger.emplace_back(key, std::move(value));
  members->swap(larger);
}

}  // namespace

const ClassInfo& SketchLayer::theClass() {
  static const ClassInfo kClass =
      Description<SketchLayer>("SketchLayer")
          .property("name", &SketchLayer::name, &SketchLayer::setName)
          .property("kind", &SketchLayer::kind)
          .property("objectID", &SketchLayer::objectID)
          .property(
              "frame",
              [](const SketchLayer& self) -> KVRectRef {
                return std::make_shared<LayerFrame>(self.self());
              },
              &SketchLayer::setFrame)
          .property("isVisible", &SketchLayer::isVisible, &SketchLayer::setIsVisible)
          .property("rotation", &SketchLayer::rotation)
          .property("isFlippedHorizontal", &SketchLayer::isFlippedHorizontal)
          .property("isFlippedVertical", &SketchLayer::isFlippedVertical)
          .property("layers", &SketchLayer::layers)
          .property("artboards",
                    [](const SketchLayer& self) {
                      QVariantList artboards;
                      for (const SketchLayerRef& child : self.children()) {
                        if (child->isArtboard()) artboards.append(toVariant(child));
                      }
                      return artboards;
                    })
          .property("bezierPath", &SketchLayer::bezierPath)
          .property("parent", &SketchLayer::parent)
          .property("artboard", &SketchLayer::artboard)
          .property("page", &SketchLayer::page);
  return kClass;
}

SketchLayerRef SketchLayer::make(const std::shared_ptr<SketchJson>& json,
                                 const std::shared_ptr<bool>& isChanged,
                                 const SketchLayerRef& parent) {
  const SketchLayerRef layer(new SketchLayer);
  layer->json_ = json;
  layer->isChanged_ = isChanged;
  layer->parent_ = parent;
  const auto layers = json->find("layers");
  if (layers == json->end() || !layers->is_array()) return layer;
  for (SketchJson& child : *layers) {
    // Shares in the page's JSON, so that a layer that outlives its document can still be read.
    layer->children_.append(make({json, &child}, isChanged, layer));
  }
  return layer;
}

QString SketchLayer::kind() const { return classOf(*json_); }

bool SketchLayer::isArtboard() const {
  if (isSketchArtboard(*json_)) return true;
  const SketchLayerRef around = parent();
  return isSketchFrame(*json_) && around && around->isPage();
}

bool SketchLayer::isShape() const { return isSketchShape(*json_); }

QString SketchLayer::name() const { return textIn(*json_, "name"); }
void SketchLayer::setName(const QString& name) { edit()["name"] = name.toStdString(); }
QString SketchLayer::objectID() const { return textIn(*json_, "do_objectID"); }
QRectF SketchLayer::frameRect() const { return rectIn(*json_, "frame"); }
KVRectRef SketchLayer::frame() const { return KVRectFromCGRect(frameRect()); }
bool SketchLayer::isVisible() const { return flagIn(*json_, "isVisible", true); }
void SketchLayer::setFrame(const KVRectRef& frame) {
  setRectIn(&edit(), "frame", rectOrZero(frame));
}
void SketchLayer::setIsVisible(bool isVisible) { edit()["isVisible"] = isVisible; }
double SketchLayer::rotation() const { return numberIn(*json_, "rotation"); }
bool SketchLayer::isFlippedHorizontal() const { return flagIn(*json_, "isFlippedHorizontal"); }
bool SketchLayer::isFlippedVertical() const { return flagIn(*json_, "isFlippedVertical"); }

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
  return isShape() ? sketchPath(*json_, frameRect().size()) : BezierPath();
}

BezierPath SketchLayer::bezierPath() const {
  const SketchLayerRef around = parent();
  if (!around || !around->isShapeGroup()) return path();
  const QTransform toGroup = transform();
  BezierPath moved;
  const BezierPath own = path();
  for (const BezierPath::Element& element : own.elements()) {
    const auto at = [&](size_t i) { return toGroup.map(element.points[i]); };
    switch (element.kind) {
      case BezierPath::Kind::Move:
        moved.moveTo(at(0));
        break;
      case BezierPath::Kind::Line:
        moved.lineTo(at(0));
        break;
      case BezierPath::Kind::Curve:
        moved.curveTo(at(2), at(0), at(1));
        break;
      case BezierPath::Kind::Close:
        moved.close();
    }
  }
  return moved;
}

QTransform SketchLayer::transform() const { return sketchTransform(*json_); }

QVariantMap SketchLayer::userInfo(const QString& key) const {
  const SketchJson& all = memberOf(*json_, kUserInfo);
  return variantFromSketchJson(memberOf(all, key.toUtf8().constData())).toMap();
}

void SketchLayer::setUserInfo(const QString& key, const QVariantMap& value) {
  SketchJson& all = edit()[kUserInfo];
  if (!all.is_object()) all = SketchJson::object();
  if (value.isEmpty()) {
    all.erase(key.toStdString());
    if (all.empty()) edit().erase(kUserInfo);
  } else {
    all[key.toStdString()] = sketchJsonFromVariant(value);
  }
}

SketchJson& SketchLayer::edit() {
  *isChanged_ = true;
  makeRoom(json_->get_ptr<SketchJson::object_t*>());
  return *json_;
}

QVariant SketchLayer::valueForKey(const QString& key) const {
  if (classInfo().property(key)) return Object::valueForKey(key);
  const QByteArray name = key.toUtf8();
  return json_->contains(name.constData()) ? variantFromSketchJson((*json_)[name.constData()])
                                           : QVariant();
}

QString SketchLayer::description() const {
  return QStringLiteral("<%1 %2 (%3)>").arg(kind(), name(), objectID());
}

}  // namespace kelvar
