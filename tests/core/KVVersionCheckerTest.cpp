#include "core/KVVersionChecker.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTimer>

#include "archive/HRCoder.h"
#include "platform/LogCapture.h"
#include "platform/LoopbackServer.h"
#include "platform/network/URLSession.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

using Server = LoopbackServer;

constexpr const char* kExpired = R"({"success": true, "records": [
    {"fields": {"Expired": true, "Expired Message": "Time to go", "Action Title": "Update",
                "Action URL": "https://vendor.example/new?a=1", "Other": 2.5}},
    {"fields": {"Expired": false, "Expired Message": "Second"}}]})";

class KVVersionCheckerTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(dir_.isValid());
    for (const char* proxy : {"http_proxy", "https_proxy", "all_proxy"}) qunsetenv(proxy);
    qputenv("KELVAR_DEFAULTS", dir_.filePath(QStringLiteral("s.sqlite")).toUtf8());
    delegate_->checkerDidFinish = [this](KVVersionChecker& checker) {
      ++finished_;
      // It is stored only after the delegate was called.
      stored_ = checker.persister()->objectForKey(key_);
      QCoreApplication::quit();
    };
  }
  void TearDown() override {
    qunsetenv("KELVAR_DEFAULTS");
    qunsetenv("KELVAR_API_SERVER");
  }

  KVVersionCheckerRef stored(const QString& name = QStringLiteral("3.0 beta")) const {
    return KVVersionChecker::checkerWithIdentifier(identifier_, name);
  }

  /// One check, to its end.
  void check(const KVVersionCheckerRef& checker, const QUrl& server) {
    qputenv("KELVAR_API_SERVER", server.toEncoded());
    checker->setDelegate(delegate_);
    checker->start();
    QCoreApplication::exec();
  }
  void check(const KVVersionCheckerRef& checker, const QByteArray& answer) {
    const Server server({answer});
    check(checker, server.url(QString()));
  }

  int count_ = 1;
  char name_[5] = "test";
  char* arguments_[2] = {name_, nullptr};
  QCoreApplication application_{count_, arguments_};
  QTemporaryDir dir_;
  const QString identifier_ = QStringLiteral("io.kelvarlabs.kelvar");
  const QString key_ = QStringLiteral("io.kelvarlabs.kelvar.checker");
  std::shared_ptr<KVVersionCheckerDelegate> delegate_ =
      std::make_shared<KVVersionCheckerDelegate>();
  int finished_ = 0;
  QVariant stored_;
};

QVariant message(const char* text) {
  return QVariantMap{{QStringLiteral("message"), QLatin1String(text)}};
}

TEST_F(KVVersionCheckerTest, KeepsAnswerAcrossRestarts) {
  const auto checker = stored();
  EXPECT_FALSE(checker->finished() || checker->success() || checker->lastCheck().isValid());
  const QDateTime before = QDateTime::currentDateTimeUtc();
  const Server server({Server::http(kExpired)});
  check(checker, server.url(QStringLiteral("/")));
  EXPECT_EQ(server.requests(), QList<QByteArray>{"GET /r/check_version?id=3.0%20beta HTTP/1.1"});
  EXPECT_FALSE(stored_.isValid());
  EXPECT_TRUE(checker->success());
  EXPECT_EQ(checker->result().toMap()[QStringLiteral("Other")], 2.5);
  EXPECT_FALSE(checker->error().isValid());

  const auto again = stored();
  EXPECT_NE(again, checker);
  for (const auto& one : {checker, again}) {
    EXPECT_TRUE(one->finished() && one->isExpired());
    EXPECT_EQ(one->expiredMessage(), QStringLiteral("Time to go"));
    EXPECT_EQ(one->actionTitle(), QStringLiteral("Update"));
    EXPECT_EQ(one->actionURL(), QUrl(QStringLiteral("https://vendor.example/new?a=1")));
    EXPECT_GE(one->lastCheck(), before);
    EXPECT_LE(one->lastCheck(), QDateTime::currentDateTimeUtc());
  }
  EXPECT_FALSE(again->success() || again->result().isValid());
  EXPECT_FALSE(stored(QStringLiteral("3.1"))->finished());
}

