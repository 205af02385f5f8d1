#pragma once

#include <QByteArray>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QVariant>
#include <nlohmann/json.hpp>

#include "pixels/Result.h"

namespace kelvar {

/// JSON of a Sketch document. Members keep their order, so that a file is written back in the order
/// in which it was read.
///
/// The getters below never fail: a member that is missing or has another type reads as the
/// fallback. Numbers in files are always finite.
using SketchJson = nlohmann::ordered_json;

/// Maximum nesting depth of containers.
constexpr size_t kMaxSketchJsonDepth = 512;

/// Reads a file. Fails when it is not JSON, nested too deep, or has more than `*valuesLeft` values;
/// subtracts the number that it has. If two members have the same name, the first one counts, but
/// both are kept. Pass the bytes by move: shared bytes are copied.
Result<SketchJson> readSketchJson(QByteArray bytes, size_t* valuesLeft);
/// UTF-8, on one line.
QByteArray writeSketchJson(const SketchJson& value);

/// The member, or a shared null value with static lifetime.
const SketchJson& get(const SketchJson& object, const char* key);

/// The elements of the array under `key`; an empty array when there is none.
const SketchJson& getArray(const SketchJson& object, const char* key);

double getNumber(const SketchJson& object, const char* key, double fallback = 0);
/// Numbers are clamped to the range of int.
int getInt(const SketchJson& object, const char* key, int fallback = 0);
/// Also accepts numbers, as in documents from Sketch 43: any number but 0 is true.
bool getBool(const SketchJson& object, const char* key, bool fallback = false);
/// A null string when it is missing.
QString getString(const SketchJson& object, const char* key);
/// Reads a point string such as "{0.5, 1}"; coordinates that are not finite become 0.
QPointF getPoint(const SketchJson& object, const char* key);
/// Reads a rectangle string such as "{{0, 0}, {1, 1}}"; empty for anything else.
QRectF getTextRect(const SketchJson& object, const char* key);
/// Reads a rectangle from an object with x, y, width and height.
QRectF getRect(const SketchJson& object, const char* key);

/// Sets these four members and leaves the others unchanged.
void setRect(SketchJson* object, const char* key, const QRectF& rect);

/// A new "do_objectID".
std::string newObjectID();

/// The value's "_class"; a null string if it has none.
QString classOf(const SketchJson& object);

/// Objects become maps, whose members are sorted. Integers and reals remain distinct.
QVariant variantFromSketchJson(const SketchJson& value);
/// The inverse, for values that `Json` can write; null for others.
SketchJson sketchJsonFromVariant(const QVariant& value);

}  // namespace kelvar
