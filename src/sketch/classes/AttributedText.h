#pragma once

#include <QMetaType>
#include <QString>
#include <QVariant>

#include "sketch/document/SketchJson.h"

namespace kelvar {

namespace render {
struct CharacterStyle;
}

/// Characters with attributes, as they cross to scripts, where they are an `NSAttributedString`.
///
/// A run is a dictionary of `location`, `length` and `attributes`. Attributes have the names that
/// the platform gives them: `NSFont`, `NSColor`, `NSKern`, `NSParagraphStyle` and so on.
struct AttributedText {
  QString string;
  QVariantList runs;

  static QVariantMap attributesOf(const render::CharacterStyle& style);
  /// Puts attributes by those names into the attributes of a run of a document. Raises for one that
  /// documents do not have, and for a value that does not fit.
  static void assign(const QVariantMap& attributes, SketchJson* json);
  /// What a script gives: an attributed string, or a string without attributes. Raises for anything
  /// else.
  static AttributedText from(const QVariant& value);
  /// The text of a layer. Characters that no run covers have the attributes `leading`, which are
  /// also the base of those that a run gives. Raises as `assign` does.
  SketchJson toJson(const SketchJson& leading) const;
  static SketchJson runJson(qsizetype location, qsizetype length, SketchJson attributes);
};

}  // namespace kelvar

Q_DECLARE_METATYPE(kelvar::AttributedText)
