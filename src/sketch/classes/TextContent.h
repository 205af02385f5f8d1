#pragma once

#include <functional>

#include "sketch/document/SketchJson.h"
#include "sketch/document/SketchLayer.h"

namespace kelvar {

struct AttributedText;

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

  /// Characters without attributes look like the first one before. Raises for attributes that
  /// documents do not have, and then changes nothing.
  void setText(const AttributedText& text);
  /// Lets what is typed next look like the first character.
  void typeLikeFirst();

  /// Changes the attributes of all characters and of those to come.
  void changeAttributes(const Change& change);
  /// The same for some characters alone. The range must be within the string.
  void changeRange(qsizetype from, qsizetype count, const Change& change);
  void setFont(const char* attribute, const SketchJson& value);
  void setInParagraph(std::initializer_list<const char*> keys, const SketchJson& value);

  void setVerticalAlignment(int alignment);

  /// Makes the frame as large as the text, as the host does after each change: in width and height,
  /// in height only, or not at all, as the layer's behavior says. The side or the middle by which
  /// the lines are aligned stays where it is. What was measured of the text before is forgotten.
  void fitFrame();

 private:
  SketchJson leadingAttributes() const;
  /// Of the layer's style, which gets those `before` if it has none.
  void changeTypingAttributes(const SketchJson& before, const Change& change);
  /// Writes a text that is an archive as JSON.
  void unarchive();

  SketchLayer& layer_;
};

}  // namespace kelvar
