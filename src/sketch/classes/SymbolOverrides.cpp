#include "sketch/classes/SymbolOverrides.h"

#include "runtime/ClassInfo.h"
#include "runtime/raise.h"
#include "sketch/classes/MSImageData.h"
#include "sketch/classes/ModelPart.h"
#include "sketch/classes/TextContent.h"
#include "sketch/document/Layer.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

const ClassInfo::Registration kRegistered[] = {
    ClassInfo::Registration(&MSOverridePoint::staticClassInfo),
    ClassInfo::Registration(&overrideValueClass)};

constexpr auto kValues = "overrideValues";
/// Symbols in one another, beyond which points are not listed.
constexpr int kMaxDepth = 16;

/// Puts a value under the way to it, "ID/ID_property".
void put(QVariantMap* map, const QStringList& way, const QString& property, const QVariant& value) {
  if (way.size() > 1) {
    QVariantMap inner = (*map)[way.first()].toMap();
    put(&inner, way.mid(1), property, value);
    map->insert(way.first(), inner);
  } else if (property == u"symbolID") {
    QVariantMap inner = (*map)[way.first()].toMap();
    inner.insert(property, value);
    map->insert(way.first(), inner);
  } else {
    map->insert(property == u"stringValue" ? way.first() : way.first() + u'_' + property, value);
  }
}

void add(SketchJson* values, const QString& name, const QVariant& value) {
  values->push_back({{"_class", "overrideValue"},
                     {"overrideName", name.toStdString()},
                     {"value", sketchJsonFromVariant(value)}});
}

void addAll(const QVariantMap& map, const QString& way, int depth, SketchJson* values) {
  if (depth > kMaxDepth) raise(u"the overrides are nested too deeply"_s);
  for (auto each = map.begin(); each != map.end(); ++each) {
    if (each.value().typeId() == QMetaType::QVariantMap &&
        !each.value().toMap().contains(u"_ref"_s)) {
      QVariantMap inner = each.value().toMap();
      if (inner.contains(u"symbolID"_s)) {
        add(values, way + each.key() + u"_symbolID"_s, inner.take(u"symbolID"_s));
      }
      addAll(inner, way + each.key() + u'/', depth + 1, values);
    } else {
      add(values, way + each.key() + (each.key().contains(u'_') ? u""_s : u"_stringValue"_s),
          each.value());
    }
  }
}

QVariant imageOf(const SketchLayer& layer, const SketchDocumentRef& document) {
  return toVariant(MSImageData::of(get(layer.node().json(), "image"), document));
}

/// Collects what an instance can show differently, also in instances within its symbol.
class PlaceCollector {
 public:
  explicit PlaceCollector(const SketchLayer& instance)
      : document_(instance.document()), around_{{instance, {}}} {}

  /// Of a symbol, or of the one that an instance shows.
  QList<SymbolOverrides::Place> collected() {
    const SketchLayer& layer = around_.front().instance;
    if (document_) addAll(layer.node().properties().symbolID);
    return places_;
  }

 private:
  /// An instance, and what names within its symbol begin with.
  struct Around {
    const SketchLayer& instance;
    QString way;
  };

  /// What the instances around a layer say, the outer ones first; `skipped` of them do not count.
  QVariant value(const QString& name, const QVariant& ownValue, size_t skipped) const {
    for (size_t i = skipped; i < around_.size(); ++i) {
      const QString inner = name.mid(around_[i].way.size());
      const QVariant value = SymbolOverrides::valueAt(around_[i].instance, inner);
      if (value.isValid()) return value;
    }
    return ownValue;
  }

  void add(const SketchLayerRef& layer, const char* property, const QVariant& ownValue) {
    const QString name =
        around_.back().way + layer->objectID() + u'_' + QString::fromLatin1(property);
    places_.append({name, layer, value(name, ownValue, 1)});
  }

  void addAll(const QString& symbolID) {
    const SketchLayerRef master = document_->symbolMaster(symbolID);
    if (!master || around_.size() > kMaxDepth) return;
    for (const SketchLayerRef& layer : master->withDescendants()) {
      switch (layer->node().properties().kind) {
        case LayerKind::Text:
          add(layer, "stringValue", TextContent(*layer).string());
          break;
        case LayerKind::Bitmap:
          add(layer, "image", imageOf(*layer, document_));
          break;
        case LayerKind::SymbolInstance:
          addNested(layer);
          break;
        default:
          break;
      }
    }
  }

  void addNested(const SketchLayerRef& layer) {
    const QString symbolID = layer->node().properties().symbolID;
    add(layer, "symbolID", symbolID);
    const QString shown = value(places_.last().name, symbolID, 0).toString();
    around_.push_back({*layer, around_.back().way + layer->objectID() + u'/'});
    addAll(shown);
    around_.pop_back();
  }

