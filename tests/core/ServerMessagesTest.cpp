#include "core/ServerMessages.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSet>
#include <QTemporaryDir>
#include <semaphore>
#include <stdexcept>

#include "platform/Bundle.h"
#include "platform/LogCapture.h"
#include "platform/LoopbackServer.h"
#include "platform/SystemInfo.h"
#include "platform/network/URLSession.h"
#include "platform/plist/Json.h"

namespace kelvar {
namespace {

using Server = LoopbackServer;

QVariantList json(const QByteArray& text) {
  const QVariant value = Json::read(text).value();
  EXPECT_EQ(value.typeId(), QMetaType::QVariantList) << text.constData();
  return value.toList();
}

QVariantMap message(qlonglong id, const char* text, const char* action, bool read) {
  return {{QStringLiteral("id"), id},
          {QStringLiteral("message"), QString::fromUtf8(text)},
          {QStringLiteral("action"), QString::fromUtf8(action)},
          {QStringLiteral("read"), read}};
}

TEST(MergeServerMessagesTest, AppendsNewToStored) {
  const QVariantList stored{message(7, "old", "https://a.example/", true)};
  const QVariantMap seven = stored[0].toMap();
  const struct {
    const char* records;
    QVariantList added;
  } cases[] = {
      {R"([])", {}},
      {R"([{"fields": {"ID": 7, "Message": "changed"}},
           {"fields": {"ID": 8, "Message": "new", "Action Link": "https://b.example/"}}])",
       {message(8, "new", "https://b.example/", false)}},
      {R"([{"fields": {"ID": 9, "Message": "b"}}, {"fields": {"ID": 2, "Message": "a"}},
           {"fields": {"ID": 9, "Message": "c"}}])",
       {message(9, "b", "", false), message(2, "a", "", false)}},
      {R"([{"fields": {"Message": "a"}}, {"fields": {"ID": 0, "Message": "b"}},
           {"fields": {"ID": -1, "Message": "c"}}, {"other": 1}])",
       {message(-1, "a", "", false)}},
      {R"([{"fields": {"Action Link": "https://c.example/"}, "other": [1]}])",
       {message(-1, "", "https://c.example/", false)}},
      {R"([{"fields": {"ID": 8.9, "Message": 5, "Action Link": null}},
           {"fields": {"ID": "10", "Message": ["a"], "Action Link": {}}},
           {"fields": {"ID": "abc", "Message": "a"}}])",
       {message(8, "", "", false), message(10, "", "", false), message(-1, "a", "", false)}},
      {R"([{"fields": {"ID": "7abc"}}, {"fields": {"ID": "8.0"}}, {"fields": {"ID": " +9 "}},
           {"fields": {"ID": "-3-"}}, {"fields": {"ID": "99999999999999999999"}}])",
       {message(8, "", "", false), message(9, "", "", false), message(-3, "", "", false),
        message(std::numeric_limits<qlonglong>::max(), "", "", false)}},
      {R"([{"fields": {"ID": [8]}}, {"fields": {"ID": {"a": 1}}}])", {message(-1, "", "", false)}},
      {R"([{"fields": [{"ID": 8}]}])", {message(-1, "", "", false)}},
      {R"([{"fields": null}, {"fields": 5}, {}])", {message(-1, "", "", false)}},
      {R"([null, 5, "text", [{"fields": {"ID": 8}}]])", {}},
      {R"([{"fields": {"ID": 9223372036854775807, "Message": "\u00e4"}}])",
       {message(std::numeric_limits<qlonglong>::max(), "\xc3\xa4", "", false)}},
  };
  for (const auto& [records, added] : cases) {
    EXPECT_EQ(ServerMessages::merged(stored, json(records)), QVariantList{seven} + added)
        << records;
  }
  for (const QVariant& kept : {QVariant(5), QVariant(QVariantMap())}) {
    EXPECT_EQ(ServerMessages::merged({kept}, json(R"([{"fields": {"ID": 5}}])")),
              (QVariantList{kept, message(5, "", "", false)}));
  }
}

