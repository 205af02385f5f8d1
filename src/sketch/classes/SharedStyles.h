#pragma once

#include "sketch/classes/ModelPart.h"

namespace kelvar {

/// A document's shared styles, of layers or of texts, as scripts see them. What a script holds of a
/// shared style stays that one as others are removed, and raises once it is removed itself.
class SharedStyles : public Object {
 public:
  /// The kind by its key in document.json.
  static constexpr const char* kOfLayers = "layerStyles";
  static constexpr const char* kOfTexts = "layerTextStyles";

  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  SharedStyles(SketchDocumentRef document, const char* kind)
      : document_(std::move(document)), kind_(kind) {}

  /// In the document's order.
  QVariantList objects() const;
  /// The same, then those of libraries.
  QVariantList withForeign() const;
  /// Null if there is none with this identifier.
  ModelPartRef withID(const QString& objectID) const;
  /// Puts a shared style that is in no document after the others. Raises for one that is in one.
  void add(const ModelPartRef& shared);
  /// By the identifier; -1 for none of these.
  int indexOf(const ModelPartRef& shared) const;
  /// Raises if there is no such shared style.
  ModelPartRef at(int index) const;
  /// Layers keep how they look. Raises if there is no such shared style.
  void removeAt(int index);
  void remove(const ModelPartRef& shared);
  ModelPartRef addNew(const QString& name, const ModelPartRef& firstInstance);
  /// A shared style that is in no document, with a copy of the style. The layer that has the style
  /// refers to it from now on.
  static ModelPartRef make(const QString& name, const ModelPartRef& firstInstance);

  /// The shared style, of layers or of texts, that a layer refers to; null for none.
  static ModelPartRef of(const SketchLayer& layer);
  /// The same by its identifier; null for none.
  static QString idOf(const SketchLayer& layer);
  static void setID(SketchLayer& layer, const QString& objectID);
  /// What a layer with this style refers to.
  static QString idOfStyle(const ModelPart& style);
  static void setIDOfStyle(ModelPart& style, const QString& objectID);
  /// Makes a layer refer to a shared style and gives it a copy of the style. For null, it keeps its
  /// style and refers to none.
  static void apply(SketchLayer& layer, const ModelPartRef& shared);

 private:
  const SketchDocumentRef document_;
  const char* const kind_;
};

/// A shared style: a name and a style.
const ClassInfo& sharedStyleClass();

}  // namespace kelvar
