#include <gtest/gtest.h>

#include "app/ProgramOnServer.h"
#include "platform/Json.h"
#include "platform/LoopbackServer.h"
#include "platform/UserDefaults.h"

namespace kelvar {
namespace {

using Server = LoopbackServer;

class CheckVersion : public ProgramOnServer {
 protected:
  CheckVersion() : ProgramOnServer("check-version") {}
};

TEST_F(CheckVersion, PrintsWhatCameOfIt) {
  const QByteArray current = R"({"success": true, "records": [{"fields": {}}]})";
  const QByteArray expired = R"({"success": true, "records": [{"fields": {"Expired": true,
      "Expired Message": "Old\u001b[2J.", "Action Title": "Get it",
      "Action URL": "https://vendor.example/"}}]})";
  const std::tuple<QByteArray, int, QByteArray, QByteArray> cases[] = {
      {Server::http(current), 0, "Version 1.0.0 is current.\n", ""},
      {Server::http(expired), 0,
       "Version 1.0.0 has expired. Old\xef\xbf\xbd[2J.\nGet it: https://vendor.example/\n", ""},
      {Server::http(R"({"error": {"message": "Who are you?"}})"), 1, "",
       "kelvar: the version cannot be checked: Who are you?\n"},
      {Server::http("{}"), 1, "",
       "kelvar: the version cannot be checked: the server's answer is no JSON object, or has no "
       "error in it\n"},
      {Server::http(current).chopped(1), 1, "",
       "kelvar: the version cannot be checked: Connection closed\n"}};
  for (const auto& [answer, status, out, error] : cases) {
    const Server server({answer});
    EXPECT_EQ(run(server.url(QString()).toString()), out);
    EXPECT_EQ(status_, status);
    EXPECT_EQ(error_, error);
  }
  const Server server({Server::http(expired)});
  QString error;
  const QVariantMap report =
      Json::read(run(server.url(QString()).toString(), {QStringLiteral("--json")}), &error).toMap();
  EXPECT_EQ(report[QStringLiteral("isExpired")], true) << error.toStdString();
  EXPECT_EQ(report[QStringLiteral("error")], QVariant::fromValue(nullptr));
  const QString key = QStringLiteral("io.kelvarlabs.kelvar.checker");
  EXPECT_EQ(UserDefaults(path_).objectForKey(key).toMap()[QStringLiteral("isExpired")], true);
}

TEST_F(CheckVersion, SaysOnceWhereTheAnswerCannotBeKept) {
  const Server server({Server::http(R"({"success": true})")});
  QFile file(dir_.filePath(QStringLiteral("file")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("Chapter one.\n");
  file.close();
  const std::pair<QString, const char*> cases[] = {
      {file.fileName() + QStringLiteral("/settings.sqlite"), "cannot be written: "},
      {file.fileName(), "cannot be read: it is not a Kelvar settings file"}};
  for (const auto& [path, reason] : cases) {
    path_ = path;
    EXPECT_EQ(run(server.url(QString()).toString()), "Version 1.0.0 is current.\n");
    EXPECT_EQ(status_, 0);
    EXPECT_TRUE(error_.startsWith("kelvar: the settings in " + path.toUtf8() + ' ' + reason))
        << error_.constData();
    EXPECT_EQ(error_.count('\n'), 1) << error_.constData();
  }
}

TEST_F(CheckVersion, SendsNothingWithoutAServer) {
  EXPECT_EQ(run(QString()), "");
  EXPECT_EQ(status_, 1);
  EXPECT_EQ(error_, "kelvar: no server is configured: set KELVAR_API_SERVER to its address\n");
  EXPECT_FALSE(QFile::exists(path_));
}

TEST_F(CheckVersion, OtherCommandsStartWithoutQtNetwork) {
  QProcess ldd;
  ldd.start(QStringLiteral("ldd"), {QStringLiteral(KELVAR_PROGRAM)});
  ASSERT_TRUE(ldd.waitForFinished(-1));
  const QByteArray libraries = ldd.readAllStandardOutput();
  EXPECT_TRUE(libraries.contains("libQt6Core"));
  EXPECT_FALSE(libraries.contains("libQt6Network"));
}

}  // namespace
}  // namespace kelvar
