#include "sketch/document/SketchJson.h"

#include <QRegularExpression>
#include <QUuid>
#include <algorithm>
#include <climits>
#include <cmath>

#include "geometry/PointList.h"

namespace kelvar {

QByteArray writeSketchJson(const SketchJson& value) {
  return QByteArray::fromStdString(value.dump());
}

const SketchJson& get(const SketchJson& object, const char* key) {
  static const SketchJson kNothing;
  if (!object.is_object()) return kNothing;
  const auto found = object.find(key);
  return found == object.end() ? kNothing : *found;
}

const SketchJson& getArray(const SketchJson& object, const char* key) {
  static const SketchJson kEmpty = SketchJson::array();
  const SketchJson& list = get(object, key);
  return list.is_array() ? list : kEmpty;
}

double getNumber(const SketchJson& object, const char* key, double fallback) {
  const SketchJson& value = get(object, key);
  return value.is_number() ? value.get<double>() : fallback;
}

int getInt(const SketchJson& object, const char* key, int fallback) {
  return int(std::clamp(getNumber(object, key, fallback), double(INT_MIN), double(INT_MAX)));
}

bool getBool(const SketchJson& object, const char* key, bool fallback) {
  const SketchJson& value = get(object, key);
  if (value.is_boolean()) return value.get<bool>();
  return value.is_number() ? value.get<double>() != 0 : fallback;
}

QString getString(const SketchJson& object, const char* key) {
  const SketchJson& value = get(object, key);
  if (!value.is_string()) return {};
  const auto& text = value.get_ref<const std::string&>();
  return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

QPointF getPoint(const SketchJson& object, const char* key) {
  const QPointF point = pointFromString(getString(object, key));
  return {std::isfinite(point.x()) ? point.x() : 0, std::isfinite(point.y()) ? point.y() : 0};
}

QRectF getTextRect(const SketchJson& object, const char* key) {
  static const QRegularExpression kNumber(QStringLiteral("-?[0-9.]+(e-?[0-9]+)?"));
  QList<double> numbers;
  auto matches = kNumber.globalMatch(getString(object, key));
  while (matches.hasNext()) numbers.append(matches.next().captured().toDouble());
  const bool isRect = numbers.size() == 4 && std::all_of(numbers.begin(), numbers.end(),
                                                         [](double n) { return std::isfinite(n); });
  return isRect ? QRectF(numbers[0], numbers[1], numbers[2], numbers[3]) : QRectF();
}

QRectF getRect(const SketchJson& object, const char* key) {
  const SketchJson& rect = get(object, key);
  return {getNumber(rect, "x"), getNumber(rect, "y"), getNumber(rect, "width"),
          getNumber(rect, "height")};
}

void setRect(SketchJson* object, const char* key, const QRectF& rect) {
  SketchJson& json = (*object)[key];
  if (!json.is_object()) json = {{"_class", "rect"}};
  json["x"] = rect.x();
  json["y"] = rect.y();
  json["width"] = rect.width();
  json["height"] = rect.height();
}

std::string newObjectID() {
  return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toStdString();
}

QString classOf(const SketchJson& object) { return getString(object, "_class"); }

QVariant variantFromSketchJson(const SketchJson& value) {
  switch (value.type()) {
    case SketchJson::value_t::boolean:
      return value.get<bool>();
    case SketchJson::value_t::number_integer:
      return qlonglong(value.get<int64_t>());
    case SketchJson::value_t::number_unsigned: {
      const auto number = value.get<uint64_t>();
      return number > uint64_t(INT64_MAX) ? QVariant(qulonglong(number))
                                          : QVariant(qlonglong(number));
    }
    case SketchJson::value_t::number_float:
      return value.get<double>();
    case SketchJson::value_t::string:
      return QString::fromStdString(value.get_ref<const std::string&>());
    case SketchJson::value_t::array: {
      QVariantList list;
      for (const SketchJson& element : value) list.append(variantFromSketchJson(element));
      return list;
    }
    case SketchJson::value_t::object: {
      QVariantMap map;
      for (const auto& [key, member] : value.items()) {
        map.insert(QString::fromStdString(key), variantFromSketchJson(member));
      }
      return map;
    }
    default:
      return QVariant::fromValue(nullptr);
  }
}

SketchJson sketchJsonFromVariant(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool:
      return value.toBool();
    case QMetaType::Int:
    case QMetaType::LongLong:
      return value.toLongLong();
    case QMetaType::UInt:
    case QMetaType::ULongLong:
      return value.toULongLong();
    case QMetaType::Float:
    case QMetaType::Double:
      return value.toDouble();
    case QMetaType::QString:
      return value.toString().toStdString();
    case QMetaType::QVariantList:
    case QMetaType::QStringList: {
      SketchJson list = SketchJson::array();
      for (const QVariant& element : value.toList()) list.push_back(sketchJsonFromVariant(element));
      return list;
    }
    case QMetaType::QVariantMap: {
      SketchJson object = SketchJson::object();
      const QVariantMap map = value.toMap();
      for (auto i = map.begin(); i != map.end(); ++i) {
        object[i.key().toStdString()] = sketchJsonFromVariant(i.value());
      }
      return object;
    }
    default:
      return nullptr;
  }
}

}  // namespace kelvar
