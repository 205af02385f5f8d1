#include "sketch/classes/SharedStyles.h"

#include "runtime/raise.h"
#include "sketch/classes/LayerClasses.h"
#include "sketch/classes/MSLayerArray.h"
#include "sketch/classes/StyleClasses.h"
#include "sketch/classes/newLayerJson.h"
#include "sketch/document/DocumentFiles.h"

namespace kelvar {
namespace {

using Self = SharedStyles;
using M = Member<ModelPart>;

/// In a layer, and in a style that is in no layer or in a layer of an old document.
constexpr auto kLayerKey = "sharedStyleID";
constexpr auto kStyleKey = "sharedObjectID";

const ClassInfo::Registration kRegistered[] = {ClassInfo::Registration(&Self::staticClassInfo),
                                               ClassInfo::Registration(&sharedStyleClass)};

ModelPart::Place listOf(const char* kind) { return ModelPart::Place() / kind / "objects"; }

ModelPartRef styleOf(const ModelPart& self) {
  return ModelPart::within(styleClass(), self, ModelPart::Place("/value"));
}

QList<SketchLayerRef> layersOf(const ModelPart& self) {
  QList<SketchLayerRef> layers;
  const SketchDocumentRef document = self.document();
  if (!document) return layers;
  const QString objectID = getString(self.json(), "do_objectID");
  for (const SketchLayerRef& page : document->pages()) {
    for (const SketchLayerRef& layer : page->withDescendants()) {
      if (Self::idOf(*layer) == objectID) layers.append(layer);
    }
  }
  return layers;
}

QVariantList layersWith(const ModelPart& self) { return MSLayerArray::toList(layersOf(self)); }

SketchJson copyOfStyle(const SketchJson& style) {
  SketchJson copy = style.is_object() ? style : newStyle();
  copy["do_objectID"] = newObjectID();
  copy.erase(kStyleKey);
  return copy;
}

ModelPartRef newInstance(const ModelPart& self) {
  SketchJson style = copyOfStyle(get(self.json(), "value"));
  style[kStyleKey] = get(self.json(), "do_objectID");
  return std::make_shared<ModelPart>(styleClass(), std::move(style));
}

void update(ModelPart& self, const ModelPartRef& style) {
  SketchJson copy = copyOfStyle(partOfClass(style, styleClass(), "updateToMatch:").json());
  self.change()["value"] = std::move(copy);
}

void resetInstances(ModelPart& self) {
  const SketchJson style = get(self.json(), "value");
  for (const SketchLayerRef& layer : layersOf(self)) assignStyle(*layer, copyOfStyle(style));
}

}  // namespace

const ClassInfo& SharedStyles::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSSharedStyleContainer")
          .operation("objects", &Self::objects, "Returns the shared styles.")
          .operation("sharedStyles", &Self::objects, "Returns the shared styles.")
          .operation(
              "numberOfSharedStyles", [](const Self& self) { return int(self.objects().size()); },
              "Returns how many there are.")
          .operation("sharedStyleWithID:", &Self::withID,
                     "Returns the shared style with this identifier, or nil.")
          .operation("addSharedStyleWithName:firstInstance:", &Self::addNew,
                     "Adds a shared style with a copy of a style and returns it. The layer that "
                     "has the style refers to it.")
          .operation("addSharedObject:", &Self::add, "Adds a shared style.")
          .operation("removeSharedStyle:", &Self::remove,
                     "Removes a shared style. Layers keep how they look.")
          .operation("removeSharedObject:", &Self::remove,
                     "Removes a shared style. Layers keep how they look.")
          .operation("removeSharedStyleAtIndex:", &Self::removeAt,
                     "Removes a shared style by its index. Layers keep how they look.")
          .operation("sharedStyleAtIndex:", &Self::at, "Returns a shared style by its index.")
          .operation("indexOfSharedStyle:", &Self::indexOf,
                     "Returns the index of a shared style; -1 for none of these.")
          .operation(
              "updateValueOfSharedObject:byCopyingInstance:",
              [](Self&, const ModelPartRef& shared, const ModelPartRef& style) {
                update(partOfClass(shared, sharedStyleClass(), "updateValueOfSharedObject:"),
                       style);
              },
              "Gives a shared style a copy of a style. Layers keep theirs until "
              "resetReferencingInstances.");
  return kClass;
}

