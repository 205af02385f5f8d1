#include "sketch/document/Layer.h"

#include <algorithm>
#include <utility>

#include "sketch/document/KeyedArchive.h"
#include "sketch/document/LayerType.h"
#include "sketch/document/SketchTransform.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

constexpr const char* kLayers = "layers";

LayerKind kindFrom(const QString& name) {
  constexpr std::pair<QStringView, LayerKind> kKinds[] = {
      {u"rectangle", LayerKind::Rectangle},
      {u"text", LayerKind::Text},
      {u"group", LayerKind::Group},
      {u"shapePath", LayerKind::ShapePath},
      {u"shapeGroup", LayerKind::ShapeGroup},
      {u"symbolInstance", LayerKind::SymbolInstance},
      {u"oval", LayerKind::Oval},
      {u"bitmap", LayerKind::Bitmap},
      {u"artboard", LayerKind::Artboard},
      {u"symbolMaster", LayerKind::SymbolMaster},
      {u"page", LayerKind::Page},
      {u"triangle", LayerKind::Triangle},
      {u"polygon", LayerKind::Polygon},
      {u"star", LayerKind::Star},
      {u"slice", LayerKind::Slice},
      {u"MSImmutableHotspotLayer", LayerKind::Hotspot}};
  const auto found = std::find_if(std::begin(kKinds), std::end(kKinds),
                                  [&](const auto& kind) { return kind.first == name; });
  return found == std::end(kKinds) ? LayerKind::Unknown : found->second;
}

void decodePlace(const SketchJson& json, LayerProperties* layer) {
  layer->isVisible = getBool(json, "isVisible", true);
  layer->frame = getRect(json, "frame");
  layer->rotation = getNumber(json, "rotation");
  layer->isFlippedHorizontal = getBool(json, "isFlippedHorizontal");
  layer->isFlippedVertical = getBool(json, "isFlippedVertical");
  layer->transform = sketchTransform(json);
  layer->isMask = getBool(json, "hasClippingMask");
  layer->isAlphaMask = getInt(json, "clippingMaskMode") != 0;
  layer->breaksMaskChain = getBool(json, "shouldBreakMaskChain");
}

void decodeContainer(const SketchJson& json, LayerProperties* layer) {
  constexpr int kClipsInstance = 1;
  layer->isFrame = isSketchFrame(json);
  layer->clipsContent = clipsContent(json);
  layer->clipsInstance = getInt(json, "clippingBehavior") == kClipsInstance;
  layer->hasBackground = getBool(json, "hasBackgroundColor");
  if (layer->hasBackground) layer->background = render::readColor(get(json, "backgroundColor"));
  layer->exportsBackground = getBool(json, "includeBackgroundColorInExport", true);
  layer->showsBackgroundInInstance = getBool(json, "includeBackgroundColorInInstance");
}

void decodeInstance(const SketchJson& json, LayerProperties* layer) {
  layer->symbolScale = getNumber(json, "scale", 1);
  layer->hasSpacing =
      getNumber(json, "horizontalSpacing") != 0 || getNumber(json, "verticalSpacing") != 0;
}

void decodeBitmap(const SketchJson& json, LayerProperties* layer) {
  layer->image = readImageReference(get(json, "image"));
  // Documents of Sketch 43 crop; all others show the whole.
  layer->crop = getTextRect(json, "clippingMask");
  layer->fillReplacesImage = getBool(json, "fillReplacesImage");
}

/// Some documents have an archived string in place of a plain one.
QString nameOf(const SketchJson& json) {
  const QString archive = getString(get(json, "name"), "_archive");
  if (archive.isEmpty()) return getString(json, "name");
  const QVariant name = render::readKeyedArchive(QByteArray::fromBase64(archive.toLatin1()));
  const QVariantMap members = name.toMap();
  return members.isEmpty() ? name.toString() : members.value(u"NSString"_s).toString();
}

LayerProperties decoded(const SketchJson& json) {
  LayerProperties layer;
  layer.kindName = classOf(json);
  layer.kind = kindFrom(layer.kindName);
  layer.name = nameOf(json);
  layer.objectID = getString(json, "do_objectID");
  layer.symbolID = getString(json, "symbolID");
  layer.booleanOperation = getInt(json, "booleanOperation", -1);
  decodePlace(json, &layer);
  decodeContainer(json, &layer);
  if (layer.kind == LayerKind::SymbolInstance) decodeInstance(json, &layer);
  if (layer.kind == LayerKind::Bitmap) decodeBitmap(json, &layer);
  layer.followsPath = getBool(json, "automaticallyDrawOnUnderlyingPath");
  return layer;
}

SketchJson::array_t* listOfLayers(SketchJson* json) {
  const auto layers = json->find(kLayers);
  return layers == json->end() ? nullptr : layers->get_ptr<SketchJson::array_t*>();
}

}  // namespace

Layer::Layer(SketchJson json) : json_(std::move(json)) {
  SketchJson::array_t* const layers = listOfLayers(&json_);
  // A list with anything else in it is kept, but holds no layers.
  if (!layers || !std::all_of(layers->begin(), layers->end(),
                              [](const SketchJson& layer) { return layer.is_object(); })) {
    return;
  }
  children_.reserve(layers->size());
  for (SketchJson& layer : *layers) children_.push_back(std::make_shared<Layer>(std::move(layer)));
  SketchJson::array_t().swap(*layers);
}

void Layer::insertChild(size_t index, std::shared_ptr<Layer> child) {
  if (!listOfLayers(&json_)) json_[kLayers] = SketchJson::array();
  children_.insert(children_.begin() + ptrdiff_t(index), std::move(child));
}

std::shared_ptr<Layer> Layer::takeChild(size_t index) {
  std::shared_ptr<Layer> child = std::move(children_[index]);
  children_.erase(children_.begin() + ptrdiff_t(index));
  return child;
}

const LayerProperties& Layer::properties() const {
  if (!properties_) properties_ = std::make_unique<const LayerProperties>(decoded(json_));
  return *properties_;
}

const render::LayerStyle& Layer::style() const {
  if (!style_) {
    style_ =
        std::make_unique<const render::LayerStyle>(render::readLayerStyle(get(json_, "style")));
  }
  return *style_;
}

SketchJson& Layer::change() {
  properties_.reset();
  style_.reset();
  return json_;
}

SketchJson Layer::toJson() const {
  SketchJson json = json_;
  if (children_.empty()) return json;
  SketchJson::array_t* const layers = listOfLayers(&json);
  layers->reserve(children_.size());
  for (const auto& child : children_) layers->push_back(child->toJson());
  return json;
}

void Layer::appendTo(std::string* text) const {
  if (children_.empty()) {
    *text += json_.dump();
    return;
  }
  bool hasLayers = false;
  char separator = '{';
  for (const auto& [key, value] : json_.items()) {
    *text += std::exchange(separator, ',');
    *text += SketchJson(key).dump() + ':';
    if (hasLayers || key != kLayers) {
      *text += value.dump();
      continue;
    }
    hasLayers = true;  // Of two members with one name the first counts.
    char before = '[';
    for (const auto& child : children_) {
      *text += std::exchange(before, ',');
      child->appendTo(text);
    }
    *text += ']';
  }
  *text += '}';
}

}  // namespace kelvar
