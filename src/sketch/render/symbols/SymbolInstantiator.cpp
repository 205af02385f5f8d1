#include "sketch/render/symbols/SymbolInstantiator.h"

#include <cmath>
#include <initializer_list>
#include <map>

#include "sketch/document/DocumentFiles.h"
#include "sketch/render/symbols/Resizing.h"
#include "sketch/render/symbols/SymbolLayout.h"

namespace kelvar::render {
namespace {

using namespace Qt::StringLiterals;

/// "ID/ID_property": the way through nested instances to a layer, and what of it is changed.
struct Override {
  QStringList way;
  QString property;
  const SketchJson* value;
};

Override readOverride(const SketchJson& json) {
  const QString name = getString(json, "overrideName");
  const qsizetype end = name.indexOf(u'_', name.lastIndexOf(u'/') + 1);
  return {name.left(end).split(u'/'), end < 0 ? QString() : name.mid(end + 1), &get(json, "value")};
}

SketchJson overrideValue(const QString& name, const SketchJson& value) {
  return {{"_class", "overrideValue"}, {"overrideName", name.toStdString()}, {"value", value}};
}

/// Documents before Sketch 44 nest dictionaries of overrides.
void addOldOverrides(const SketchJson& overrides, const QString& way, int depth,
                     SketchJson* values) {
  if (!overrides.is_object() || depth > 16) return;
  for (const auto& [key, value] : overrides.items()) {
    const QString name = way + QString::fromStdString(key);
    if (value.is_string()) {
      values->push_back(overrideValue(name + u"_stringValue"_s, value));
    } else if (!value.is_object()) {
      continue;
    } else if (value.contains("_ref") || value.contains("data")) {
      values->push_back(overrideValue(name + u"_image"_s, value));
    } else {
      if (value.contains("symbolID")) {
        values->push_back(overrideValue(name + u"_symbolID"_s, value["symbolID"]));
      }
      addOldOverrides(value, name + u'/', depth + 1, values);
    }
  }
}

SketchJson overridesOf(const SketchJson& instance) {
  SketchJson values = getArray(instance, "overrideValues");
  const SketchJson& old = get(instance, "overrides");
  if (values.empty() && old.is_object()) {
    addOldOverrides(old.contains("0") ? old["0"] : old, {}, 0, &values);
  }
  return values;
}

SketchJson* layerWithID(SketchJson* container, const QString& id) {
  const auto layers = container->find("layers");
  if (layers == container->end() || !layers->is_array()) return nullptr;
  for (SketchJson& layer : *layers) {
    if (!layer.is_object()) continue;
    if (getString(layer, "do_objectID") == id) return &layer;
    if (SketchJson* found = layerWithID(&layer, id)) return found;
  }
  return nullptr;
}

/// The attributes that all of a text's characters get when it is replaced: those of its first run.
SketchJson leadingAttributes(const SketchJson& layer) {
  const SketchJson& runs = getArray(get(layer, "attributedString"), "attributes");
  if (!runs.empty()) return get(runs[0], "attributes");
  return get(get(get(layer, "style"), "textStyle"), "encodedAttributes");
}

void setText(SketchJson* layer, const SketchJson& text, const SketchJson& attributes) {
  SketchJson run = {{"_class", "stringAttribute"}, {"location", 0}, {"length", 0}};
  run["length"] = QString::fromStdString(text.get<std::string>()).size();
  run["attributes"] = attributes;
  SketchJson& string = (*layer)["attributedString"];
  string = {{"_class", "attributedString"}, {"string", text}};
  string["attributes"] = SketchJson::array({run});
}

void setImage(SketchJson* layer, const SketchJson& image) {
  if (classOf(*layer) == u"bitmap") {
    (*layer)["image"] = image;
    return;
  }
  for (SketchJson& fill : (*layer)["style"]["fills"]) {
    if (fill.is_object() && getInt(fill, "fillType") == 4) fill["image"] = image;
  }
}

void setStyle(SketchJson* layer, const SketchJson& style) {
  (*layer)["style"] = style;
  if (classOf(*layer) != u"text") return;
  const SketchJson& attributes = get(get(style, "textStyle"), "encodedAttributes");
  const SketchJson text = get(get(*layer, "attributedString"), "string");
  if (attributes.is_object() && text.is_string()) setText(layer, text, attributes);
}

void setColor(SketchJson* layer, const char* list, int index, const SketchJson& color) {
  SketchJson& parts = (*layer)["style"][list];
  if (parts.is_array() && index >= 0 && size_t(index) < parts.size() &&
      parts[size_t(index)].is_object()) {
    parts[size_t(index)]["color"] = color;
  }
}

void setAttribute(SketchJson* layer, const char* key, const SketchJson& value) {
  const SketchJson text = get(get(*layer, "attributedString"), "string");
  if (!text.is_string()) return;
  SketchJson attributes = leadingAttributes(*layer);
  attributes[key] = value;
  setText(layer, text, attributes);
}

void setTint(SketchJson* layer, const SketchJson& color) {
  SketchJson fill = {{"_class", "fill"}, {"isEnabled", true}, {"fillType", 0}};
  fill["color"] = color;
  (*layer)["style"]["fills"] = SketchJson::array({fill});
}

void setInParagraph(SketchJson* layer, std::initializer_list<const char*> keys,
                    const SketchJson& value) {
  SketchJson paragraph = get(leadingAttributes(*layer), "paragraphStyle");
  if (!paragraph.is_object()) paragraph = {{"_class", "paragraphStyle"}};
  for (const char* key : keys) paragraph[key] = value;
  setAttribute(layer, "paragraphStyle", paragraph);
}

void setInFont(SketchJson* layer, const char* key, const SketchJson& value) {
  SketchJson font = get(leadingAttributes(*layer), "MSAttributedStringFontAttribute");
  if (!font.is_object()) return;
  font["attributes"][key] = value;
  setAttribute(layer, "MSAttributedStringFontAttribute", font);
}

/// The same family in the named weight: "Inter-Regular" becomes "Inter-Bold".
bool setWeight(SketchJson* layer, const SketchJson& weight) {
  const SketchJson attributes = leadingAttributes(*layer);
  const SketchJson& font = get(attributes, "MSAttributedStringFontAttribute");
  const QString name = getString(get(font, "attributes"), "name");
  if (!weight.is_string() || name.isEmpty()) return false;
  const std::string family = name.section(u'-', 0, 0).toStdString();
  setInFont(layer, "name", family + "-" + weight.get<std::string>());
  return true;
}

/// Overrides of single numbers are numbers or say them as text.
SketchJson numberFrom(const SketchJson& value) {
  if (!value.is_string()) return value;
  bool isNumber = false;
  const double number = QString::fromStdString(value.get<std::string>()).toDouble(&isNumber);
  return isNumber && std::isfinite(number) ? SketchJson(number) : value;
}

/// The master with the instance's overrides, at the size that it then has. Of nested instances no
/// more than `*layoutBudget` are measured.
SketchJson laidOutMaster(const SketchJson& instance, const SketchLayer& master,
                         const SketchDocument& document, int* layoutBudget, QStringList* warnings,
                         const std::stop_token& stop);

class SymbolInstantiator {
 public:
  SymbolInstantiator(const SketchDocument& document, int* layoutBudget, QStringList* warnings,
                     const std::stop_token& stop)
      : document_(document), layoutBudget_(layoutBudget), warnings_(warnings), stop_(stop) {}