const ClassInfo& sharedStyleClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSSharedStyle", ModelPart::staticClassInfo())
          .initializer("initWithName:firstInstance:", Self::make,
                       "Creates a shared style with a copy of a style. The layer that has the "
                       "style refers to it.")
          .initializer("initWithName:style:", Self::make,
                       "Creates a shared style with a copy of a style. The layer that has the "
                       "style refers to it.")
          .property("name", M::text<"name">, M::setText<"name">, "The name.")
          .operation("newInstance", newInstance,
                     "Returns a copy of the style. A layer that gets it refers to the shared "
                     "style.")
          .operation("updateToMatch:", update,
                     "Takes a copy of a style. Layers keep theirs until "
                     "resetReferencingInstances.")
          .operation("resetReferencingInstances", resetInstances,
                     "Gives copies of the style to the layers that refer to it.")
          .operation("style", styleOf,
                     "Returns the style. What is set in it goes into the document, but not into "
                     "layers, which have copies.")
          .operation("value", styleOf,
                     "Returns the style. What is set in it goes into the document, but not into "
                     "layers, which have copies.")
          .operation("allLayersInstances", layersWith,
                     "Returns the layers that refer to the shared style.");
  return kClass;
}

QVariantList SharedStyles::objects() const {
  QVariantList styles;
  const SketchJson& objects = getArray(get(document_->files().document(), kind_), "objects");
  for (size_t i = 0; i < objects.size(); ++i) {
    const auto style =
        std::make_shared<ModelPart>(sharedStyleClass(), document_, ModelPart::Place());
    style->follow(listOf(kind_), i);
    styles.append(toVariant(style));
  }
  return styles;
}

ModelPartRef SharedStyles::withID(const QString& objectID) const {
  for (const QVariant& each : objects()) {
    const auto style = std::static_pointer_cast<ModelPart>(each.value<ObjectRef>());
    if (getString(style->json(), "do_objectID") == objectID) return style;
  }
  return nullptr;
}

QVariantList SharedStyles::withForeign() const {
  QVariantList styles = objects();
  const std::string list = kind_ == kOfTexts ? "foreignTextStyles" : "foreignLayerStyles";
  const size_t count = getArray(document_->files().document(), list.c_str()).size();
  for (size_t i = 0; i < count; ++i) {
    const ModelPart::Place place = ModelPart::Place() / list / i / "localSharedStyle";
    styles.append(toVariant(std::make_shared<ModelPart>(sharedStyleClass(), document_, place)));
  }
  return styles;
}

ModelPartRef SharedStyles::make(const QString& name, const ModelPartRef& firstInstance) {
  if (name.isEmpty()) raise(QStringLiteral("a shared style needs a name"));
  ModelPart& style = partOfClass(firstInstance, styleClass(), "firstInstance:");
  const std::string objectID = newObjectID();
  const auto shared = std::make_shared<ModelPart>(sharedStyleClass(),
                                                  SketchJson{{"_class", "sharedStyle"},
                                                             {"do_objectID", objectID},
                                                             {"name", name.toStdString()},
                                                             {"value", copyOfStyle(style.json())}});
  setIDOfStyle(style, QString::fromStdString(objectID));
  return shared;
}

