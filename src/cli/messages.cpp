#include "cli/messages.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <algorithm>
#include <limits>
#include <memory>
#include <optional>

#include "cli/CommandError.h"
#include "cli/Output.h"
#include "cli/ServerCommand.h"
#include "cli/jsonText.h"
#include "core/ServerMessages.h"
#include "platform/MainQueue.h"
#include "platform/QtError.h"

namespace kelvar::cli {
namespace {

constexpr const char* kExplanation = R"(
KELVAR_API_SERVER sets the server, such as https://api.example.com. By default, none is set, and
nothing is sent. The settings keep up to 1,000 messages; they are listed even if the server cannot be
reached.

Each line is a message: its ID, "new" or "read", the text, and the URL that it links to.

Examples:
  kelvar messages
  kelvar messages --read 7

Exit status: 0 success, 1 the server did not answer or there is no such message, 2 usage error.)";

/// The settings, and the first error.
class Store : public KVPersister {
 public:
  void setObject(const QVariant& value, const QString& key) override {
    const Result<void> written = UserDefaults::standard().store().write(value, key);
    if (!written && !error_) error_ = written.error();
  }
  QVariant objectForKey(const QString& key) const override {
    const Result<QVariant> value = UserDefaults::standard().store().read(key);
    if (!value && !error_) error_ = value.error();
    return value.value_or(QVariant());
  }

  void throwError() const {
    if (error_) throw CommandError(*error_);
  }

 private:
  mutable std::optional<Error> error_;
};

Result<void> fetch(const std::shared_ptr<Store>& store) {
  if (Result<void> hasServer = checkApiServer(); !hasServer) return hasServer;
  Result<void> fetched;
  runRequest([&] {
    ServerMessages::load([store] { return store; },
                         [&](const Result<void>& loaded) {
                           MainQueue::async([&fetched, loaded] {
                             fetched = loaded;
                             QCoreApplication::quit();
                           });
                         });
  });
  // Never an error in the command line, whatever the kind.
  if (fetched) return fetched;
  return failure(Error::Kind::Io,
                 QStringLiteral("no messages were fetched: ") + messageOf(fetched.error()));
}

QString key() { return QLatin1String(ServerMessages::kKey); }

void markRead(Store& store, qint64 id) {
  const QVariantList old = store.objectForKey(key()).toList();
  const bool isThere = std::any_of(old.begin(), old.end(), [&](const QVariant& message) {
    return ServerMessages::idOf(message) == id;
  });
  store.throwError();
  if (!isThere) fail(QStringLiteral("there is no message %1").arg(id));
  store.setObject(orThrow(ServerMessages::withMessageRead(old, id)), key());
}

QString line(const QVariantMap& message) {
  const QString action = message[QStringLiteral("action")].toString();
  const QString text = message[QStringLiteral("message")].toString();
  const bool read = message[QStringLiteral("read")].toBool();
  return QStringLiteral("%1\t%2\t%3\t%4")
      .arg(ServerMessages::idOf(message))
      .arg(read ? u"read" : u"new", sanitizeForTerminal(text), sanitizeForTerminal(action));
}

void list(const QVariantList& messages, bool json) {
  if (json) return print(jsonText(messages));
  QStringList lines;
  for (const QVariant& message : messages) lines.append(line(message.toMap()));
  if (!lines.isEmpty()) print(lines.join(u'\n').toUtf8());
}

void run(std::optional<qint64> read, bool json) {
  const auto store = std::make_shared<Store>();
  Result<void> fetched;
  if (read) {
    markRead(*store, *read);
  } else {
    fetched = fetch(store);
  }
  const QVariantList messages = store->objectForKey(key()).toList();
  store->throwError();
  list(messages, json);
  orThrow(fetched);
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
      program.add_subcommand("messages", "Fetch and list the server's messages for users");
  messages->footer(kExplanation);
  messages->fallthrough();
  messages->add_flag("--json", *json, "Print the messages as JSON");
  messages->add_option("--read", *read, "Mark the message with this ID as read; fetch nothing")
      ->check(checkId);
  return [json, read] { run(*read, *json); };
}

}  // namespace kelvar::cli