  const SketchDocumentRef document_;
  std::vector<Around> around_;
  QList<SymbolOverrides::Place> places_;
};

}  // namespace

QVariantMap SymbolOverrides::read(const SketchLayer& instance) {
  QVariantMap map;
  for (const SketchJson& value : getArray(instance.node().json(), kValues)) {
    const MSOverridePoint point(getString(value, "overrideName"));
    const QString way = point.name().chopped(point.property().size() + 1);
    if (way.isEmpty() || point.property().isEmpty()) continue;
    put(&map, way.split(u'/'), point.property(), variantFromSketchJson(get(value, "value")));
  }
  return map;
}

void SymbolOverrides::write(SketchLayer& instance, const QVariantMap& overrides) {
  SketchJson values = SketchJson::array();
  addAll(overrides, {}, 0, &values);
  instance.edit().change()[kValues] = std::move(values);
}

QList<SymbolOverrides::Place> SymbolOverrides::places(const SketchLayer& instance) {
  return PlaceCollector(instance).collected();
}

QVariantList SymbolOverrides::points(const SketchLayer& instance) {
  QVariantList points;
  for (const Place& place : places(instance)) {
    points.append(toVariant(std::make_shared<MSOverridePoint>(place.name)));
  }
  return points;
}

QVariantList SymbolOverrides::pointsOfSymbol(const SketchLayer& master) { return points(master); }

QVariantList SymbolOverrides::values(const SketchLayer& instance) {
  QVariantList values;
  for (const SketchJson& value : getArray(instance.node().json(), kValues)) {
    values.append(toVariant(std::make_shared<ModelPart>(overrideValueClass(), value)));
  }
  return values;
}

const ClassInfo& overrideValueClass() {
  using M = Member<ModelPart>;
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSOverrideValue", ModelPart::staticClassInfo())
          .property("overrideName", M::text<"overrideName">,
                    "What documents call it: \"ID/ID_property\".")
          .property(
              "value",
              [](const ModelPart& self) {
                return variantFromSketchJson(get(self.json(), "value"));
              },
              "What the instance shows.");
  return kClass;
}

QVariant SymbolOverrides::valueAt(const SketchLayer& instance, const QString& name) {
  for (const SketchJson& value : getArray(instance.node().json(), kValues)) {
    if (getString(value, "overrideName") != name) continue;
    const SketchJson& json = get(value, "value");
    return MSOverridePoint(name).property() == u"image"
               ? toVariant(MSImageData::of(json, instance.document()))
               : variantFromSketchJson(json);
  }
  return {};
}

void SymbolOverrides::setValueForPoint(SketchLayer& instance, const QVariant& value,
                                       const QVariant& point) {
  const auto given = std::dynamic_pointer_cast<MSOverridePoint>(point.value<ObjectRef>());
  const QString name = given ? given->name() : point.toString();
  if (MSOverridePoint(name).property().isEmpty()) {
    raise(u"setValue:forOverridePoint: takes an MSOverridePoint or its name"_s);
  }
  SketchJson& values = instance.edit().change()[kValues];
  if (!values.is_array()) values = SketchJson::array();
  for (size_t i = values.size(); i-- > 0;) {
    if (getString(values[i], "overrideName") == name) values.erase(i);
  }
  if (!isNothing(value)) add(&values, name, value);
}

const ClassInfo& MSOverridePoint::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<MSOverridePoint>("MSOverridePoint")
          .property("name", &MSOverridePoint::name, "What documents call it: \"ID/ID_property\".")
          .property("property", &MSOverridePoint::property,
                    "What can differ, such as \"stringValue\" or \"symbolID\".")
          .property("layerID", &MSOverridePoint::layerID, "The layer's identifier.")
          .operation("isTextOverride", &MSOverridePoint::isTextOverride,
                     "Returns whether a text can differ.")
          .operation("isSymbolOverride", &MSOverridePoint::isSymbolOverride,
                     "Returns whether the symbol of a nested instance can differ.")
          .operation("isImageOverride", &MSOverridePoint::isImageOverride,
                     "Returns whether an image can differ.");
  return kClass;
}

QString MSOverridePoint::property() const {
  const qsizetype end = name_.indexOf(u'_', name_.lastIndexOf(u'/') + 1);
  return end < 0 ? QString() : name_.mid(end + 1);
}

QString MSOverridePoint::layerID() const {
  return name_.mid(name_.lastIndexOf(u'/') + 1).section(u'_', 0, 0);
}

}  // namespace kelvar