void SharedStyles::add(const ModelPartRef& shared) {
  partOfClass(shared, sharedStyleClass(), "addSharedObject:");
  if (shared->document()) {
    raise(QStringLiteral("the shared style \"%1\" is in a document already")
              .arg(getString(shared->json(), "name")));
  }
  ModelPart container(sharedStyleClass(), document_, ModelPart::Place() / std::string(kind_));
  SketchJson& json = container.change();
  if (!json.contains("_class")) {
    json["_class"] = kind_ == kOfTexts ? "sharedTextStyleContainer" : "sharedStyleContainer";
  }
  SketchJson& objects = json["objects"];
  if (!objects.is_array()) objects = SketchJson::array();
  const size_t index = objects.size();
  shared->moveInto(container, ModelPart::Place("/objects") / index);
  shared->follow(listOf(kind_), index);
}

int SharedStyles::indexOf(const ModelPartRef& shared) const {
  const QString objectID = getString(
      partOfClass(shared, sharedStyleClass(), "indexOfSharedStyle:").json(), "do_objectID");
  const SketchJson& objects = getArray(get(document_->files().document(), kind_), "objects");
  for (size_t i = 0; i < objects.size(); ++i) {
    if (getString(objects[i], "do_objectID") == objectID) return int(i);
  }
  return -1;
}

ModelPartRef SharedStyles::at(int index) const {
  const QVariantList all = objects();
  if (index < 0 || index >= all.size()) {
    raise(QStringLiteral("there is no shared style %1, only %2 in all").arg(index).arg(all.size()));
  }
  return std::static_pointer_cast<ModelPart>(all[index].value<ObjectRef>());
}

void SharedStyles::removeAt(int index) {
  const ModelPartRef shared = at(index);
  for (const SketchLayerRef& layer : layersOf(*shared)) setID(*layer, {});
  document_->edit().changeDocument()[kind_]["objects"].erase(size_t(index));
}

void SharedStyles::remove(const ModelPartRef& shared) {
  const int index = indexOf(shared);
  if (index < 0) raise(QStringLiteral("the shared style is none of these"));
  removeAt(index);
}

ModelPartRef SharedStyles::addNew(const QString& name, const ModelPartRef& firstInstance) {
  ModelPartRef shared = make(name, firstInstance);
  add(shared);
  return shared;
}

ModelPartRef SharedStyles::of(const SketchLayer& layer) {
  const SketchDocumentRef document = layer.document();
  const QString objectID = idOf(layer);
  if (!document || objectID.isEmpty()) return nullptr;
  const ModelPartRef style = SharedStyles(document, kOfLayers).withID(objectID);
  return style ? style : SharedStyles(document, kOfTexts).withID(objectID);
}

QString SharedStyles::idOf(const SketchLayer& layer) {
  const SketchJson& json = layer.node().json();
  const QString objectID = getString(json, kLayerKey);
  return objectID.isNull() ? getString(get(json, "style"), kStyleKey) : objectID;
}

void SharedStyles::setID(SketchLayer& layer, const QString& objectID) {
  SketchJson& json = layer.edit().change();
  if (get(json, "style").is_object()) json["style"].erase(kStyleKey);
  if (objectID.isEmpty()) {
    json.erase(kLayerKey);
  } else {
    json[kLayerKey] = objectID.toStdString();
  }
}

namespace {

bool isOfLayer(const ModelPart& style) {
  return style.layer() && style.place() == ModelPart::Place("/style");
}

}  // namespace

QString SharedStyles::idOfStyle(const ModelPart& style) {
  return isOfLayer(style) ? idOf(*style.layer()) : getString(style.json(), kStyleKey);
}

void SharedStyles::setIDOfStyle(ModelPart& style, const QString& objectID) {
  if (isOfLayer(style)) {
    setID(*style.layer(), objectID);
  } else if (objectID.isEmpty()) {
    style.change().erase(kStyleKey);
  } else {
    style.change()[kStyleKey] = objectID.toStdString();
  }
}

void SharedStyles::apply(SketchLayer& layer, const ModelPartRef& shared) {
  if (!shared) return setID(layer, {});
  const SketchJson json = partOfClass(shared, sharedStyleClass(), "setSharedStyle:").json();
  assignStyle(layer, copyOfStyle(get(json, "value")));
  setID(layer, getString(json, "do_objectID"));
}

}  // namespace kelvar
