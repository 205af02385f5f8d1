#pragma once

#include <QColor>
#include <functional>

#include "runtime/Object.h"
#include "sketch/document/SketchJson.h"

namespace kelvar {

class MSColor;
using MSColorRef = std::shared_ptr<MSColor>;

/// A color of a document as scripts see it: components between 0 and 1, in the document's color
/// space.
///
/// What is set in a color that was read from a document also goes into the document. A color that
/// was put there is copied. The immutable kind, `MSImmutableColor`, cannot be set.
class MSColor : public Object {
 public:
  enum class Kind { Mutable, Immutable };
  /// Puts the color into the document.
  using Store = std::function<void(const SketchJson& color)>;

  static const ClassInfo& staticClassInfo();
  static const ClassInfo& immutableClassInfo();
  const ClassInfo& classInfo() const override {
    return kind_ == Kind::Mutable ? staticClassInfo() : immutableClassInfo();
  }

  /// `json` is a color of a document, or null JSON for black.
  explicit MSColor(SketchJson json, Kind kind = Kind::Mutable, Store store = {});
  static MSColorRef fromComponents(double red, double green, double blue, double alpha,
                                   Kind kind = Kind::Mutable);
  /// The color that a script gave: one of these, or an `NSColor`. Raises for anything else. `what`
  /// is the operation.
  static SketchJson jsonFrom(const QVariant& color, const char* what);

  const SketchJson& json() const { return json_; }
  double component(const char* name) const;
  void setComponent(const char* name, double value);
  QColor toQColor() const;
  /// "RRGGBB".
  QString hexValue() const;
  /// "#RRGGBB", or "rgba(…)" for a color that is not opaque.
  QString svgRepresentation() const;
  QString description() const override;

 private:
  SketchJson json_;
  const Kind kind_;
  const Store store_;
};

}  // namespace kelvar