TEST_F(KVVersionCheckerTest, EscapesNames) {
  const std::pair<QString, const char*> cases[] = {
      {QStringLiteral("3.0 50%"), "3.0%2050%25"},
      {QStringLiteral("3#1%20"), "3%231%2520"},
      {QStringLiteral("3&a=b?/\u00e4\""), "3&a=b?/%C3%A4%22"}};
  for (const auto& [name, id] : cases) {
    const Server server({Server::http("{}")});
    check(stored(name), server.url(QString()));
    EXPECT_EQ(server.requests(),
              QList<QByteArray>{"GET /r/check_version?id=" + QByteArray(id) + " HTTP/1.1"});
  }
}

TEST_F(KVVersionCheckerTest, InvalidUrlReadsAsEmpty) {
  for (const char* url : {"https://vendor.example/a b", "http://[vendor/", ""}) {
    const auto checker = stored();
    check(checker, Server::http(kExpired));
    check(checker, Server::http(R"({"success": true, "records": [{"fields": {"Action URL": ")" +
                                QByteArray(url) + R"("}}]})"));
    EXPECT_TRUE(checker->success());
    EXPECT_TRUE(checker->actionURL().isEmpty()) << url;
    EXPECT_TRUE(stored()->actionURL().isEmpty()) << url;
  }
}

TEST_F(KVVersionCheckerTest, IsStoredReadably) {
  const auto checker = stored();
  check(checker, Server::http(kExpired));
  const QVariantMap tree = KVPersister().objectForKey(key_).toMap();
  EXPECT_EQ(QStringList(tree.keys()),
            QStringList({QStringLiteral("$class"), QStringLiteral("actionTitle"),
                         QStringLiteral("actionURL"), QStringLiteral("expiredMessage"),
                         QStringLiteral("finished"), QStringLiteral("identifier"),
                         QStringLiteral("isExpired"), QStringLiteral("lastCheck"),
                         QStringLiteral("name"), QStringLiteral("success")}));
  EXPECT_EQ(tree[QStringLiteral("$class")], QStringLiteral("KVVersionChecker"));
  EXPECT_EQ(tree[QStringLiteral("success")], true);
  EXPECT_EQ(tree[QStringLiteral("lastCheck")].toMap()[QStringLiteral("$class")],
            QStringLiteral("NSDate"));
}

TEST_F(KVVersionCheckerTest, IgnoresAnswersStoredForOthers) {
  const QVariantMap good{{QStringLiteral("$class"), QStringLiteral("KVVersionChecker")},
                         {QStringLiteral("identifier"), identifier_},
                         {QStringLiteral("name"), QStringLiteral("3.0 beta")},
                         {QStringLiteral("finished"), true}};
  const auto with = [&](const char* key, const QVariant& value) {
    QVariantMap map = good;
    map[QLatin1String(key)] = value;
    return map;
  };
  const std::pair<QVariant, bool> cases[] = {
      {good, true},
      {with("name", QStringLiteral("3.0")), false},
      {with("identifier", QStringLiteral("other")), false},
      {with("$class", QStringLiteral("KVPersister")), false},
      {with("$class", QStringLiteral("Unknown")), false},
      {with("lastCheck", QDateTime::currentDateTime()), false},
      {QVariantList{good}, false},
      {QStringLiteral("text"), false}};
  for (const auto& [value, taken] : cases) {
    KVPersister().setObject(value, key_);
    EXPECT_EQ(stored()->finished(), taken) << value.typeName();
    EXPECT_EQ(stored()->name(), QStringLiteral("3.0 beta"));
  }
}

