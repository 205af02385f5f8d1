#include "cli/checkVersion.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <memory>

#include "cli/CommandError.h"
#include "cli/Output.h"
#include "cli/ServerCommand.h"
#include "cli/jsonText.h"
#include "core/KVVersionChecker.h"
#include "platform/Bundle.h"
#include "platform/QtError.h"

namespace kelvar::cli {
namespace {

constexpr const char* kExplanation = R"(
KELVAR_API_SERVER sets the server, such as https://api.example.com. By default, none is set, and
nothing is sent. The answer is stored in the settings.

Exit status: 0 the server answered, 1 it did not, 2 usage error.)";

KVVersionCheckerRef checkOnce() {
  const auto information = [](const char* key) {
    return Bundle::objectForInfoDictionaryKey(QLatin1String(key)).toString();
  };
  const KVVersionCheckerRef checker = KVVersionChecker::checkerWithIdentifier(
      information("CFBundleIdentifier"), information("CFBundleShortVersionString"));
  const auto delegate = std::make_shared<KVVersionCheckerDelegate>();
  delegate->checkerDidFinish = [](KVVersionChecker&) { QCoreApplication::quit(); };
  checker->setDelegate(delegate);
  runRequest([&] { checker->start(); });
  return checker;
}

QVariant orNull(const QString& text) {
  return text.isNull() ? QVariant::fromValue(nullptr) : QVariant(text);
}

QByteArray report(const KVVersionChecker& checker, const Result<void>& checked) {
  const QVariant error =
      checked ? QVariant::fromValue(nullptr) : QVariant(messageOf(checked.error()));
  const QVariantMap report{
      {QStringLiteral("version"), checker.name()},
      {QStringLiteral("success"), checker.success()},
      {QStringLiteral("error"), error},
      {QStringLiteral("isExpired"), checker.isExpired()},
      {QStringLiteral("expiredMessage"), orNull(checker.expiredMessage())},
      {QStringLiteral("actionTitle"), orNull(checker.actionTitle())},
      {QStringLiteral("actionURL"), checker.actionURL().isEmpty() ? QVariant::fromValue(nullptr)
                                                                  : checker.actionURL().toString()},
      {QStringLiteral("lastCheck"), checker.lastCheck().toString(Qt::ISODateWithMs)}};
  return jsonText(report);
}

Result<void> outcomeOf(const KVVersionChecker& checker) {
  if (checker.success()) return {};
  if (!checker.error().isValid()) {
    return failure(
        Error::Kind::Damaged,
        QStringLiteral("the server's answer is not a JSON object, or contains no error"));
  }
  const QString message = checker.error().toMap()[QStringLiteral("message")].toString();
  if (!message.isEmpty()) return failure(Error::Kind::Io, message);
  return failure(Error::Kind::Io, QStringLiteral("the server refused: ") +
                                      QString::fromUtf8(jsonText(checker.error())));
}

QString summary(const KVVersionChecker& checker) {
  if (!checker.isExpired()) return QStringLiteral("Version %1 is current.").arg(checker.name());
  QString text = QStringLiteral("Version %1 has expired.").arg(checker.name());
  if (!checker.expiredMessage().isEmpty())
    text += u' ' + sanitizeForTerminal(checker.expiredMessage());
  if (checker.actionURL().isEmpty()) return text;
  const QString title = sanitizeForTerminal(checker.actionTitle());
  return text + u'\n' + (title.isEmpty() ? title : title + QStringLiteral(": ")) +
         checker.actionURL().toString();
}

void run(bool json) {
  orThrow(checkApiServer());
  const KVVersionCheckerRef checker = checkOnce();
  const Result<void> checked = outcomeOf(*checker);
  if (json) print(report(*checker, checked));
  if (!checked) {
    fail(QStringLiteral("the version cannot be checked: ") + messageOf(checked.error()));
  }
  if (!json) print(summary(*checker).toUtf8());
}

}  // namespace

std::function<void()> addCheckVersion(CLI::App& program) {
  const auto json = std::make_shared<bool>(false);
  CLI::App* check =
      program.add_subcommand("check-version", "Ask the server whether this version is current");
  check->footer(kExplanation);
  check->fallthrough();
  check->add_flag("--json", *json, "Print the result as JSON");
  return [json] { run(*json); };
}

}  // namespace kelvar::cli
