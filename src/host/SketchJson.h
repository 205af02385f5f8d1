#pragma once

#include <QByteArray>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QVariant>
#include <nlohmann/json.hpp>

namespace kelvar {

/// JSON of a Sketch document. Members keep their order, so that what was read is written again as
/// it stood.
///
/// The reading functions below never fail: what is missing or of another kind reads as the given
/// value. Numbers that are not finite cannot come out of a file.
using SketchJson = nlohmann::ordered_json;

/// Containers in one another, at most.
constexpr size_t kMaxSketchJsonDepth = 512;

/// Reads a file. False, and `*error` says why, when it is no JSON, nested too deep, or of more than
/// `*valuesLeft` values, of which those that it has are taken. Of two members with one name the
/// first counts, and both are kept. Best handed over: bytes that are shared are copied.
bool readSketchJson(QByteArray bytes, size_t* valuesLeft, SketchJson* value, QString* error);
/// UTF-8, on one line.
QByteArray writeSketchJson(const SketchJson& value);

/// The member, or a null value that outlives everybody.
const SketchJson& memberOf(const SketchJson& object, const char* key);

/// The elements of the array under `key`; an empty array when there is none.
const SketchJson& listIn(const SketchJson& object, const char* key);

double numberIn(const SketchJson& object, const char* key, double otherwise = 0);
/// Numbers are clamped to what an int holds.
int integerIn(const SketchJson& object, const char* key, int otherwise = 0);
/// A number is true unless it is 0, as in documents of Sketch 43.
bool flagIn(const SketchJson& object, const char* key, bool otherwise = false);
/// A null string when it is missing.
QString textIn(const SketchJson& object, const char* key);
/// Of a point string "{0.5, 1}"; what is not finite in it is 0.
QPointF pointIn(const SketchJson& object, const char* key);
/// Of a rectangle as text, "{{0, 0}, {1, 1}}"; empty for anything else.
QRectF textRectIn(const SketchJson& object, const char* key);
/// Of an object with x, y, width and height.
QRectF rectIn(const SketchJson& object, const char* key);

/// Sets those four, and leaves its other members.
void setRectIn(SketchJson* object, const char* key, const QRectF& rect);

/// The value's "_class"; a null string for what has none.
QString classOf(const SketchJson& object);

/// Objects become maps, whose members are sorted. Whole numbers and reals stay apart.
QVariant variantFromSketchJson(const SketchJson& value);
/// Of what `Json` can write; null for the rest.
SketchJson sketchJsonFromVariant(const QVariant& value);

}  // namespace kelvar
