#include "platform/Json.h"

#include <cmath>
#include <nlohmann/json.hpp>

namespace kelvar {
namespace {

/// Builds the value from the reader's events, without recursion.
class Builder {
 public:
  bool null() { return add(QVariant::fromValue(nullptr)); }
  bool boolean(bool value) { return add(value); }
  bool number_integer(int64_t value) { return add(qlonglong(value)); }
  bool number_unsigned(uint64_t value) {
    return add(value > uint64_t(INT64_MAX) ? QVariant(qulonglong(value))
                                           : QVariant(qlonglong(value)));
  }
  bool number_float(double value, const std::string&) { return add(value); }
  bool string(const std::string& text) { return add(toString(text)); }
  bool binary(const std::vector<uint8_t>&) { return false; }

  bool start_object(size_t) { return open(true); }
  bool key(const std::string& text) {
    open_.back().key = toString(text);
    return true;
  }
  bool end_object() { return close(); }
  bool start_array(size_t) { return open(false); }
  bool end_array() { return close(); }

  template <class Error>
  bool parse_error(size_t position, const std::string&, const Error&) {
    return refuse(QStringLiteral("it is not JSON from byte %1 on").arg(position));
  }

  QVariant root() const { return root_; }
  QString error() const { return error_; }

 private:
  struct Container {
    bool isMap;
    QString key;
    QVariantMap map;
    QVariantList list;
  };

  static QString toString(const std::string& text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
  }

  bool refuse(const QString& why) {
    error_ = why;
    return false;
  }

  bool open(bool isMap) {
    if (open_.size() >= size_t(Json::kMaxDepth)) {
      return refuse(QStringLiteral("it is nested more than %1 deep").arg(Json::kMaxDepth));
    }
    open_.push_back({isMap, {}, {}, {}});
    return true;
  }

  bool close() {
    const Container done = std::move(open_.back());
    open_.pop_back();
    return add(done.isMap ? QVariant(done.map) : QVariant(done.list));
  }

  bool add(const QVariant& value) {
    if (++count_ > Json::kMaxValues) {
      return refuse(QStringLiteral("it has more than %1 values").arg(Json::kMaxValues));
    }
    if (open_.empty()) {
      root_ = value;
    } else if (open_.back().isMap) {
      open_.back().map.insert(open_.back().key, value);
    } else {
      open_.back().list.append(value);
    }
    return true;
  }

  std::vector<Container> open_;
  QVariant root_;
  qsizetype count_ = 0;
  QString error_;
};

/// Throws the sentence that says why not.
nlohmann::json toJson(const QVariant& value, int depth);

std::string utf8(const QString& text) {
  if (!text.isValidUtf16()) throw QStringLiteral("a string in it is not valid Unicode");
  return text.toStdString();
}

nlohmann::json containerToJson(const QVariant& value, int depth) {
  if (depth == Json::kMaxDepth) {
    throw QStringLiteral("it is nested more than %1 deep").arg(Json::kMaxDepth);
  }
  if (value.typeId() == QMetaType::QVariantMap) {
    auto object = nlohmann::json::object();
    const QVariantMap map = value.toMap();
    for (auto i = map.begin(); i != map.end(); ++i) {
      object[utf8(i.key())] = toJson(i.value(), depth + 1);
    }
    return object;
  }
  auto array = nlohmann::json::array();
  for (const QVariant& element : value.toList()) array.push_back(toJson(element, depth + 1));
  return array;
}

nlohmann::json toJson(const QVariant& value, int depth) {
  switch (value.typeId()) {
    case QMetaType::Nullptr:
      return nullptr;
    case QMetaType::Bool:
      return value.toBool();
    case QMetaType::Float:
    case QMetaType::Double:
      if (!std::isfinite(value.toDouble())) {
        throw QStringLiteral("JSON has no numbers that are not finite");
      }
      return value.toDouble();
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
      return value.toULongLong();
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
      return value.toLongLong();
    case QMetaType::QString:
      if (value.toString().isNull()) throw QStringLiteral("a string in it is none");
      return utf8(value.toString());
    case QMetaType::QVariantMap:
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
      return containerToJson(value, depth);
    default:
      throw QStringLiteral("JSON has no place for a value of type %1")
          .arg(QString::fromLatin1(value.isValid() ? value.typeName() : "none"));
  }
}

}  // namespace

bool Json::isValidObject(const QVariant& value) {
  const int type = value.typeId();
  if (type != QMetaType::QVariantMap && type != QMetaType::QVariantList &&
      type != QMetaType::QStringList) {
    return false;
  }
  try {
    toJson(value, 0);
    return true;
  } catch (const QString&) {
    return false;
  }
}

QByteArray Json::write(const QVariant& value, Layout layout, QString* error) {
  try {
    return QByteArray::fromStdString(toJson(value, 0).dump(layout == Layout::Indented ? 2 : -1));
  } catch (const QString& sentence) {
    *error = sentence;
    return {};
  }
}

QVariant Json::read(const QByteArray& bytes, QString* error) {
  if (bytes.size() > kMaxBytes) {
    *error = QStringLiteral("it is larger than %1 MiB").arg(kMaxBytes >> 20);
    return {};
  }
  Builder builder;
  if (nlohmann::json::sax_parse(bytes.begin(), bytes.end(), &builder)) return builder.root();
  *error = builder.error();
  return {};
}

}  // namespace kelvar
