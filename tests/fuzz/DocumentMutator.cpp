#include <QStringList>
#include <algorithm>
#include <nlohmann/json.hpp>
#include <random>

#include "fuzz/Fuzz.h"
#include "platform/files/ZipArchive.h"

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t maxSize);

namespace kelvar {
namespace {

using Json = nlohmann::ordered_json;

/// Numbers that tend to reveal faults.
const Json kNumbers = {0,      -0.0, 1,     -1,   2,      3,     4,          0.5,        -0.5,
                       1e-9,   90,   -45.5, 1000, 100000, 1e9,   1e18,       1e308,      -1e308,
                       5e-324, 7,    12,    21,   4096,   65536, 2147483647, -2147483648};

/// Strings that have a meaning in documents.
const Json kWords = {
    "",
    "page",
    "artboard",
    "symbolMaster",
    "symbolInstance",
    "group",
    "rectangle",
    "oval",
    "triangle",
    "polygon",
    "star",
    "shapePath",
    "shapeGroup",
    "text",
    "bitmap",
    "slice",
    "line",
    "MSImmutableHotspotLayer",
    "{0, 0}",
    "{1, 1}",
    "{0.5, 0.5}",
    "{-1, 2}",
    "{1e308, -1e308}",
    "{nan, inf}",
    "{",
    "images/gone.png",
    "images/a",
    "M",
    "m",
    "A",
    "T_stringValue",
    "M_symbolID",
    "T_image",
    "M/T_stringValue",
    "fill_layerStyle",
    "color:fill-0",
    "\xf0\x9f\x91\xa9\xe2\x80\x8d\xf0\x9f\x91\xa7 \xd7\xa9\xd9\x84 a\xcc\x81\n\t\xe2\x80\xa8x"};

/// Properties of layers and styles with valid values.
const char* const kMembers[] = {
    R"({"rotation":30})",
    R"({"isFlippedHorizontal":true,"isFlippedVertical":true})",
    R"({"isVisible":false})",
    R"({"do_objectID":"T"})",
    R"({"hasClippingMask":true,"clippingMaskMode":1})",
    R"({"hasClippingMask":true})",
    R"({"shouldBreakMaskChain":true})",
    R"({"booleanOperation":2})",
    R"({"resizingConstraint":9})",
    R"({"fixedRadius":4,"hasConvertedToNewRoundCorners":true})",
    R"({"hasBackgroundColor":true,"backgroundColor":{"red":1,"alpha":0.5}})",
    R"({"resizesContent":true})",
    R"({"edited":true,"isClosed":true,"points":[{"point":"{0, 0}"},{"point":"{1, 0}","cornerRadius":3},{"point":"{1, 1}","hasCurveFrom":true,"curveFrom":"{2, 1}"},{"point":"{0, 1}"}]})",
    R"({"frame":{"x":1,"y":2,"width":20,"height":10}})",
    R"({"groupLayout":{"_class":"MSImmutableInferredGroupLayout","axis":1,"layoutAnchor":1,"minSize":2}})",
    R"({"groupLayout":{"_class":"MSImmutableInferredGroupLayout","axis":0}})",
    R"({"overrides":{"T":"text","M":{"symbolID":"M","T":"x"}}})",
    R"({"overrideValues":[{"overrideName":"T_stringValue","value":"long text"},{"overrideName":"M_symbolID","value":"m"}]})",
    R"({"symbolID":"m"})",
    R"({"scale":2})",
    R"({"sharedStyleID":"S"})",
    R"({"image":{"_ref":"images/a.png"}})",
    R"({"userInfo":{"io.kelvarlabs.kelvar":{"artboard":"A","quality":2,"rotation":1,"flip":true,"image":"images/a.png"}}})",
    R"({"attributedString":{"string":"Text","attributes":[{"location":0,"length":4,"attributes":{"MSAttributedStringFontAttribute":{"attributes":{"name":"Inter-Bold","size":10}},"kerning":1,"underlineStyle":1,"strikethroughStyle":1,"paragraphStyle":{"alignment":3,"minimumLineHeight":12,"paragraphSpacing":3},"textStyleVerticalAlignmentKey":1,"MSAttributedStringTextTransformAttribute":1}}]},"textBehaviour":2})",
    R"({"style":{"fills":[{"isEnabled":true,"fillType":0,"color":{"red":1,"alpha":0.7}}]}})",
    R"({"fills":[{"isEnabled":true,"fillType":1,"gradient":{"gradientType":1,"from":"{0.5, 0}","to":"{0.5, 1}","elipseLength":0.5,"stops":[{"position":0,"color":{"alpha":1}},{"position":1,"color":{"red":1,"alpha":0.5}}]}}]})",
    R"({"fills":[{"isEnabled":true,"fillType":4,"patternFillType":0,"patternTileScale":0.1,"image":{"_ref":"images/a.png"}}]})",
    R"({"borders":[{"isEnabled":true,"position":2,"thickness":3,"color":{"alpha":1}}],"borderOptions":{"dashPattern":[3,1],"lineCapStyle":1,"lineJoinStyle":2}})",
    R"({"shadows":[{"isEnabled":true,"blurRadius":4,"offsetX":1,"offsetY":2,"spread":3,"color":{"alpha":0.5}}]})",
    R"({"innerShadows":[{"isEnabled":true,"blurRadius":4,"offsetY":2,"spread":1,"color":{"alpha":0.5}}]})",
    R"({"blur":{"isEnabled":true,"type":0,"radius":5}})",
    R"({"blur":{"isEnabled":true,"type":3,"radius":5,"saturation":2}})",
    R"({"blur":{"isEnabled":true,"type":1,"radius":5,"motionAngle":30}})",
    R"({"contextSettings":{"blendMode":12,"opacity":0.5}})",
    R"({"colorControls":{"isEnabled":true,"brightness":0.2,"contrast":2,"hue":1,"saturation":0}})",
    R"({"startMarkerType":2,"endMarkerType":5})"};

/// Makes one random change to a tree of values.
class TreeMutator {
 public:
  explicit TreeMutator(unsigned seed) : random_(seed) {}