/// Messages with these ids; multiples of `read` are read.
QVariantList messages(qlonglong first, qlonglong last, qlonglong read) {
  QVariantList list;
  for (qlonglong id = first; id <= last; ++id) list.append(message(id, "", "", id % read == 0));
  return list;
}

QVariantList records(qlonglong first, qlonglong last) {
  QVariantList list;
  for (qlonglong id = first; id <= last; ++id) {
    list.append(QVariantMap{{QStringLiteral("fields"), QVariantMap{{QStringLiteral("ID"), id}}}});
  }
  return list;
}

TEST(MergeServerMessagesTest, KeepsAThousandAtMost) {
  constexpr qlonglong kNone = 1'000'000;
  const auto without = [](QVariantList list, QList<qlonglong> ids) {
    for (const qlonglong id : ids)
      list.removeIf([&](const QVariant& each) { return ServerMessages::idOf(each) == id; });
    return list;
  };
  const struct {
    const char* what;
    QVariantList stored, records, kept;
  } cases[] = {
      {"as many as there may be", messages(1, 999, 7), records(1000, 1000), messages(1, 1000, 7)},
      {"the oldest that were read go", messages(1, 1000, 7), records(1001, 1002),
       without(messages(1, 1000, 7), {7, 14}) + messages(1001, 1002, kNone)},
      {"those first that do not come again", messages(1, 1000, 7),
       records(7, 7) + records(1001, 1001),
       without(messages(1, 1000, 7), {14}) + messages(1001, 1001, kNone)},
      {"nothing was read", messages(1, 1000, kNone), records(1, 1) + records(1001, 1001),
       without(messages(1, 1001, kNone), {2})},
      {"a store of before", messages(1, 1200, kNone), records(5, 5),
       messages(5, 5, kNone) + messages(202, 1200, kNone)},
      {"a long answer, once", {}, records(1, 1500), messages(501, 1500, kNone)},
      {"and again", messages(501, 1500, kNone), records(1, 1500), messages(501, 1500, kNone)},
  };
  for (const auto& [what, stored, records, kept] : cases) {
    EXPECT_EQ(ServerMessages::merged(stored, records), kept) << what;
  }
}

TEST(MergeServerMessagesTest, KeepsValueTypes) {
  const QVariantMap merged =
      ServerMessages::merged({}, json(R"([{"fields": {"ID": 3.0}}])")).value(0).toMap();
  EXPECT_EQ(merged[QStringLiteral("id")].typeId(), QMetaType::LongLong);
  EXPECT_EQ(merged[QStringLiteral("read")].typeId(), QMetaType::Bool);
  EXPECT_EQ(merged[QStringLiteral("message")].typeId(), QMetaType::QString);
}

TEST(MarkServerMessagesTest, MarksInPlace) {
  const QVariantList list{message(3, "a", "", false), message(5, "b", "c", false),
                          message(9, "d", "", true)};
  QVariantList marked = list;
  marked[1] = message(5, "b", "c", true);
  EXPECT_EQ(ServerMessages::withMessageRead(list, 5).value(), marked);
  EXPECT_EQ(ServerMessages::withMessageRead(list, 4).value(), list);
  EXPECT_EQ(ServerMessages::withMessageRead({}, 4).value(), QVariantList());
  for (const char* missing : {"message", "action"}) {
    QVariantMap damaged = list[1].toMap();
    damaged.remove(QLatin1String(missing));
    EXPECT_FALSE(ServerMessages::withMessageRead({damaged}, 5)) << missing;
    EXPECT_TRUE(ServerMessages::withMessageRead({damaged}, 4)) << missing;
  }
}

class LoadServerMessagesTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(dir_.isValid());
    for (const char* proxy : {"http_proxy", "https_proxy", "all_proxy"}) qunsetenv(proxy);
    qputenv("KELVAR_DEFAULTS", dir_.filePath(QStringLiteral("s.sqlite")).toUtf8());
  }
  void TearDown() override {
    qunsetenv("KELVAR_DEFAULTS");
    qunsetenv("KELVAR_API_SERVER");
    Bundle::setHostInformation({});
  }

  /// Starts `count` loads at once and waits until all are done. Returns the outcome of the last.
  Result<void> load(const QUrl& server, int count = 1) {
    qputenv("KELVAR_API_SERVER", server.toEncoded());
    std::counting_semaphore done(0);
    Result<void> outcome;
    for (int i = 0; i < count; ++i) {
      ServerMessages::load([this] { return persister_; },
                           [&](const Result<void>& loaded) {
                             outcome = loaded;
                             done.release();
                           });
    }
    for (int i = 0; i < count; ++i) done.acquire();
    return outcome;
  }
  Result<void> load(const QByteArray& answer) {
    const Server server({answer});
    return load(server.url(QString()));
  }

  QVariant stored() const {
    return KVPersister().objectForKey(QLatin1String(ServerMessages::kKey));
  }

  int count_ = 1;
  char name_[5] = "test";
  char* arguments_[2] = {name_, nullptr};
  QCoreApplication application_{count_, arguments_};
  QTemporaryDir dir_;
  KVPersisterRef persister_ = std::make_shared<KVPersister>();
};

TEST_F(LoadServerMessagesTest, RequestContainsVersions) {
  const Server server({Server::http("{}")});
  const LogCapture log;
  const auto version = [&](const QString& host) {
    return QStringLiteral("/r/get_messages?version=1.0.0.1&skVersion=%1&osVersion=").arg(host);
  };
  QUrl secret = server.url(QString());
  secret.setUserInfo(QStringLiteral("me:pass"));
  load(secret);
  Bundle::setHostInformation(
      {{QStringLiteral("CFBundleShortVersionString"), QStringLiteral("52 b")},
       {QStringLiteral("CFBundleVersion"), QStringLiteral("812")}});
  load(server.url(QString()));
  const QStringList hosts{QStringLiteral("(null).(null)"), QStringLiteral("52%20b.812")};
  ASSERT_EQ(server.requests().size(), hosts.size());
  for (int i = 0; i < hosts.size(); ++i) {
    const QString request = QString::fromLatin1(server.requests()[i]);
    EXPECT_TRUE(request.startsWith(QStringLiteral("GET ") + version(hosts[i])))
        << request.toStdString();
    const QString address = request.section(u' ', 1, 1);
    const QString system = SystemInfo::operatingSystemVersionString().split(u' ').value(1);
    EXPECT_FALSE(system.isEmpty() || system == QStringLiteral("Version"));
    EXPECT_TRUE(address.endsWith(QStringLiteral("&osVersion=") + system)) << address.toStdString();
    EXPECT_TRUE(log.lines().contains(QStringLiteral("Loading message with version: ") +
                                     server.url(QString()).toString() + address))
        << log.lines().join(u'\n').toStdString();
  }
  EXPECT_FALSE(log.lines().join(u'\n').contains(QStringLiteral("pass")));
}

TEST_F(LoadServerMessagesTest, StoresWhateverTheStatus) {
  const QByteArray two = R"({"messages": [{"fields": {"ID": 7, "Message": "a"}}, {"fields": {}}]})";
  for (const char* status : {"200 OK", "500 Internal Server Error", "404 Not Found"}) {
    KVPersister().removeObjectForKey(QLatin1String(ServerMessages::kKey));
    EXPECT_TRUE(load(Server::http(two, status))) << status;
    EXPECT_EQ(stored(),
              QVariant(QVariantList{message(7, "a", "", false), message(-1, "", "", false)}))
        << status;
  }
}

