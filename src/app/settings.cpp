#include "app/settings.h"

#include <CLI/CLI.hpp>
#include <QDateTime>
#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "app/Failure.h"
#include "app/Output.h"
#include "platform/Json.h"
#include "platform/UserDefaults.h"

namespace kelvar::app {
namespace {

constexpr const char* kExamples = R"(
The settings are one file, shared by everything of Kelvar's: $XDG_CONFIG_HOME/kelvar/settings.sqlite
or ~/.config/kelvar/settings.sqlite. KELVAR_DEFAULTS names another one.

Dates are written as 2026-05-01T12:00:00Z and data in Base64. A text that begins with - stands
behind --, as in kelvar settings set com.example.text -- -12.

Examples:
  kelvar settings list
  kelvar settings set com.example.limit 12 --type integer
  kelvar settings set com.example.list '[1, 2.5, "three"]' --type json
  kelvar settings get com.example.list
  kelvar settings remove com.example.list

Exit status: 0 done, 1 failed or nothing under the key, 2 misuse.)";

/// The command line, as given.
struct Arguments {
  std::string key;
  std::string value;
  std::string type = "string";
  bool json = false;

  QString keyText() const { return QString::fromStdString(key); }
};

[[noreturn]] void misuse(const QString& sentence) { throw Failure(Failure::kMisuse, sentence); }
[[noreturn]] void fail(const QString& sentence) { throw Failure(Failure::kFailed, sentence); }

QString typeName(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::QString:
      return QStringLiteral("string");
    case QMetaType::Bool:
      return QStringLiteral("bool");
    case QMetaType::Float:
    case QMetaType::Double:
      return QStringLiteral("real");
    case QMetaType::QDateTime:
      return QStringLiteral("date");
    case QMetaType::QByteArray:
      return QStringLiteral("data");
    case QMetaType::QVariantList:
      return QStringLiteral("list");
    case QMetaType::QVariantMap:
      return QStringLiteral("map");
    default:
      return QStringLiteral("integer");
  }
}

/// The value with strings for what JSON does not know.
QVariant forJson(const QVariant& value) {
  if (value.typeId() == QMetaType::QDateTime) {
    return value.toDateTime().toUTC().toString(Qt::ISODateWithMs);
  }
  if (value.typeId() == QMetaType::QByteArray) {
    return QString::fromLatin1(value.toByteArray().toBase64());
  }
  if (typeName(value) == QStringLiteral("real") && !std::isfinite(value.toDouble())) {
    return value.toString();
  }
  if (value.typeId() == QMetaType::QVariantList) {
    QVariantList list = value.toList();
    for (QVariant& element : list) element = forJson(element);
    return list;
  }
  if (value.typeId() != QMetaType::QVariantMap) return value;
  QVariantMap map = value.toMap();
  for (QVariant& element : map) element = forJson(element);
  return map;
}

QByteArray jsonText(const QVariant& value) {
  QString error;
  const QByteArray text = Json::write(value, Json::Layout::Compact, &error);
  if (text.isEmpty()) fail(QStringLiteral("cannot be written as JSON: %1").arg(error));
  return text;
}

QVariantMap entry(const QString& key, const QVariant& value) {
  return {{QStringLiteral("key"), key},
          {QStringLiteral("type"), typeName(value)},
          {QStringLiteral("value"), forJson(value)}};
}

/// A key that would not be one word on one line is quoted as in JSON.
QByteArray oneWord(const QString& key) {
  const bool isWord = !key.isEmpty() && !key.startsWith(u'"') &&
                      std::all_of(key.begin(), key.end(), [](QChar character) {
                        return character.isPrint() && character != u'\t';
                      });
  return isWord ? key.toUtf8() : jsonText(key);
}

QVariant readInteger(const QString& text, bool* good) {
  const qlonglong value = text.toLongLong(good);
  return *good ? QVariant(value) : QVariant(text.toULongLong(good));
}

QVariant readReal(const QString& text, bool* good) { return text.toDouble(good); }

QVariant readBool(const QString& text, bool* good) {
  *good = text == QStringLiteral("true") || text == QStringLiteral("false");
  return text == QStringLiteral("true");
}

QVariant readDate(const QString& text, bool* good) {
  const QDateTime date = QDateTime::fromString(text, Qt::ISODateWithMs);
  *good = date.isValid();
  return date.toUTC();
}

