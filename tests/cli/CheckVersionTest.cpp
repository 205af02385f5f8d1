#include <gtest/gtest.h>

#include "cli/ProgramOnServer.h"
#include "platform/LoopbackServer.h"
#include "platform/plist/Json.h"
#include "platform/store/UserDefaults.h"

namespace kelvar {
namespace {

using Server = LoopbackServer;

class CheckVersionTest : public ProgramOnServer {
 protected:
  CheckVersionTest() : ProgramOnServer("check-version") {}
};

TEST_F(CheckVersionTest, PrintsResult) {
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
       "kelvar: the version cannot be checked: the server's answer is not a JSON object, or "
       "contains no error\n"},
      {Server::http(current).chopped(1), 1, "",
       "kelvar: the version cannot be checked: Connection closed\n"}};
  for (const auto& [answer, status, out, error] : cases) {
    const Server server({answer});
    EXPECT_EQ(run(server.url(QString()).toString()), out);
    EXPECT_EQ(status_, status);
    EXPECT_EQ(error_, error);
  }
  const Server server({Server::http(expired)});
  const QVariantMap report =
      Json::read(run(server.url(QString()).toString(), {QStringLiteral("--json")})).value().toMap();
  EXPECT_EQ(report[QStringLiteral("isExpired")], true);
  EXPECT_EQ(report[QStringLiteral("error")], QVariant::fromValue(nullptr));
  const QString key = QStringLiteral("io.kelvarlabs.kelvar.checker");
  EXPECT_EQ(UserDefaults(path_).objectForKey(key).toMap()[QStringLiteral("isExpired")], true);
}

TEST_F(CheckVersionTest, ReportsStoreFailureOnce) {
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

TEST_F(CheckVersionTest, SendsNothingWithoutServer) {
  EXPECT_EQ(run(QString()), "");
  EXPECT_EQ(status_, 1);
  EXPECT_EQ(error_, "kelvar: no server is configured: set KELVAR_API_SERVER to its URL\n");
  EXPECT_FALSE(QFile::exists(path_));
}

TEST_F(CheckVersionTest, OtherCommandsStartWithoutQtNetwork) {
  QProcess ldd;
  ldd.start(QStringLiteral("ldd"), {QStringLiteral(KELVAR_PROGRAM)});
  ASSERT_TRUE(ldd.waitForFinished(-1));
  const QByteArray libraries = ldd.readAllStandardOutput();
  EXPECT_TRUE(libraries.contains("libQt6Core"));
  EXPECT_FALSE(libraries.contains("libQt6Network"));
}

}  // namespace
}  // namespace kelvar