TEST_F(LoadServerMessagesTest, RepliesWithoutMessagesChangeNothing) {
  const QVariant list = QVariantList{message(7, "old", "", true)};
  const struct {
    QByteArray answer;
    const char* result;  // What the log has; null when nothing is logged.
    bool fails = true;
  } cases[] = {
      {Server::http(R"({"messages": []})"), R"(result: {"messages":[]})", false},
      {Server::http("{}"), "result: {}", false},
      {Server::http(R"({"messages": null})"), R"(result: {"messages":null})", false},
      {Server::http(R"({"messages": {"a": 1}})"), R"(result: {"messages":{"a":1}})", false},
      {Server::http(R"({"messages": 5})"), R"(result: {"messages":5})", false},
      {Server::http(R"([{"messages": [{}]}])"), R"(result: [{"messages":[{}]}])", false},
      {Server::http("5"), "result: (null)"},
      {Server::http("\"text\""), "result: (null)"},
      {Server::http("<html>"), "result: (null)"},
      {Server::http(R"({"messages": [{"fields": {"ID": 8}})"), "result: (null)"},
      {Server::http(""), nullptr},
      {Server::http(R"({"messages": [{}]})").chopped(1), nullptr},
      {"nonsense", nullptr},
  };
  for (const auto& [answer, result, fails] : cases) {
    KVPersister().setObject(list, QLatin1String(ServerMessages::kKey));
    const LogCapture log;
    EXPECT_EQ(!load(answer), fails) << answer.constData();
    EXPECT_EQ(stored(), list) << answer.constData();
    const QStringList lines = log.lines();
    EXPECT_EQ(lines.size(), result ? 3 : 1) << lines.join(u'\n').toStdString();
    EXPECT_EQ(lines.value(2), QLatin1String(result));
    EXPECT_EQ(lines.value(1) == QStringLiteral("Parse error: (null)"), result && !fails);
  }
}

TEST_F(LoadServerMessagesTest, RequiresServerAndStore) {
  EXPECT_FALSE(load(QUrl()));
  URLSession::shared()->setTimeout(std::chrono::milliseconds(100));
  EXPECT_FALSE(load(QByteArray())) << "silence";
  URLSession::shared()->setTimeout(std::chrono::minutes(1));
  persister_.reset();
  EXPECT_TRUE(load(Server::http(R"({"messages": [{}]})")));
  EXPECT_FALSE(stored().isValid());
}

TEST_F(LoadServerMessagesTest, ConcurrentLoadsLoseNothing) {
  const QByteArray seven = R"({"fields": {"ID": 7}})";
  const QByteArray first =
      Server::http("{\"messages\": [" + seven + R"(, {"fields": {"ID": 8}}]})");
  const QByteArray second =
      Server::http("{\"messages\": [" + seven + R"(, {"fields": {"ID": 9}}]})");
  for (int round = 0; round < 10; ++round) {
    KVPersister().removeObjectForKey(QLatin1String(ServerMessages::kKey));
    const Server server({first, second});
    EXPECT_TRUE(load(server.url(QString()), 2));
    // The order of the answers depends on the network.
    QSet<qlonglong> ids;
    const QVariantList list = stored().toList();
    for (const QVariant& each : list) ids.insert(each.toMap()[QStringLiteral("id")].toLongLong());
    EXPECT_EQ(ids.size(), list.size()) << "one id twice";
    EXPECT_TRUE(ids.contains(7));
    EXPECT_TRUE(ids.contains(8) || ids.contains(9));
  }
}

TEST_F(LoadServerMessagesTest, LimitsHugeResponses) {
  constexpr int kCount = 100000;
  QByteArray records;
  for (int id = 1; id <= kCount; ++id) {
    records += (id == 1 ? "{\"fields\":{\"ID\":" : ",{\"fields\":{\"ID\":") +
               QByteArray::number(id) + ",\"Message\":\"Version 4\"}}";
  }
  const Server server({Server::http("{\"messages\":[" + records + "]}")});
  for (int round = 0; round < 2; ++round) {
    EXPECT_TRUE(load(server.url(QString())));
    const QVariantList list = stored().toList();
    ASSERT_EQ(list.size(), ServerMessages::kMaxMessages);
    EXPECT_EQ(list.last(), QVariant(message(kCount, "Version 4", "", false)));
  }
}

}  // namespace
}  // namespace kelvar
