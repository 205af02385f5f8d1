#pragma once

#include <functional>

#include "sketch/document/SketchJson.h"
#include "sketch/document/SketchLayer.h"

namespace kelvar {

/// The characters of a text layer and how they look, in the forms of all versions of documents.
/// What is set is written in the form of documents since Sketch 49. The frame only changes in
/// `fitFrame`.
class TextContent {
 public:
  using Change = std::function<void(SketchJson& attributes)>;

  explicit TextContent(SketchLayer& layer) : layer_(layer) {}

  QString string() const;
  /// All characters get the attributes of the first.
  void setString(const QString& string);

  /// Of the first character.
  QString fontName() const;
  double fontSize() const;
  double lineHeight() const;
  double characterSpacing() const;
  int alignment() const;
  int textTransform() const;
  SketchJson color() const;

  /// Changes the attributes of all characters and of those to come.
  void changeAttributes(const Change& change);
  /// The same for some characters alone. The range must be within the string.
  void changeRange(qsizetype from, qsizetype count, const Change& change);
  void setFont(const char* attribute, const SketchJson& value);
  void setInParagraph(std::initializer_list<const char*> keys, const SketchJson& value);

  /// Makes the frame as large as the text, as the host does after each change: in width and height,
  /// in height only, or not at all, as the layer's behavior says. The side or the middle by which
  /// the lines are aligned stays where it is. What was measured of the text before is forgotten.
  void fitFrame();

 private:
  SketchJson leadingAttributes() const;
  /// Writes a text that is an archive as JSON.
  void unarchive();

  SketchLayer& layer_;
};

}  // namespace kelvar