  void mutate(Json* root, const Json* other) {
    collect(root);
    if (values_.empty()) return;
    Json& at = *values_[below(values_.size())];
    if (other) return graft(&at, *other);
    switch (below(8)) {
      case 0:
        return addMembers(&at);
      case 1:
        return removeOne(&at);
      case 2:
        return repeatOne(&at);
      case 3:
        return graft(&at, *root);
      case 4:
        at = Json{nullptr, true, Json::array(), Json::object(), 1, "x"}[below(6)];
        return;
      case 5:
        at = Json::array({at});
        return;
      default:
        return changeScalar();
    }
  }

  size_t below(size_t count) { return count == 0 ? 0 : random_() % count; }

 private:
  void collect(Json* value) {
    values_.push_back(value);
    if (!value->is_structured()) scalars_.push_back(value);
    if (!value->is_structured()) return;
    for (Json& part : *value) collect(&part);
  }

  void graft(Json* at, const Json& from) {
    const Json copy = from;
    TreeMutator source{unsigned(random_())};
    source.collect(const_cast<Json*>(&copy));
    *at = Json(*source.values_[below(source.values_.size())]);
  }

  void addMembers(Json* at) {
    if (!at->is_object()) return changeScalar();
    const Json members = Json::parse(kMembers[below(std::size(kMembers))]);
    for (const auto& [key, value] : members.items()) (*at)[key] = value;
  }

  void removeOne(Json* at) {
    if (!at->is_structured() || at->empty()) return;
    at->erase(std::next(at->begin(), ptrdiff_t(below(at->size()))));
  }