QVariant readData(const QString& text, bool* good) {
  // Qt takes a last character that makes no whole byte for padding.
  const auto data =
      QByteArray::fromBase64Encoding(text.toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
  *good = data && text.count(u'=') + ((*data).size() * 4 + 2) / 3 == text.size();
  return *data;
}

QVariant readJson(const QString& text, bool* good) {
  QString error;
  const QVariant value = Json::read(text.toUtf8(), &error);
  *good = value.isValid();
  return value;
}

QVariant readString(const QString& text, bool* good) {
  *good = true;
  return text;
}

struct Type {
  const char* name;
  QVariant (*read)(const QString& text, bool* good);
  const char* form;
};

constexpr Type kTypes[] = {
    {"string", readString, "any text"},
    {"integer", readInteger, "a whole number that 64 bits hold, such as -12"},
    {"real", readReal, "a number such as 0.5"},
    {"bool", readBool, "true or false"},
    {"date", readDate, "a date such as 2026-05-01T12:00:00Z"},
    {"data", readData, "bytes in Base64"},
    {"json", readJson, "JSON"},
};

QVariant readValue(const Arguments& arguments) {
  const QString text = QString::fromStdString(arguments.value);
  for (const Type& type : kTypes) {
    if (arguments.type != type.name) continue;
    bool good = false;
    const QVariant value = type.read(text, &good);
    if (good) return value;
    misuse(QStringLiteral("--type %1 takes %2, not \"%3\"")
               .arg(QLatin1String(type.name), QLatin1String(type.form), text));
  }
  misuse(QStringLiteral("--type takes one of the names in kelvar settings set --help"));
}

/// Nothing stored under the key is a failure.
QVariant stored(const QString& key) {
  QString error;
  QVariant value = UserDefaults::standard().objectForKey(key, &error);
  if (!error.isEmpty()) fail(error);
  if (!value.isValid()) {
    fail(QStringLiteral("nothing is stored under %1").arg(QString::fromUtf8(oneWord(key))));
  }
  return value;
}

void list(const Arguments& arguments) {
  QString error;
  const UserDefaults defaults = UserDefaults::standard();
  const QStringList keys = defaults.keys(&error);
  if (!error.isEmpty()) fail(error);
  QVariantList entries;
  for (const QString& key : keys) {
    const QVariant value = defaults.objectForKey(key, &error);
    if (value.isValid()) entries.append(entry(key, value));
  }
  if (arguments.json) print(jsonText(entries));
  for (const QVariant& each : arguments.json ? QVariantList() : entries) {
    const QVariantMap map = each.toMap();
    print(oneWord(map[QStringLiteral("key")].toString()) + '\t' +
          map[QStringLiteral("type")].toByteArray() + '\t' +
          printable(QString::fromUtf8(jsonText(map[QStringLiteral("value")]))).toUtf8());
  }
  // One value that cannot be read hides no other.
  if (!error.isEmpty()) fail(error);
}

void get(const Arguments& arguments) {
  const QVariant value = stored(arguments.keyText());
  if (arguments.json) return print(jsonText(entry(arguments.keyText(), value)));
  const QVariant plain = forJson(value);
  print(plain.typeId() == QMetaType::QString ? plain.toString().toUtf8() : jsonText(plain));
}

void set(const Arguments& arguments) {
  QString error;
  const QVariant value = readValue(arguments);
  if (!UserDefaults::standard().setObject(value, arguments.keyText(), &error)) fail(error);
  if (arguments.json) get(arguments);
}

void remove(const Arguments& arguments) {
  QString error;
  const UserDefaults defaults = UserDefaults::standard();
  QString unread;  // What cannot be read can be removed.
  const bool wasThere = defaults.objectForKey(arguments.keyText(), &unread).isValid();
  if (!defaults.removeObjectForKey(arguments.keyText(), &error)) fail(error);
  if (!arguments.json) return;
  print(jsonText(QVariantMap{{QStringLiteral("key"), arguments.keyText()},
                             {QStringLiteral("removed"), wasThere}}));
}

std::vector<std::string> typeNames() {
  std::vector<std::string> names;
  for (const Type& type : kTypes) names.emplace_back(type.name);
  return names;
}

}  // namespace

std::function<void()> addSettings(CLI::App& program) {
  const auto arguments = std::make_shared<Arguments>();
  const auto run = std::make_shared<void (*)(const Arguments&)>(nullptr);
  CLI::App* settings = program.add_subcommand("settings", "Show and change what Kelvar keeps");
  settings->footer(kExamples);
  settings->fallthrough();
  settings->require_subcommand(1);
  settings->add_flag("--json", arguments->json, "Print JSON");
  const auto add = [&](const char* name, const char* help, void (*command)(const Arguments&)) {
    CLI::App* added = settings->add_subcommand(name, help);
    added->fallthrough();
    added->callback([run, command] { *run = command; });
    if (command != list) added->add_option("KEY", arguments->key, "As it is kept")->required();
    return added;
  };
  add("list", "Every key with its type and value, a line each", list);
  add("get", "The value under a key", get);
  CLI::App* setting = add("set", "Store a value under a key", set);
  setting->add_option("VALUE", arguments->value, "The value, in the form of its type")->required();
  setting->add_option("--type", arguments->type, "What kind of value it is")
      ->check(CLI::IsMember(typeNames()))
      ->capture_default_str();
  add("remove", "Forget a key and its value", remove);
  return [arguments, run] { (*run)(*arguments); };
}

}  // namespace kelvar::app
