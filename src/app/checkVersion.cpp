#include "app/checkVersion.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <memory>

#include "app/Failure.h"
#include "app/Output.h"
#include "core/ApiServer.h"
#include "core/KVVersionChecker.h"
#include "platform/Bundle.h"
#include "platform/Json.h"

namespace kelvar::app {
namespace {

constexpr const char* kExplanation = R"(
The server is what KELVAR_API_SERVER names, such as https://api.example.com. There is none by
default, and then nothing is sent. The answer is kept in the settings.

Exit status: 0 the server has answered, 1 it has not, 2 misuse.)";

[[noreturn]] void fail(const QString& sentence) { throw Failure(Failure::kFailed, sentence); }

KVVersionCheckerRef checkOnce() {
  static char name[] = "kelvar";
  static char* arguments[] = {name, nullptr};
  static int count = 1;
  const QCoreApplication application(count, arguments);
  const auto information = [](const char* key) {
    return Bundle::objectForInfoDictionaryKey(QLatin1String(key)).toString();
  };
  const KVVersionCheckerRef checker = KVVersionChecker::checkerWithIdentifier(
      information("CFBundleIdentifier"), information("CFBundleShortVersionString"));
  const auto delegate = std::make_shared<KVVersionCheckerDelegate>();
  delegate->checkerDidFinish = [](KVVersionChecker&) { QCoreApplication::quit(); };
  checker->setDelegate(delegate);
  checker->start();
  QCoreApplication::exec();
  return checker;
}

QVariant orNull(const QString& text) {
  return text.isNull() ? QVariant::fromValue(nullptr) : QVariant(text);
}

QByteArray report(const KVVersionChecker& checker, const QString& problem) {
  const QVariantMap report{
      {QStringLiteral("version"), checker.name()},
      {QStringLiteral("success"), checker.success()},
      {QStringLiteral("error"), orNull(problem)},
      {QStringLiteral("isExpired"), checker.isExpired()},
      {QStringLiteral("expiredMessage"), orNull(checker.expiredMessage())},
      {QStringLiteral("actionTitle"), orNull(checker.actionTitle())},
      {QStringLiteral("actionURL"), checker.actionURL().isEmpty() ? QVariant::fromValue(nullptr)
                                                                  : checker.actionURL().toString()},
      {QStringLiteral("lastCheck"), checker.lastCheck().toString(Qt::ISODateWithMs)}};
  QString error;
  return Json::write(report, Json::Layout::Compact, &error);
}

/// Why the check has failed; null when it has not.
QString problemOf(const KVVersionChecker& checker) {
  if (checker.success()) return {};
  if (!checker.error().isValid()) {
    return QStringLiteral("the server's answer is no JSON object, or has no error in it");
  }
  QString message = checker.error().toMap()[QStringLiteral("message")].toString();
  if (!message.isEmpty()) return message;
  QString error;
  message = QString::fromUtf8(Json::write(checker.error(), Json::Layout::Compact, &error));
  return QStringLiteral("the server refused: ") + message;
}

QString sentence(const KVVersionChecker& checker) {
  if (!checker.isExpired()) return QStringLiteral("Version %1 is current.").arg(checker.name());
  QString text = QStringLiteral("Version %1 has expired.").arg(checker.name());
  if (!checker.expiredMessage().isEmpty()) text += u' ' + printable(checker.expiredMessage());
  if (checker.actionURL().isEmpty()) return text;
  const QString title = printable(checker.actionTitle());
  return text + u'\n' + (title.isEmpty() ? title : title + QStringLiteral(": ")) +
         checker.actionURL().toString();
}

void run(bool json) {
  if (addressOnApiServer(QStringLiteral("/")).isEmpty()) {
    fail(QStringLiteral("no server is configured: set KELVAR_API_SERVER to its address"));
  }
  const KVVersionCheckerRef checker = checkOnce();
  const QString problem = problemOf(*checker);
  if (json) print(report(*checker, problem));
  if (!problem.isNull()) fail(QStringLiteral("the version cannot be checked: ") + problem);
  if (!json) print(sentence(*checker).toUtf8());
}

}  // namespace

std::function<void()> addCheckVersion(CLI::App& program) {
  const auto json = std::make_shared<bool>(false);
  CLI::App* check = program.add_subcommand("check-version",
                                           "Ask the server whether this version is still current");
  check->footer(kExplanation);
  check->fallthrough();
  check->add_flag("--json", *json, "Print what came of it as JSON");
  return [json] { run(*json); };
}

}  // namespace kelvar::app