TEST_F(KVVersionCheckerTest, AnswersBecomeProperties) {
  const auto fieldsOf = [](const char* fields) {
    return Server::http(R"({"success": true, "records": [{"fields": )" + QByteArray(fields) +
                        "}]}");
  };
  struct Case {
    const char* what;
    QByteArray answer;
    bool success, isExpired;
    const char* expiredMessage;  // Of the earlier answer unless it says otherwise; null for none.
    const char* actionTitle = "Update";
    QVariant error = message("old");
  };
  const QVariant serverError = QVariantMap{{QStringLiteral("code"), 7}};
  const Case cases[] = {
      {"no records", Server::http(R"({"success": true})"), true, false, nullptr},
      {"empty records", Server::http(R"({"success": 1, "records": []})"), true, false, nullptr},
      {"no fields", Server::http(R"({"success": true, "records": [7]})"), true, false, nullptr},
      {"null message", fieldsOf(R"({"Expired": true, "Expired Message": null})"), true, true,
       nullptr},
      {"other types", fieldsOf(R"({"Expired": 1, "Action URL": 5, "Action Title": null})"), true,
       true, nullptr},
      {"new title", fieldsOf(R"({"Expired Message": "", "Action Title": "Go"})"), true, false, "",
       "Go"},
      {"status 500", Server::http(kExpired, "500 Internal Server Error"), true, true, "Time to go"},
      {"refused", Server::http(R"({"success": false, "error": {"code": 7}})"), false, true,
       "Time to go", "Update", serverError},
      {"no success", Server::http(R"({"error": "nope"})"), false, true, "Time to go", "Update",
       QStringLiteral("nope")},
      {"no error", Server::http(R"({"success": null})"), false, true, "Time to go", "Update", {}},
      {"a list", Server::http("[1, 2]"), false, true, "Time to go", "Update", {}},
      {"no JSON", Server::http("<html>"), false, true, "Time to go"},
      {"no object", Server::http("\"text\""), false, true, "Time to go"},
      {"an empty body", Server::http(""), false, true, "Time to go"}};
  for (const Case& each : cases) {
    check(stored(), Server::http(kExpired));
    const auto checker = stored();
    checker->setError(message("old"));
    checker->setLastCheck({});
    check(checker, each.answer);
    EXPECT_EQ(checker->success(), each.success) << each.what;
    EXPECT_EQ(checker->isExpired(), each.isExpired) << each.what;
    EXPECT_EQ(checker->expiredMessage(), QLatin1String(each.expiredMessage)) << each.what;
    EXPECT_EQ(checker->expiredMessage().isNull(), !each.expiredMessage) << each.what;
    EXPECT_EQ(checker->actionTitle(), QLatin1String(each.actionTitle)) << each.what;
    EXPECT_EQ(checker->actionURL().host(), QStringLiteral("vendor.example")) << each.what;
    EXPECT_EQ(checker->error(), each.error) << each.what;
    EXPECT_TRUE(checker->finished() && checker->lastCheck().isValid()) << each.what;
    EXPECT_EQ(stored()->lastCheck(), checker->lastCheck()) << each.what << ": not stored";
    checker->setSuccess(true);
    check(checker, each.answer);
    EXPECT_TRUE(checker->success()) << each.what << ": a success of this session is forgotten";
    KVPersister().removeObjectForKey(key_);
  }
}

TEST_F(KVVersionCheckerTest, ReportsNetworkFailures) {
  const auto checker = stored();
  check(checker, Server::http("{\"success\": true}").chopped(1));
  EXPECT_EQ(checker->error(), message("Connection closed"));
  EXPECT_FALSE(checker->success());

  QTcpServer closed;
  ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
  const QUrl address(QStringLiteral("http://127.0.0.1:%1").arg(closed.serverPort()));
  closed.close();
  check(checker, address);
  EXPECT_EQ(checker->error(), message("Connection refused"));

  URLSession::shared()->setTimeout(std::chrono::milliseconds(100));
  check(checker, QByteArray());
  EXPECT_EQ(checker->error(), message("the server did not answer in time"));

  check(checker, QUrl());
  EXPECT_EQ(checker->error(), message("no connection")) << "with no server configured";
  EXPECT_EQ(finished_, 4);
  EXPECT_TRUE(stored()->finished());
}

