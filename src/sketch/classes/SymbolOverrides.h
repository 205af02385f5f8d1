#pragma once

#include "runtime/Object.h"
#include "sketch/document/SketchLayer.h"

namespace kelvar {

/// What a symbol's instance shows differently, as the host's scripts know it: dictionaries by the
/// identifiers of the symbol's layers, and points.
class SymbolOverrides {
 public:
  SymbolOverrides() = delete;

  /// Texts stand under the identifier of their layer, all else under "identifier_property". What
  /// is within a nested instance stands in a dictionary, with "symbolID" if it shows another
  /// symbol.
  static QVariantMap read(const SketchLayer& instance);
  static void write(SketchLayer& instance, const QVariantMap& overrides);

  /// Something that can differ: its name ("ID/ID_property") and the layer of a symbol that has it.
  struct Place {
    QString name;
    SketchLayerRef layer;
    /// What is shown unless the instance says otherwise.
    QVariant value;
  };
  /// In drawing order; what is within nested instances after them.
  static QList<Place> places(const SketchLayer& instance);
  /// What can differ in instances of a symbol.
  static QVariantList pointsOfSymbol(const SketchLayer& master);
  /// What differs, as `MSOverrideValue`s, which are copies.
  static QVariantList values(const SketchLayer& instance);
  static QVariantList points(const SketchLayer& instance);
  /// What an instance says about a point; invalid if it says nothing.
  static QVariant valueAt(const SketchLayer& instance, const QString& name);
  /// `point` is one of `points`, or its name. Nil takes the difference back.
  static void setValueForPoint(SketchLayer& instance, const QVariant& value, const QVariant& point);
};

/// Something that an instance shows differently.
const ClassInfo& overrideValueClass();

/// Something that an instance can show differently: a property of a layer of its symbol.
class MSOverridePoint : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  explicit MSOverridePoint(const QString& name) : name_(name) {}

  /// "ID/ID_property".
  const QString& name() const { return name_; }
  QString property() const;
  QString layerID() const;
  bool isTextOverride() const { return property() == u"stringValue"; }
  bool isSymbolOverride() const { return property() == u"symbolID"; }
  bool isImageOverride() const { return property() == u"image"; }

 private:
  const QString name_;
};

}  // namespace kelvar
