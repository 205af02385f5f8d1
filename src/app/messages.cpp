#include "app/messages.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>

#include "app/Failure.h"
#include "app/Output.h"
#include "core/ApiServer.h"
#include "core/ServerMessages.h"
#include "platform/Json.h"
#include "platform/MainQueue.h"

namespace kelvar::app {
namespace {

constexpr const char* kExplanation = R"(
The server is what KELVAR_API_SERVER names, such as https://api.example.com. There is none by
default, and then nothing is sent. The messages are kept in the settings, 1,000 at most; those that
were fetched before are listed also when the server cannot be reached.

Each message is a line: its id, "new" or "read", the text, and the address that it leads to.

Examples:
  kelvar messages
  kelvar messages --read 7

Exit status: 0 done, 1 the server has not answered or there is no such message, 2 misuse.)";

[[noreturn]] void fail(const QString& sentence) { throw Failure(Failure::kFailed, sentence); }

/// The settings, with the first thing that went wrong.
class Store : public KVPersister {
 public:
  void setObject(const QVariant& value, const QString& key) override {
    QString problem;
    if (!UserDefaults::standard().setObject(value, key, &problem)) keep(problem);
  }
  QVariant objectForKey(const QString& key) const override {
    QString problem;
    const QVariant value = UserDefaults::standard().objectForKey(key, &problem);
    keep(problem);
    return value;
  }

  const QString& problem() const { return problem_; }

 private:
  void keep(const QString& problem) const {
    if (problem_.isEmpty()) problem_ = problem;
  }

  mutable QString problem_;
};

/// Null, or why nothing was fetched.
QString fetch(const std::shared_ptr<Store>& store) {
  if (addressOnApiServer(QStringLiteral("/")).isEmpty()) {
    return QStringLiteral("no server is configured: set KELVAR_API_SERVER to its address");
  }
  static char name[] = "kelvar";
  static char* arguments[] = {name, nullptr};
  static int count = 1;
  const QCoreApplication application(count, arguments);
  QString problem;
  ServerMessages::load([store] { return store; },
                       [&](const QString& error) {
                         MainQueue::async([&problem, error] {
                           problem = error;
                           QCoreApplication::quit();
                         });
                       });
  QCoreApplication::exec();
  return problem.isNull() ? problem : QStringLiteral("no messages were fetched: ") + problem;
}

QString key() { return QLatin1String(ServerMessages::kKey); }

void markRead(Store& store, qint64 id) {
  const QVariantList old = store.objectForKey(key()).toList();
  const bool isThere = std::any_of(old.begin(), old.end(), [&](const QVariant& message) {
    return ServerMessages::idOf(message) == id;
  });
  if (!store.problem().isEmpty()) fail(store.problem());
  if (!isThere) fail(QStringLiteral("there is no message %1").arg(id));
  try {
    store.setObject(ServerMessages::withMessageRead(old, id), key());
  } catch (const std::invalid_argument& damage) {
    fail(QLatin1String(damage.what()));
  }
}

QString line(const QVariantMap& message) {
  const QString action = message[QStringLiteral("action")].toString();
  const QString text = message[QStringLiteral("message")].toString();
  const bool read = message[QStringLiteral("read")].toBool();
  return QStringLiteral("%1\t%2\t%3\t%4")
      .arg(ServerMessages::idOf(message))
      .arg(read ? u"read" : u"new", printable(text), printable(action));
}

void list(const QVariantList& messages, bool json) {
  if (json) {
    QString error;
    const QByteArray text = Json::write(messages, Json::Layout::Compact, &error);
    if (text.isEmpty()) fail(QStringLiteral("cannot be written as JSON: ") + error);
    return print(text);
  }
  QStringList lines;
  for (const QVariant& message : messages) lines.append(line(message.toMap()));
  if (!lines.isEmpty()) print(lines.join(u'\n').toUtf8());
}

void run(std::optional<qint64> read, bool json) {
  const auto store = std::make_shared<Store>();
  QString problem;
  if (read) {
    markRead(*store, *read);
  } else {
    problem = fetch(store);
  }
  const QVariantList messages = store->objectForKey(key()).toList();
  if (!store->problem().isEmpty()) fail(store->problem());
  list(messages, json);
  if (!problem.isNull()) fail(problem);
}

/// What is wrong, or nothing.
std::string checkId(const std::string& text) {
  bool isNumber = false;
  QByteArray::fromStdString(text).toLongLong(&isNumber);
  if (isNumber) return {};
  return QStringLiteral("must be a message ID, a whole number from %1 to %2, not \"%3\"")
      .arg(std::numeric_limits<qint64>::min())
      .arg(std::numeric_limits<qint64>::max())
      .arg(QString::fromStdString(text))
      .toStdString();
}

}  // namespace

std::function<void()> addMessages(CLI::App& program) {
  const auto json = std::make_shared<bool>(false);
  const auto read = std::make_shared<std::optional<qint64>>();
  CLI::App* messages =
      program.add_subcommand("messages", "Fetch and list what the server has to say to users");
  messages->footer(kExplanation);
  messages->fallthrough();
  messages->add_flag("--json", *json, "Print a JSON list");
  messages->add_option("--read", *read, "Mark the message with this id as read; fetches nothing")
      ->check(checkId);
  return [json, read] { run(*read, *json); };
}

}  // namespace kelvar::app