TEST_F(KVVersionCheckerTest, LivesUntilAnswerIsHandled) {
  const Server server({Server::http(kExpired)});
  qputenv("KELVAR_API_SERVER", server.url(QString()).toEncoded());
  std::weak_ptr<KVVersionChecker> watched;
  {
    const auto checker = stored();
    const auto delegate = std::make_shared<KVVersionCheckerDelegate>();
    delegate->checkerDidFinish = [](KVVersionChecker&) { ADD_FAILURE() << "the delegate is gone"; };
    checker->setDelegate(delegate);
    checker->start();
    watched = checker;
  }
  EXPECT_FALSE(watched.expired());
  while (!watched.expired()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
  EXPECT_TRUE(stored()->isExpired());
}

TEST_F(KVVersionCheckerTest, DelegateOperationsAreOptional) {
  delegate_->checkerDidFinish = {};
  const auto checker = stored();
  checker->setDelegate(delegate_);
  checker->start();
  while (!checker->finished()) QCoreApplication::processEvents();
  EXPECT_EQ(checker->error(), message("no connection"));
}

TEST_F(KVVersionCheckerTest, IsStoredEvenIfDelegateThrows) {
  const std::function<void()> throws[] = {[] { throw std::runtime_error("no"); }, [] { throw 5; }};
  for (const auto& each : throws) {
    KVPersister().removeObjectForKey(key_);
    delegate_->checkerDidFinish = [&](KVVersionChecker&) {
      QCoreApplication::quit();
      each();
    };
    check(stored(), Server::http(kExpired));
    EXPECT_TRUE(stored()->isExpired());
  }
}

TEST_F(KVVersionCheckerTest, LogsItsSteps) {
  const LogCapture log;
  check(stored(), Server::http("{\"success\": false, \"error\": 1}"));
  check(stored(), Server::http("no JSON"));
  check(stored(), Server::http("{}"));
  check(stored(), Server::http("{\"success\": true}"));
  const QStringList lines = log.lines();
  for (const char* line : {"KVVersionChecker: checking for update...", "Parse error: (null)",
                           "result: {\"error\":1,\"success\":false}", "result: (null)",
                           "KVVersionChecker: update checked with error 1",
                           "KVVersionChecker: update checked with error (null)",
                           "KVVersionChecker: success checking with update. {\"success\":true}"}) {
    EXPECT_TRUE(lines.contains(QLatin1String(line))) << line;
  }
  const QString all = lines.join(u'\n');
  for (const char* start :
       {"KVVersionChecker: failed checking with update. error: ",
        "KVVersionChecker: persisting key io.kelvarlabs.kelvar.checker with {"}) {
    EXPECT_TRUE(all.contains(QLatin1String(start))) << start;
  }
}

TEST_F(KVVersionCheckerTest, IsAccessibleByNameAndKey) {
  const ClassInfo* const info = ClassInfo::find(QStringLiteral("KVVersionChecker"));
  ASSERT_TRUE(info);
  const auto made = info->create(QStringLiteral("initWithIdentifier:name:"),
                                 {QStringLiteral("a"), QStringLiteral("b")});
  ASSERT_TRUE(made);
  EXPECT_EQ(made->valueForKey(QStringLiteral("name")), QStringLiteral("b"));
  EXPECT_TRUE(made->setValueForKey(true, QStringLiteral("isExpired")));
  EXPECT_EQ(made->valueForKey(QStringLiteral("isExpired")), true);

  const ClassInfo* const store = ClassInfo::find(QStringLiteral("KVPersister"));
  ASSERT_TRUE(store);
  const auto persister = store->create(QStringLiteral("init"));
  store->call(*persister, QStringLiteral("setObject:forKey:"), {7, key_});
  EXPECT_EQ(store->call(*persister, QStringLiteral("objectForKey:"), {key_}), QVariant(7));
  EXPECT_EQ(KVPersister().objectForKey(key_), 7);
  store->call(*persister, QStringLiteral("removeObjectForKey:"), {key_});
  EXPECT_FALSE(KVPersister().objectForKey(key_).isValid());
}

}  // namespace
}  // namespace kelvar
