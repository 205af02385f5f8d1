#include <gtest/gtest.h>

#include <QFile>

#include "cli/ProgramOnServer.h"
#include "core/ServerMessages.h"
#include "platform/LoopbackServer.h"
#include "platform/store/UserDefaults.h"

namespace kelvar {
namespace {

using Server = LoopbackServer;

constexpr const char* kTwo = R"({"messages": [
    {"fields": {"ID": 7, "Message": "One\u001b[2J\nline", "Action Link": "https://a.example/"}},
    {"fields": {"ID": 8, "Message": "Two"}}]})";

class MessagesTest : public ProgramOnServer {
 protected:
  MessagesTest() : ProgramOnServer("messages") {}

  QByteArray read(const char* id) {
    return run(QString(), {QStringLiteral("--read"), QLatin1String(id)});
  }
};

TEST_F(MessagesTest, FetchesListsAndMarks) {
  const Server server({Server::http(kTwo)});
  const QByteArray one = "\tOne\xef\xbf\xbd[2J\xef\xbf\xbdline\thttps://a.example/\n";
  EXPECT_EQ(run(server.url(QString()).toString()), "7\tnew" + one + "8\tnew\tTwo\t\n");
  EXPECT_EQ(status_, 0) << error_.constData();

  EXPECT_EQ(read("7"), "7\tread" + one + "8\tnew\tTwo\t\n");
  EXPECT_EQ(status_, 0) << error_.constData();
  EXPECT_EQ(server.requests().size(), 1) << "reading fetches nothing";

  EXPECT_EQ(run(server.url(QString()).toString(), {QStringLiteral("--json")}),
            R"([{"action":"https://a.example/","id":7,"message":"One\u001b[2J\nline","read":true},)"
            R"({"action":"","id":8,"message":"Two","read":false}])"
            "\n");
}

TEST_F(MessagesTest, ReportsErrors) {
  const Server garbage({Server::http("<html>")});
  const QString address = garbage.url(QString()).toString();
  EXPECT_EQ(run(address), "");
  EXPECT_EQ(status_, 1);
  EXPECT_TRUE(
      error_.startsWith("kelvar: no messages were fetched: the server's answer is not JSON"))
      << error_.constData();

  EXPECT_EQ(run(QString()), "");
  EXPECT_EQ(status_, 1);
  EXPECT_EQ(error_, "kelvar: no server is configured: set KELVAR_API_SERVER to its URL\n");
  EXPECT_EQ(read("7"), "");
  EXPECT_EQ(status_, 1);
  EXPECT_EQ(error_, "kelvar: there is no message 7\n");
  EXPECT_FALSE(QFile::exists(path_));
  for (const char* id : {"seven", "9223372036854775808"}) {
    EXPECT_EQ(read(id), "");
    EXPECT_EQ(status_, 2);
    EXPECT_TRUE(error_.contains("a whole number from -9223372036854775808 to"))
        << error_.constData();
  }

  // Stored messages are listed all the same.
  const Server server({Server::http(kTwo)});
  run(server.url(QString()).toString());
  EXPECT_EQ(run(address).count('\n'), 2);
  EXPECT_EQ(status_, 1);
}

TEST_F(MessagesTest, ReportsStoreFailure) {
  const Server server({Server::http(kTwo)});
  path_ = dir_.filePath(QStringLiteral("file/settings.sqlite"));
  QFile file(dir_.filePath(QStringLiteral("file")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  EXPECT_EQ(run(server.url(QString()).toString()), "");
  EXPECT_EQ(status_, 1);
  EXPECT_TRUE(error_.contains("settings.sqlite")) << error_.constData();
}

TEST_F(MessagesTest, DoesNotMarkDamagedMessages) {
  const QString key = QLatin1String(ServerMessages::kKey);
  const QVariantList damaged{QVariantMap{{QStringLiteral("id"), 7}}};
  ASSERT_TRUE(UserDefaults(path_).setObject(damaged, key));
  EXPECT_EQ(read("7"), "");
  EXPECT_EQ(status_, 1);
  EXPECT_FALSE(error_.isEmpty());
  EXPECT_EQ(UserDefaults(path_).objectForKey(key).toList().value(0).toMap().size(), 1);
}

}  // namespace
}  // namespace kelvar
