#include <simdjson.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "platform/QtError.h"
#include "sketch/document/SketchJson.h"

namespace kelvar {
namespace {

namespace ondemand = simdjson::ondemand;

/// Builds the value from what the scanner passes.
///
/// Members are appended unlooked at: an object of a million members must not take a million
/// look-ups. A container is made when all that is in it is known, since one that grew would copy
/// what it has, all the way down.
class Reader {
 public:
  explicit Reader(size_t* valuesLeft) : valuesLeft_(valuesLeft) {}

  /// `bytes` must have padding behind them that the scanner may read.
  Result<SketchJson> read(const QByteArray& bytes) {
    ondemand::parser parser;
    ondemand::document document;
    ondemand::value value;
    const bool isScanned = isDone(
        parser.iterate(bytes.data(), size_t(bytes.size()), size_t(bytes.capacity())).get(document));
    const bool isRead = isScanned && isDone(document.get_value().get(value)) && add(value);
    const char* place = nullptr;
    const bool isMore = isScanned && isDone(document.current_location().get(place));
    if (isRead && !isMore) return std::move(parts_.back().second);
    if (error_) return tl::unexpected(*error_);
    return failure(
        Error::Kind::Damaged,
        isMore ? QStringLiteral("it is not JSON from byte %1 on").arg(place - bytes.data() + 1)
               : QStringLiteral("it is not JSON"));
  }

 private:
  bool refuse(const QString& why) {
    error_ = failure(Error::Kind::TooLarge, why).value();
    return false;
  }

  static bool isDone(simdjson::error_code code) { return code == simdjson::SUCCESS; }

  bool add(ondemand::value value) {
    if (*valuesLeft_ == 0) return refuse(QStringLiteral("the document has too many values"));
    --*valuesLeft_;
    ondemand::json_type type;
    if (!isDone(value.type().get(type))) return false;
    switch (type) {
      case ondemand::json_type::object:
        return addObject(value);
      case ondemand::json_type::array:
        return addArray(value);
      case ondemand::json_type::string:
        return addString(value);
      case ondemand::json_type::number:
        return addNumber(value);
      case ondemand::json_type::boolean: {
        bool flag = false;
        return isDone(value.get_bool().get(flag)) && keep(flag);
      }
      case ondemand::json_type::null:
        return isNull(value) && keep(nullptr);
    }
    return false;
  }

  static bool isNull(ondemand::value value) {
    bool is = false;
    return isDone(value.is_null().get(is)) && is;
  }

  bool keep(SketchJson&& value) {
    parts_.emplace_back(std::move(key_), std::move(value));
    return true;
  }

  bool enter() {
    if (++depth_ <= kMaxSketchJsonDepth) return true;
    return refuse(QStringLiteral("it is nested more than %1 deep").arg(kMaxSketchJsonDepth));
  }

  bool addObject(ondemand::value value) {
    ondemand::object members;
    if (!enter() || !isDone(value.get_object().get(members))) return false;
    const std::string ownKey = std::move(key_);
    const size_t first = parts_.size();
    for (auto member : members) {
      std::string_view key;
      ondemand::value part;
      if (!isDone(member.unescaped_key().get(key))) return false;
      key_ = key;
      if (!isDone(member.value().get(part)) || !add(part)) return false;
    }
    SketchJson made = SketchJson::object();
    auto& object = made.get_ref<SketchJson::object_t&>();
    object.reserve(parts_.size() - first);
    for (size_t i = first; i < parts_.size(); ++i) {
      object.emplace_back(std::move(parts_[i].first), std::move(parts_[i].second));
    }
    return leave(ownKey, first, std::move(made));
  }

  bool addArray(ondemand::value value) {
    ondemand::array elements;
    if (!enter() || !isDone(value.get_array().get(elements))) return false;
    const std::string ownKey = std::move(key_);
    const size_t first = parts_.size();
    for (auto element : elements) {
      ondemand::value part;
      if (!isDone(element.get(part)) || !add(part)) return false;
    }
    SketchJson made = SketchJson::array();
    auto& array = made.get_ref<SketchJson::array_t&>();
    array.reserve(parts_.size() - first);
    for (size_t i = first; i < parts_.size(); ++i) array.push_back(std::move(parts_[i].second));
    return leave(ownKey, first, std::move(made));
  }

  bool leave(const std::string& key, size_t first, SketchJson&& made) {
    parts_.resize(first);
    --depth_;
    key_ = key;
    return keep(std::move(made));
  }

  bool addString(ondemand::value value) {
    std::string_view text;
    return isDone(value.get_string().get(text)) && keep(std::string(text));
  }

  bool addNumber(ondemand::value value) {
    const std::string_view token = value.raw_json_token();
    ondemand::number number;
    if (!isDone(value.get_number().get(number))) return addLargeNumber(token);
    if (number.is_int64()) return keep(number.get_int64());
    if (number.is_uint64()) return keep(number.get_uint64());
    // The scanner, in version 3.0, takes reals of more than 19 digits for 0.
    double real = number.get_double();
    std::from_chars(token.data(), token.data() + token.size(), real);
    return keep(real);
  }

  /// Whole numbers of more than 64 bits, which the scanner does not take.
  bool addLargeNumber(std::string_view token) {
    constexpr size_t kDigitsOf64Bits = 19;
    const size_t first = token.starts_with('-') ? 1 : 0;
    const size_t end = std::min(token.find_first_not_of("0123456789", first), token.size());
    const bool isBlank = token.find_first_not_of(" \t\r\n", end) == std::string_view::npos;
    if (end < first + kDigitsOf64Bits || token[first] == '0' || !isBlank) return false;
    double number = 0;
    return std::from_chars(token.data(), token.data() + end, number).ec == std::errc() &&
           keep(number);
  }

  size_t* valuesLeft_;
  size_t depth_ = 0;
  std::vector<std::pair<std::string, SketchJson>> parts_;
  std::string key_;
  std::optional<Error> error_;
};

}  // namespace

Result<SketchJson> readSketchJson(QByteArray bytes, size_t* valuesLeft) {
  bytes.reserve(bytes.size() + qsizetype(simdjson::SIMDJSON_PADDING));
  return Reader(valuesLeft).read(bytes);
}

}  // namespace kelvar