  void apply(const Override& change, SketchJson* master) {
    SketchJson* const layer = layerWithID(master, change.way.first());
    if (!layer) return;  // Left over from another master.
    if (change.way.size() > 1 || change.property == u"symbolID") {
      before_.try_emplace(layer, *layer);
      return change.way.size() > 1 ? handDown(change, layer) : setSymbol(layer, *change.value);
    }
    const SketchJson& value = *change.value;
    const QString& property = change.property;
    if (property == u"flowDestination") return;  // Nothing to be seen.
    if (property == u"stringValue") {
      if (value.is_string()) setText(layer, value, SketchJson(leadingAttributes(*layer)));
    } else if (property == u"image") {
      setImage(layer, value);
    } else if (property == u"layerStyle" || property == u"textStyle") {
      setSharedStyle(layer, value);
    } else if (property == u"isVisible") {
      (*layer)["isVisible"] = value == "false" ? SketchJson(false) : numberFrom(value);
    } else if (!setDetail(layer, property, value)) {
      warn(
          u"The override \"%1\" of \"%2\" is left out."_s.arg(property, getString(*layer, "name")));
    }
    (*layer)[kHasForeignFrame] = true;
  }

  /// Tells the nested instances that were changed what room they want now. After all changes.
  void measureNested() const {
    for (const auto& [instance, before] : before_) {
      if (stop_.stop_requested()) return;
      setSizeDelta(wantedSize(*instance) - wantedSize(before), instance);
    }
  }

 private:
  /// To the nested instance, in place of what it says itself.
  static void handDown(const Override& change, SketchJson* instance) {
    const QString name = change.way.mid(1).join(u'/') + u'_' + change.property;
    SketchJson values = overridesOf(*instance);
    for (SketchJson& value : values) {
      if (getString(value, "overrideName") != name) continue;
      value["value"] = *change.value;
      (*instance)["overrideValues"] = values;
      return;
    }
    values.push_back(overrideValue(name, *change.value));
    (*instance)["overrideValues"] = values;
  }

  /// The size that the master of a nested instance has with its overrides.
  QSizeF wantedSize(const SketchJson& instance) const {
    const SketchLayerRef master = document_.symbolMaster(getString(instance, "symbolID"));
    if (!master) return {0, 0};
    const double scale = getNumber(instance, "scale", 1);
    QSizeF size = master->frameRect().size();
    if (hasSmartLayout(master->node().json()) && --*layoutBudget_ >= 0) {
      QStringList unheard;
      const SketchJson laidOut =
          laidOutMaster(instance, *master, document_, layoutBudget_, &unheard, stop_);
      size = getRect(laidOut, "frame").size();
    }
    return size * (scale > 0 ? scale : 1);
  }

