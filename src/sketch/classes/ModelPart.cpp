#include "sketch/classes/ModelPart.h"

#include <cmath>

#include "runtime/raise.h"
#include "sketch/document/DocumentFiles.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&ModelPart::staticClassInfo);

const SketchJson kMissing;

}  // namespace

const ClassInfo& ModelPart::staticClassInfo() {
  static const ClassInfo kClass = ClassInfoBuilder<ModelPart>("MSModelObject")
                                      .property("objectID", Member<ModelPart>::text<"do_objectID">,
                                                "The identifier; nil where documents give none.");
  return kClass;
}

ModelPart::ModelPart(const ClassInfo& info, SketchJson json)
    : info_(info), own_(std::make_shared<SketchJson>(std::move(json))) {}

ModelPart::ModelPart(const ClassInfo& info, SketchLayerRef layer, Place place)
    : info_(info), layer_(std::move(layer)), place_(std::move(place)) {}

ModelPartRef ModelPart::within(const ClassInfo& info, const ModelPart& part, const Place& place) {
  auto inner = std::make_shared<ModelPart>(info, part.layer_, part.place_ / place);
  inner->document_ = part.document_;
  inner->own_ = part.own_;
  inner->element_ = part.element_;
  return inner;
}

ModelPart::ModelPart(const ClassInfo& info, SketchDocumentRef document, Place place)
    : info_(info), document_(std::move(document)), place_(std::move(place)) {}

const SketchJson& ModelPart::root() const {
  return layer_ ? layer_->node().json() : document_ ? document_->files().document() : *own_;
}

SketchJson& ModelPart::changeRoot() {
  return layer_ ? layer_->edit().change() : document_ ? document_->edit().changeDocument() : *own_;
}

void ModelPart::raiseGone() const {
  raise(QStringLiteral("the %1 is no longer where it was").arg(info_.name()));
}

const SketchJson& ModelPart::json() const {
  const SketchJson& all = root();
  const Place place = placeInRoot();
  return all.contains(place) ? all[place] : kMissing;
}

SketchJson& ModelPart::change() {
  const Place place = placeInRoot();
  SketchJson& all = changeRoot();
  // An element of a list is not made anew, and what is in the way is left as it is.
  Place around = place;
  while (!around.empty() && !all.contains(around)) {
    if (around.back().find_first_not_of("0123456789") == std::string::npos) raiseGone();
    around.pop_back();
  }
  if (!around.empty() || !place.empty()) {
    const SketchJson& parent = all[around];
    if (around != place && !parent.is_object() && !parent.is_null()) raiseGone();
  }
  SketchJson& json = all[place];
  if (!json.is_object()) json = SketchJson::object();
  return json;
}

ModelPart::Place ModelPart::placeInRoot() const {
  if (!element_) return place_;
  const SketchJson& all = root();
  const SketchJson& elements = all.contains(element_->list) ? all[element_->list] : kMissing;
  if (!elements.is_array()) raiseGone();
  const auto isAt = [&](size_t i) {
    return getString(elements[i], "do_objectID") == element_->objectID;
  };
  size_t index = element_->index;
  if (index >= elements.size() || !isAt(index)) {
    for (index = 0; index < elements.size() && !isAt(index);) ++index;
  }
  if (index == elements.size()) raiseGone();
  element_->index = index;
  return element_->list / index / place_;
}

void ModelPart::moveInto(ModelPart& part, const Place& place) {
  SketchJson copy = json();
  SketchJson& target = part.change();
  target[place] = std::move(copy);
  layer_ = part.layer_;
  document_ = part.document_;
  own_ = part.own_;
  element_ = part.element_;
  place_ = part.place_ / place;
}

void ModelPart::follow(const Place& list, size_t index) {
  element_.reset();
  place_ = list / index;
  const QString objectID = getString(json(), "do_objectID");
  if (objectID.isEmpty()) return;
  element_ = Element{list, objectID, index};
  place_ = Place();
}

QVariant ModelPart::valueForKey(const QString& key) const {
  if (info_.property(key)) return Object::valueForKey(key);
  const SketchJson& member = get(json(), key.toUtf8().constData());
  return member.is_null() ? QVariant() : variantFromSketchJson(member);
}

QString ModelPart::description() const { return QStringLiteral("<%1>").arg(info_.name()); }

ModelPart& partOfClass(const ModelPartRef& part, const ClassInfo& info, const char* what) {
  const ClassInfo* given = part ? &part->classInfo() : nullptr;
  while (given && given != &info) given = given->base();
  if (given) return *part;
  raise(QStringLiteral("%1 takes %2, not %3")
            .arg(QString::fromLatin1(what), info.name(),
                 part ? part->classInfo().name() : QStringLiteral("nil")));
}

SketchJson numberJson(double number, const char* what) {
  if (!std::isfinite(number)) {
    raise(QStringLiteral("%1 must be a finite number").arg(QString::fromLatin1(what)));
  }
  const bool isWhole = std::trunc(number) == number && std::abs(number) < 0x1p53;
  return isWhole ? SketchJson(int64_t(number)) : SketchJson(number);
}

}  // namespace kelvar
