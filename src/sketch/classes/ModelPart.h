#pragma once

#include <functional>
#include <optional>
#include <ratio>

#include "runtime/ClassInfo.h"
#include "sketch/document/Layer.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {

class ModelPart;
using ModelPartRef = std::shared_ptr<ModelPart>;

/// A part of the JSON of a layer or of a document that scripts see as an object of its own, such as
/// a style or a fill, or one that is in no layer yet.
///
/// A part of a layer is known by its place: what is set in it goes into the document. A part that
/// is put into a layer is copied there and stands for its copy from then on. All classes of parts
/// share this type; `classInfo` tells them apart. Operations raise where the place no longer
/// exists.
class ModelPart : public Object {
 public:
  using Place = SketchJson::json_pointer;

  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return info_; }

  /// A part that is in no layer.
  ModelPart(const ClassInfo& info, SketchJson json);
  /// The part of a layer at a place in its JSON.
  ModelPart(const ClassInfo& info, SketchLayerRef layer, Place place);
  /// The part of a document at a place in its document.json.
  ModelPart(const ClassInfo& info, SketchDocumentRef document, Place place);
  /// The part of another part, at a place in its JSON.
  static ModelPartRef within(const ClassInfo& info, const ModelPart& part, const Place& place);

  /// Null where an optional part, such as the style of a group, is missing.
  const SketchJson& json() const;
  SketchJson& change();
  /// Copies what the part holds to a place in another one, and stands for it from now on.
  void moveInto(ModelPart& part, const Place& place);
  /// Makes a part of a document the element of a list in it, wherever that goes in the list; one
  /// without an identifier is known by its index.
  void follow(const Place& list, size_t index);

  /// The layer that it is in; null for none.
  const SketchLayerRef& layer() const { return layer_; }
  /// The document that it is in; null for none.
  SketchDocumentRef document() const { return layer_ ? layer_->document() : document_; }
  /// Where it is in the JSON of its layer or document, of the element that it follows, or of the
  /// part that it is within.
  const Place& place() const { return place_; }

  /// Members of the JSON, in addition to the keys of the class.
  QVariant valueForKey(const QString& key) const override;
  QString description() const override;

 private:
  /// An element of a list, and where it was found last.
  struct Element {
    Place list;
    QString objectID;
    mutable size_t index;
  };

  const SketchJson& root() const;
  Place placeInRoot() const;
  SketchJson& changeRoot();
  [[noreturn]] void raiseGone() const;

  const ClassInfo& info_;
  SketchLayerRef layer_;
  SketchDocumentRef document_;
  /// Where there is no layer and no document; shared with the parts within it.
  std::shared_ptr<SketchJson> own_;
  std::optional<Element> element_;
  Place place_;
};

/// Raises for nil and for a part of another class. `what` is the operation.
ModelPart& partOfClass(const ModelPartRef& part, const ClassInfo& info, const char* what);

/// The part's JSON, and the same for changes; the same for layers.
inline const SketchJson& jsonOf(const ModelPart& part) { return part.json(); }
inline SketchJson& changeOf(ModelPart& part) { return part.change(); }
inline const SketchJson& jsonOf(const SketchLayer& layer) { return layer.node().json(); }
inline SketchJson& changeOf(SketchLayer& layer) { return layer.edit().change(); }

/// A number as documents write it: whole ones without a fraction. Raises for one that is not
/// finite. `what` is the property.
SketchJson numberJson(double number, const char* what);

/// The name of a member as a template argument.
template <size_t size>
struct Key {
  consteval Key(const char (&name)[size]) { std::copy_n(name, size, text); }
  char text[size];
};

/// Accessors of JSON members, for the descriptions of classes.
template <class T>
struct Member {
  template <Key key, bool fallback = false>
  static bool flag(const T& self) {
    return getBool(jsonOf(self), key.text, fallback);
  }
  template <Key key>
  static void setFlag(T& self, bool value) {
    changeOf(self)[key.text] = value;
  }
  template <Key key, class Fallback = std::ratio<0>>
  static double number(const T& self) {
    return getNumber(jsonOf(self), key.text, double(Fallback::num) / Fallback::den);
  }
  template <Key key>
  static void setNumber(T& self, double value) {
    changeOf(self)[key.text] = numberJson(value, key.text);
  }
  template <Key key, int fallback = 0>
  static int whole(const T& self) {
    return getInt(jsonOf(self), key.text, fallback);
  }
  template <Key key>
  static void setWhole(T& self, int value) {
    changeOf(self)[key.text] = value;
  }
  template <Key key>
  static QString text(const T& self) {
    return getString(jsonOf(self), key.text);
  }
  template <Key key>
  static void setText(T& self, const QString& value) {
    changeOf(self)[key.text] = value.toStdString();
  }
};

}  // namespace kelvar
