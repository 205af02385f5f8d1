#include "sketch/render/UnsupportedFeatures.h"

#include <QHash>

namespace kelvar::render {
namespace {

using namespace Qt::StringLiterals;

constexpr int kAny = -1;
/// The last member of an enumeration that is a choice, or `kAny`, by the member's name.
using Members = QHash<QString, int>;

Members together(Members members, const Members& more) {
  members.insert(more);
  return members;
}

Members membersOfStyle() {
  return {{u"borders"_s, kAny},
          {u"borderOptions"_s, kAny},
          {u"blur"_s, kAny},
          {u"blurs"_s, kAny},
          {u"fills"_s, kAny},
          {u"startMarkerType"_s, 7},
          {u"endMarkerType"_s, 7},
          {u"startDecorationType"_s, 7},
          {u"endDecorationType"_s, 7},
          {u"miterLimit"_s, kAny},
          {u"windingRule"_s, 1},
          {u"textStyle"_s, kAny},
          {u"shadows"_s, kAny},
          {u"innerShadows"_s, kAny},
          {u"contextSettings"_s, kAny},
          {u"colorControls"_s, kAny},
          {u"corners"_s, kAny},
          {u"sharedObjectID"_s, kAny}};
}

/// By the "_class" of the part.
QHash<QString, Members> membersOfParts() {
  const Members shadow{{u"blurRadius"_s, kAny}, {u"isInnerShadow"_s, kAny},
                       {u"color"_s, kAny},      {u"contextSettings"_s, kAny},
                       {u"offsetX"_s, kAny},    {u"offsetY"_s, kAny},
                       {u"spread"_s, kAny}};
  const Members paint{
      {u"color"_s, kAny},           {u"fillType"_s, 5},        {u"noiseIndex"_s, 3},
      {u"noiseIntensity"_s, kAny},  {u"patternFillType"_s, 3}, {u"patternTileScale"_s, kAny},
      {u"contextSettings"_s, kAny}, {u"gradient"_s, kAny},     {u"image"_s, kAny}};
  return {
      {u"style"_s, membersOfStyle()},
      {u"fill"_s, paint},
      {u"border"_s, together(paint, {{u"position"_s, 2}, {u"thickness"_s, kAny}})},
      {u"borderOptions"_s,
       {{u"dashPattern"_s, kAny}, {u"lineCapStyle"_s, 2}, {u"lineJoinStyle"_s, 2}}},
      {u"shadow"_s, shadow},
      {u"innerShadow"_s, shadow},
      {u"graphicsContextSettings"_s, {{u"blendMode"_s, 17}, {u"opacity"_s, kAny}}},
      {u"gradient"_s,
       {{u"gradientType"_s, 2},
        {u"elipseLength"_s, kAny},
        {u"from"_s, kAny},
        {u"to"_s, kAny},
        {u"stops"_s, kAny}}},
      {u"colorControls"_s,
       {{u"brightness"_s, kAny}, {u"contrast"_s, kAny}, {u"hue"_s, kAny}, {u"saturation"_s, kAny}}},
      {u"blur"_s,
       {{u"center"_s, kAny},
        {u"motionAngle"_s, kAny},
        {u"radius"_s, kAny},
        {u"saturation"_s, kAny},
        {u"type"_s, 3}}},
  };
}

const Members& knownMembers(const QString& kind) {
  static const QHash<QString, Members> kKnown = membersOfParts();
  static const Members kNone;
  const auto found = kKnown.constFind(kind);
  return found == kKnown.constEnd() ? kNone : *found;
}

bool saysNothing(const SketchJson& value) {
  if (value.is_null() || value == SketchJson(false)) return true;
  if (value.is_number()) return value.get<double>() == 0;
  if (value.is_string()) return value.get_ref<const std::string&>().empty();
  return value.is_structured() && (value.empty() || !getBool(value, "isEnabled", true));
}

bool isBookkeeping(const QString& name) {
  return name == u"_class" || name == u"do_objectID" || name == u"isEnabled";
}

void addUnread(const SketchJson& part, const QString& path, QStringList* unread) {
  const Members& known = knownMembers(classOf(part));
  if (known.isEmpty() || !getBool(part, "isEnabled", true)) return;
  for (const auto& [key, value] : part.items()) {
    const QString name = QString::fromStdString(key);
    if (isBookkeeping(name) || saysNothing(value)) continue;
    const auto member = known.constFind(name);
    if (member == known.constEnd()) {
      unread->append(path + name);
    } else if (*member != kAny && getInt(part, key.c_str()) > *member) {
      unread->append(path + name + u' ' + QString::number(getInt(part, key.c_str())));
    } else if (value.is_array()) {
      for (const SketchJson& element : value) addUnread(element, path + name + u'.', unread);
    } else {
      addUnread(value, path + name + u'.', unread);
    }
  }
}

}  // namespace

QStringList unsupportedProperties(const SketchJson& style) {
  QStringList unread;
  addUnread(style, {}, &unread);
  return unread;
}

QStringList unsupportedOfBitmap(const SketchJson& bitmap) {
  QStringList unread;
  for (const char* radius : {"topLeftCornerRadius", "topRightCornerRadius",
                             "bottomLeftCornerRadius", "bottomRightCornerRadius"}) {
    if (getNumber(bitmap, radius) > 0) unread.append(QString::fromLatin1(radius));
  }
  if (!getPoint(bitmap, "nineSliceScale").isNull()) unread.append(u"nineSliceScale"_s);
  return unread;
}

}  // namespace kelvar::render