  /// No symbol hides the instance.
  static void setSymbol(SketchJson* layer, const SketchJson& symbolID) {
    if (!symbolID.is_string()) return;
    if (symbolID.get<std::string>().empty()) {
      (*layer)["isVisible"] = false;
    } else {
      (*layer)["symbolID"] = symbolID;
    }
  }

  void setSharedStyle(SketchJson* layer, const SketchJson& styleID) {
    if (!styleID.is_string() || styleID.get<std::string>().empty()) return;
    const SketchJson& style =
        document_.files().sharedStyle(QString::fromStdString(styleID.get<std::string>()));
    if (style.is_object()) return setStyle(layer, style);
    warn(u"The shared style that overrides the one of \"%1\" is missing."_s.arg(
        getString(*layer, "name")));
  }

  void warn(const QString& warning) { warnings_->append(warning); }

  /// Single values, such as "color:fill-0".
  static bool setDetail(SketchJson* layer, const QString& property, const SketchJson& value) {
    constexpr std::pair<QLatin1StringView, const char*> kColored[] = {
        {"color:fill-"_L1, "fills"},
        {"color:border-"_L1, "borders"},
        {"color:shadow-"_L1, "shadows"},
        {"color:innerShadow-"_L1, "innerShadows"}};
    for (const auto& [start, list] : kColored) {
      if (!property.startsWith(start)) continue;
      setColor(layer, list, property.mid(start.size()).toInt(), value);
      return true;
    }
    if (property == u"color:tint") {
      setTint(layer, value);
    } else if (property == u"textColor" || property == u"color:text") {
      setAttribute(layer, "MSAttributedStringColorAttribute", value);
    } else if (property == u"textWeight" || property == u"fontWeight") {
      return setWeight(layer, value);
    } else {
      return setTextDetail(layer, property, numberFrom(value));
    }
    return true;
  }

  /// A number of a text.
  static bool setTextDetail(SketchJson* layer, const QString& property, const SketchJson& value) {
    if (!value.is_number()) return false;
    if (property == u"textSize" || property == u"fontSize") {
      setInFont(layer, "size", value);
    } else if (property == u"textHorizontalAlignment") {
      setInParagraph(layer, {"alignment"}, value);
    } else if (property == u"textLineHeight") {
      setInParagraph(layer, {"minimumLineHeight", "maximumLineHeight"}, value);
    } else if (property == u"textParagraphSpacing") {
      setInParagraph(layer, {"paragraphSpacing"}, value);
    } else if (property == u"textLetterSpacing") {
      setAttribute(layer, "kerning", value);
    } else if (property == u"textTransform") {
      setAttribute(layer, "MSAttributedStringTextTransformAttribute", value);
    } else if (property == u"textVerticalAlignment") {
      (*layer)["style"]["textStyle"]["verticalAlignment"] = value;
    } else {
      return false;
    }
    return true;
  }

  const SketchDocument& document_;
  int* layoutBudget_;
  QStringList* warnings_;
  const std::stop_token stop_;
  /// Nested instances as they were.
  std::map<SketchJson*, SketchJson> before_;
};

SketchJson laidOutMaster(const SketchJson& instance, const SketchLayer& master,
                         const SketchDocument& document, int* layoutBudget, QStringList* warnings,
                         const std::stop_token& stop) {
  SketchJson expanded = master.node().toJson();
  const SketchJson values = overridesOf(instance);
  SymbolInstantiator expansion(document, layoutBudget, warnings, stop);
  // A symbol is chosen before what is changed within it.
  for (const bool isSymbol : {true, false}) {
    for (const SketchJson& value : values) {
      if (stop.stop_requested()) return expanded;
      const Override change = readOverride(value);
      if ((change.property == u"symbolID") == isSymbol) expansion.apply(change, &expanded);
    }
  }
  expansion.measureNested();
  applySmartLayout(&expanded, stop);
  return expanded;
}

}  // namespace

SketchJson instantiateSymbol(const SketchJson& instance, const SketchDocument& document,
                             int* layoutBudget, QStringList* warnings,
                             const std::stop_token& stop) try {
  const SketchLayerRef master = document.symbolMaster(getString(instance, "symbolID"));
  if (!master) return {};
  SketchJson expanded = laidOutMaster(instance, *master, document, layoutBudget, warnings, stop);
  const double scale = getNumber(instance, "scale", 1);
  const QSizeF size = getRect(instance, "frame").size() / (scale > 0 ? scale : 1);
  resizeLayers(&expanded, getRect(expanded, "frame").size(), size);
  expanded["frame"]["width"] = size.width();
  expanded["frame"]["height"] = size.height();
  return expanded;
} catch (const SketchJson::exception&) {  // A member of an unexpected type.
  warnings->append(
      u"The symbol in \"%1\" is damaged and left out."_s.arg(getString(instance, "name")));
  return {};
}

}  // namespace kelvar::render
