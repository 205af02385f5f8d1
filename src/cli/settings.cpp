#include "cli/settings.h"

#include <CLI/CLI.hpp>
#include <QDateTime>
#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

#include "cli/CommandError.h"
#include "cli/Output.h"
#include "cli/jsonText.h"
#include "platform/plist/Json.h"
#include "platform/store/UserDefaults.h"

namespace kelvar::cli {
namespace {

constexpr const char* kExamples = R"(
All Kelvar programs share one settings file: $XDG_CONFIG_HOME/kelvar/settings.sqlite or
~/.config/kelvar/settings.sqlite. KELVAR_DEFAULTS names another one.

Dates are written like 2026-05-01T12:00:00Z, data in Base64. A string that begins with - goes after
--, as in the last example.

Examples:
  kelvar settings list
  kelvar settings set com.example.limit 12 --type integer
  kelvar settings set com.example.list '[1, 2.5, "three"]' --type json
  kelvar settings get com.example.list
  kelvar settings remove com.example.list
  kelvar settings set com.example.text -- -12

Exit status: 0 success, 1 failure or no such key, 2 usage error.)";

/// The command line, as given.
struct Arguments {
  std::string key;
  std::string value;
  std::string type = "string";
  bool json = false;

  QString keyText() const { return QString::fromStdString(key); }
};

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
  return isWord ? key.toUtf8() : sanitizeForTerminal(QString::fromUtf8(jsonText(key))).toUtf8();
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
  const Result<QVariant> value = Json::read(text.toUtf8());
  *good = value.has_value();
  return value.value_or(QVariant());
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
    {"integer", readInteger, "a 64-bit integer such as -12"},
    {"real", readReal, "a number such as 0.5"},
    {"bool", readBool, "true or false"},
    {"date", readDate, "a date such as 2026-05-01T12:00:00Z"},
    {"data", readData, "Base64"},
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
  QVariant value = orThrow(UserDefaults::standard().store().read(key));
  if (!value.isValid()) {
    fail(QStringLiteral("nothing is stored under %1").arg(QString::fromUtf8(oneWord(key))));
  }
  return value;
}

void list(const Arguments& arguments) {
  const SettingsStore store = UserDefaults::standard().store();
  QVariantList entries;
  std::optional<Error> unreadable;
  for (const QString& key : orThrow(store.keys())) {
    const Result<QVariant> value = store.read(key);
    if (!value) unreadable = value.error();
    if (value && value->isValid()) entries.append(entry(key, *value));
  }
  if (arguments.json) print(jsonText(entries));
  for (const QVariant& each : arguments.json ? QVariantList() : entries) {
    const QVariantMap map = each.toMap();
    print(oneWord(map[QStringLiteral("key")].toString()) + '\t' +
          map[QStringLiteral("type")].toByteArray() + '\t' +
          sanitizeForTerminal(QString::fromUtf8(jsonText(map[QStringLiteral("value")]))).toUtf8());
  }
  // One value that cannot be read hides no other.
  if (unreadable) throw CommandError(*unreadable);
}

void get(const Arguments& arguments) {
  const QVariant value = stored(arguments.keyText());
  if (arguments.json) return print(jsonText(entry(arguments.keyText(), value)));
  const QVariant plain = forJson(value);
  print(plain.typeId() == QMetaType::QString ? plain.toString().toUtf8() : jsonText(plain));
}

void set(const Arguments& arguments) {
  orThrow(UserDefaults::standard().store().write(readValue(arguments), arguments.keyText()));
  if (arguments.json) get(arguments);
}

void remove(const Arguments& arguments) {
  const SettingsStore store = UserDefaults::standard().store();
  // A value that cannot be read can be removed.
  const bool wasThere = store.read(arguments.keyText()).value_or(QVariant()).isValid();
  orThrow(store.remove(arguments.keyText()));
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
  CLI::App* settings = program.add_subcommand("settings", "Show and change settings");
  settings->footer(kExamples);
  settings->fallthrough();
  settings->require_subcommand(1);
  settings->add_flag("--json", arguments->json, "Print the result as JSON");
  const auto add = [&](const char* name, const char* help, void (*command)(const Arguments&)) {
    CLI::App* added = settings->add_subcommand(name, help);
    added->fallthrough();
    added->callback([run, command] { *run = command; });
    if (command != list) added->add_option("KEY", arguments->key, "The key")->required();
    return added;
  };
  add("list", "List every key with its type and value, one per line", list);
  add("get", "Print the value of a key", get);
  CLI::App* setting = add("set", "Store a value under a key", set);
  setting->add_option("VALUE", arguments->value, "The value, in the syntax of its type")
      ->required();
  setting->add_option("--type", arguments->type, "Type of the value")
      ->check(CLI::IsMember(typeNames()))
      ->capture_default_str();
  add("remove", "Remove a key and its value", remove);
  return [arguments, run] { (*run)(*arguments); };
}

}  // namespace kelvar::cli
