#include "platform/plist/Json.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>

#include "platform/QtError.h"

namespace kelvar {
namespace {

bool isContainer(const QVariant& value) {
  const int type = value.typeId();
  return type == QMetaType::QVariantMap || type == QMetaType::QVariantList ||
         type == QMetaType::QStringList;
}

tl::unexpected<Error> tooDeep() {
  return failure(Error::Kind::TooLarge,
                 QStringLiteral("it is nested more than %1 deep").arg(Json::kMaxDepth));
}

/// Builds the value from the parser's events, without recursion.
class JsonReader {
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

  template <class Exception>
  bool parse_error(size_t position, const std::string&, const Exception&) {
    return fail(failure(Error::Kind::Damaged,
                        QStringLiteral("it is not JSON from byte %1 on").arg(position)));
  }

  /// What was read; to be called once all events have arrived.
  Result<QVariant> result() const {
    if (error_) return tl::unexpected(*error_);
    return root_;
  }

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

  bool fail(const tl::unexpected<Error>& error) {
    error_ = error.value();
    return false;
  }

  bool open(bool isMap) {
    if (open_.size() >= size_t(Json::kMaxDepth)) return fail(tooDeep());
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
      return fail(failure(Error::Kind::TooLarge,
                          QStringLiteral("it has more than %1 values").arg(Json::kMaxValues)));
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
  std::optional<Error> error_;
};

/// Converts a value for the library that writes JSON.
class JsonWriter {
 public:
  Result<nlohmann::json> convert(const QVariant& value) {
    nlohmann::json json = converted(value, 0);
    if (error_) return tl::unexpected(*error_);
    return json;
  }

 private:
  /// Keeps the first error. The whole conversion fails in the end.
  nlohmann::json fail(const tl::unexpected<Error>& error) {
    if (!error_) error_ = error.value();
    return nullptr;
  }
  nlohmann::json fail(const QString& why) { return fail(failure(Error::Kind::Unsupported, why)); }

  std::string utf8(const QString& text) {
    if (!text.isValidUtf16()) {
      fail(QStringLiteral("a string in it is not valid Unicode"));
      return {};
    }
    return text.toStdString();
  }

  nlohmann::json object(const QVariantMap& map, int depth) {
    auto object = nlohmann::json::object();
    for (auto i = map.begin(); i != map.end() && !error_; ++i) {
      object[utf8(i.key())] = converted(i.value(), depth + 1);
    }
    return object;
  }

  nlohmann::json array(const QVariantList& list, int depth) {
    auto array = nlohmann::json::array();
    for (auto i = list.begin(); i != list.end() && !error_; ++i) {
      array.push_back(converted(*i, depth + 1));
    }
    return array;
  }

  nlohmann::json real(double value) {
    return std::isfinite(value) ? nlohmann::json(value)
                                : fail(QStringLiteral("JSON has no numbers that are not finite"));
  }

  nlohmann::json string(const QString& text) {
    return text.isNull() ? fail(QStringLiteral("a string in it is none"))
                         : nlohmann::json(utf8(text));
  }

  nlohmann::json converted(const QVariant& value, int depth) {
    switch (value.typeId()) {
      case QMetaType::Nullptr:
        return nullptr;
      case QMetaType::Bool:
        return value.toBool();
      case QMetaType::Float:
      case QMetaType::Double:
        return real(value.toDouble());
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
        return string(value.toString());
      case QMetaType::QVariantMap:
        return depth == Json::kMaxDepth ? fail(tooDeep()) : object(value.toMap(), depth);
      case QMetaType::QVariantList:
      case QMetaType::QStringList:
        return depth == Json::kMaxDepth ? fail(tooDeep()) : array(value.toList(), depth);
      default:
        return fail(QStringLiteral("JSON has no place for a value of type %1")
                        .arg(QString::fromLatin1(value.isValid() ? value.typeName() : "none")));
    }
  }

  std::optional<Error> error_;
};

}  // namespace

bool Json::isValidObject(const QVariant& value) {
  return isContainer(value) && JsonWriter().convert(value);
}

Result<QByteArray> Json::write(const QVariant& value, Layout layout) {
  return JsonWriter().convert(value).map([layout](const nlohmann::json& json) {
    return QByteArray::fromStdString(json.dump(layout == Layout::Indented ? 2 : -1));
  });
}

Result<QVariant> Json::read(const QByteArray& bytes) {
  if (bytes.size() > kMaxBytes) {
    return failure(Error::Kind::TooLarge,
                   QStringLiteral("it is larger than %1 MiB").arg(kMaxBytes >> 20));
  }
  JsonReader reader;
  nlohmann::json::sax_parse(bytes.begin(), bytes.end(), &reader);
  return reader.result();
}

Result<QVariant> Json::readContainer(const QByteArray& bytes) {
  const Result<QVariant> value = read(bytes);
  if (!value || isContainer(*value)) return value;
  return failure(Error::Kind::Damaged, QStringLiteral("it is neither an object nor a list"));
}

}  // namespace kelvar