  void repeatOne(Json* at) {
    if (!at->is_array() || at->empty()) return;
    const Json one = (*at)[below(at->size())];
    for (size_t i = 0, count = 1 + below(3); i < count; ++i) at->push_back(one);
  }

  void changeScalar() {
    if (scalars_.empty()) return;
    Json& scalar = *scalars_[below(scalars_.size())];
    if (scalar.is_number()) {
      scalar = below(3) ? kNumbers[below(kNumbers.size())]
                        : Json(scalar.get<double>() * (double(below(400)) / 100 - 1));
    } else if (scalar.is_boolean()) {
      scalar = !scalar.get<bool>();
    } else if (scalar.is_string() && below(3)) {
      scalar = below(2) ? kWords[below(kWords.size())] : *scalars_[below(scalars_.size())];
    } else if (scalar.is_string()) {
      std::string text = scalar.get<std::string>();
      const size_t size = text.size();
      text.resize(size + 16);
      text.resize(LLVMFuzzerMutate(reinterpret_cast<uint8_t*>(text.data()), size, text.size()));
      scalar = text;
    }
  }

  std::minstd_rand random_;
  std::vector<Json*> values_, scalars_;
};

Json parsed(const QByteArray& bytes) {
  return Json::parse(bytes.begin(), bytes.end(), nullptr, false);
}

/// The JSON with one change, or with a part of `other` in it. Empty if it is not JSON.
QByteArray mutatedJson(const QByteArray& bytes, const QByteArray& other, TreeMutator* mutator) {
  Json root = parsed(bytes);
  const Json from = other.isEmpty() ? Json() : parsed(other);
  if (root.is_discarded() || from.is_discarded()) return {};
  mutator->mutate(&root, other.isEmpty() ? nullptr : &from);
  return QByteArray::fromStdString(root.dump(-1, ' ', false, Json::error_handler_t::replace));
}

/// Changes one of the JSON files in an archive: a change to the bytes of the archive itself would
/// only fail the checksum.
QByteArray mutatedArchive(const QByteArray& bytes, TreeMutator* mutator) {
  const auto read = ZipArchive::read(bytes);
  if (!read) return {};
  const ZipArchive& archive = **read;
  const QStringList names = archive.names().filter(QStringLiteral(".json"));
  if (names.isEmpty()) return {};
  const QString name = names[qsizetype(mutator->below(size_t(names.size())))];
  const QByteArray changed = mutatedJson(archive.file(name).value_or(QByteArray()), {}, mutator);
  return changed.isEmpty() ? changed
                           : archive.written({{name, changed}}, {}).value_or(QByteArray());
}

size_t kept(const QByteArray& bytes, uint8_t* data, size_t maxSize) {
  if (bytes.isEmpty() || size_t(bytes.size()) > maxSize) return 0;
  std::copy(bytes.begin(), bytes.end(), data);
  return size_t(bytes.size());
}

}  // namespace
}  // namespace kelvar

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize,
                                          unsigned seed) {
  using namespace kelvar;
  TreeMutator mutator(seed);
  const QByteArray input = bytesOf(data, size);
  if (mutator.below(20) > 0) {
    const QByteArray changed =
        input.startsWith('{') ? mutatedJson(input, {}, &mutator) : mutatedArchive(input, &mutator);
    if (const size_t newSize = kept(changed, data, maxSize)) return newSize;
  }
  return LLVMFuzzerMutate(data, size, maxSize);
}

extern "C" size_t LLVMFuzzerCustomCrossOver(const uint8_t* data, size_t size, const uint8_t* other,
                                            size_t otherSize, uint8_t* out, size_t maxSize,
                                            unsigned seed) {
  using namespace kelvar;
  const QByteArray input = bytesOf(data, size), from = bytesOf(other, otherSize);
  if (!input.startsWith('{') || !from.startsWith('{')) return 0;
  TreeMutator mutator(seed);
  return kept(mutatedJson(input, from, &mutator), out, maxSize);
}

/// Fontconfig keeps its caches until the program ends.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }
