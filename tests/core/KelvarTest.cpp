#include "core/Kelvar.h"

#include <gtest/gtest.h>

#include <QTcpServer>
#include <QTcpSocket>

#include "analytics/CounterTracker.h"
#include "analytics/SegmentIOTracker.h"
#include "analytics/SegmentServer.h"
#include "core/ServerMessages.h"
#include "platform/Bundle.h"
#include "runtime/ClassInfo.h"

namespace kelvar {

/// Each test is a process in which no Kelvar object exists yet.
class KelvarTest : public SegmentServer {
 protected:
  void SetUp() override {
    SegmentServer::SetUp();
    nextProcess();
  }
  void TearDown() override {
    std::make_shared<TrackerManager>(TrackerList(), QString())->setAsSharedInstance();
    qunsetenv("KELVAR_API_SERVER");
    SegmentServer::TearDown();
  }

  static void nextProcess() { Kelvar::activateCount_ = 0; }

  static std::shared_ptr<SegmentIOTracker> client(const Kelvar& kelvar) {
    const TrackerList trackers = kelvar.tracker()->allTrackers();
    EXPECT_EQ(trackers.size(), 1);
    return std::dynamic_pointer_cast<SegmentIOTracker>(trackers.value(0));
  }

  /// Starts and waits for `count` event requests. Returns their paths, followed by the body of the
  /// last one.
  QStringList start(qsizetype count, QVariantMap* last) {
    nextProcess();
    const Server events({Server::http("{}")});
    const Server locations({Server::http(R"({"city": "Berlin", "query": "192.0.2.1"})")});
    use(events, locations);
    const auto kelvar = std::make_shared<Kelvar>();
    EXPECT_TRUE(runUntilReceived(events, count));
    // Superfluous requests would arrive now.
    kelvar->trackForEvent(QStringLiteral("End"), QVariantMap());
    EXPECT_TRUE(runUntilReceived(events, count + 1));
    EXPECT_EQ(locations.requests().size(), 1);
    QStringList paths;
    for (const QByteArray& request : events.requests().first(count)) {
      paths.append(QString::fromLatin1(request.split(' ').value(1)));
    }
    *last = bodyOf(events.wholeRequests().value(count - 1));
    EXPECT_EQ(bodyOf(events.wholeRequests().value(count))[QStringLiteral("event")],
              QStringLiteral("End"));
    return paths;
  }

  const QString emailKey_ = QStringLiteral("io.kelvarlabs.kelvar.email");
  const QString identifiedKey_ = QStringLiteral("io.kelvarlabs.kelvar.identifiedUser");
};

namespace {

QVariantMap pluginProperties() {
  return {{QStringLiteral("Plugin Version"), QStringLiteral("1.0.0")},
          {QStringLiteral("Plugin Build"), QStringLiteral("1")},
          {QStringLiteral("Plugin Environment"), QStringLiteral("production")},
          {QStringLiteral("Plugin Name"), QStringLiteral("Kelvar")}};
}

TEST_F(KelvarTest, FirstInstanceStartsAnalytics) {
  const auto first = std::make_shared<Kelvar>();
  EXPECT_EQ(Kelvar::activateCount(), 1);
  EXPECT_EQ(first->env(), QStringLiteral("production"));
  EXPECT_EQ(first->pluginName(), QStringLiteral("Kelvar"));
  EXPECT_TRUE(first->persister());
  EXPECT_EQ(first->tracker()->identifier(), QStringLiteral("io.kelvarlabs.kelvar.tracker"));
  EXPECT_EQ(TrackerManager::sharedInstance(), first->tracker());
  const auto segment = client(*first);
  ASSERT_TRUE(segment && segment->superProperties());
  EXPECT_EQ(segment->writeKey(), QStringLiteral("Qx4mT8vLr2NcW9pZa6HsK1dYe3UbJ7fG"));
  EXPECT_EQ(*segment->superProperties(), pluginProperties());
  ASSERT_EQ(segment->pendingEvents().size(), 1);
  EXPECT_EQ(segment->pendingEvents()[0][QStringLiteral("event")], QStringLiteral("Started"));
  EXPECT_EQ(segment->pendingEvents()[0][QStringLiteral("properties")], QVariantMap());
}

TEST_F(KelvarTest, LaterInstancesOnlyTakeTracker) {
  const auto first = std::make_shared<Kelvar>();
  const auto tracker = first->tracker();
  const auto second = std::make_shared<Kelvar>();
  EXPECT_EQ(second->tracker(), tracker);
  EXPECT_TRUE(second->env().isNull() && second->pluginName().isNull());
  EXPECT_FALSE(second->persister());
  EXPECT_EQ(client(*second)->pendingEvents().size(), 1) << "no second Started";
  EXPECT_EQ(Kelvar::activateCount(), 2);
}

TEST_F(KelvarTest, ForwardsEventsToTracker) {
  const auto kelvar = std::make_shared<Kelvar>();
  const auto counter = std::make_shared<CounterTracker>();
  kelvar->setTracker(std::make_shared<TrackerManager>(TrackerList{counter}, QString()));
  const QString name = QStringLiteral("Mapped");
  const QVariantMap properties{{QStringLiteral("scale"), 2}};
  EXPECT_EQ(kelvar->trackForEvent(name, properties), name);
  ASSERT_EQ(counter->tracksCount(), 1u);
  EXPECT_EQ(counter->events()[0]->properties(), properties);
  kelvar->setTracker(std::make_shared<TrackerManager>(TrackerList(), QString()));
  EXPECT_EQ(kelvar->trackForEvent(name, properties), name) << "nobody tracks it";
  kelvar->setTracker(nullptr);
  EXPECT_EQ(kelvar->trackForEvent(name, properties), name);
}

TEST_F(KelvarTest, IsAccessibleByNameAsStore) {
  const ClassInfo* const info = ClassInfo::find(QStringLiteral("Kelvar"));
  ASSERT_TRUE(info);
  const auto kelvar = info->create(QStringLiteral("init"));
  ASSERT_TRUE(kelvar);
  const auto call = [&](const char* selector, const QVariantList& arguments) {
    return info->call(*kelvar, QLatin1String(selector), arguments);
  };
  const QString key = QStringLiteral("key");
  call("setObject:forKey:", {5, key});
  EXPECT_EQ(KVPersister().objectForKey(key), 5);
  EXPECT_EQ(call("objectForKey:", {key}), QVariant(5));
  call("removeObjectForKey:", {key});
  EXPECT_FALSE(KVPersister().objectForKey(key).isValid());
  EXPECT_EQ(call("trackForEvent:properties:", {QStringLiteral("a"), QVariantMap()}),
            QVariant(QStringLiteral("a")));
  EXPECT_EQ(kelvar->valueForKeyPath(QStringLiteral("tracker.identifier")),
            QStringLiteral("io.kelvarlabs.kelvar.tracker"));
  EXPECT_TRUE(call("loadServerNotification", {}));
}

TEST_F(KelvarTest, FirstStartLocatesItselfAndSendsStarted) {
  QVariantMap started;
  EXPECT_EQ(start(1, &started), QStringList(QStringLiteral("/v1/track")));
  EXPECT_EQ(started[QStringLiteral("event")], QStringLiteral("Started"));
  EXPECT_EQ(started[QStringLiteral("properties")], pluginProperties());
  EXPECT_EQ(valueForKeyPath(started, QStringLiteral("context.location.city")),
            QStringLiteral("Berlin"));
  EXPECT_EQ(valueForKeyPath(started, QStringLiteral("context.ip")), QStringLiteral("192.0.2.1"));
  EXPECT_FALSE(started.contains(QStringLiteral("userId")));
  const QVariant identity = started[QStringLiteral("anonymousId")];
  EXPECT_EQ(identity.toString().size(), 36);
  EXPECT_EQ(KVPersister().objectForKey(QStringLiteral("io.kelvarlabs.kelvar.tracker.uuid")),
            identity);

  // A document need not name the build that wrote it.
  Bundle::setHostInformation(
      {{QStringLiteral("CFBundleName"), QStringLiteral("Sketch")},
       {QStringLiteral("CFBundleShortVersionString"), QStringLiteral("52.1")},
       {QStringLiteral("CFBundleVersion"), QString()}});
  EXPECT_EQ(start(1, &started), QStringList(QStringLiteral("/v1/track")));
  Bundle::setHostInformation({});
  EXPECT_EQ(started[QStringLiteral("event")], QStringLiteral("Started"));
  EXPECT_EQ(started[QStringLiteral("anonymousId")], identity);
  EXPECT_EQ(valueForKeyPath(started, QStringLiteral("context.app.version")),
            QStringLiteral("52.1"));
}

TEST_F(KelvarTest, AliasesUserOnceAndIdentifiesAtEachStart) {
  const QString email = QStringLiteral("a@user.example");
  KVPersister().setObject(email, emailKey_);
  QVariantMap started;
  const QStringList firstPaths{QStringLiteral("/v1/alias"), QStringLiteral("/v1/identify"),
                               QStringLiteral("/v1/track")};
  // While analytics are off, the user is not recorded as identified.
  const struct {
    const char* server;
    const char* doNotTrack;
  } off[] = {{"", ""}, {"https://events.example", "1"}, {"http://events.example", ""}};
  for (const auto& [server, doNotTrack] : off) {
    nextProcess();
    qputenv("KELVAR_ANALYTICS_SERVER", server);
    qputenv("DO_NOT_TRACK", doNotTrack);
    const auto kelvar = std::make_shared<Kelvar>();
    EXPECT_FALSE(KVPersister().objectForKey(identifiedKey_).isValid()) << server;
    EXPECT_TRUE(runUntil([&] { return client(*kelvar)->pendingEvents().isEmpty(); }));
  }
  EXPECT_EQ(start(3, &started), firstPaths);
  EXPECT_EQ(KVPersister().objectForKey(identifiedKey_), email);
  QVariantMap properties = pluginProperties();
  properties[QStringLiteral("email")] = email;
  EXPECT_EQ(started[QStringLiteral("properties")], properties);
  EXPECT_EQ(started[QStringLiteral("userId")], email);
  EXPECT_EQ(start(2, &started), firstPaths.sliced(1));

  KVPersister().setObject(QStringLiteral(""), emailKey_);
  KVPersister().removeObjectForKey(identifiedKey_);
  EXPECT_EQ(start(1, &started), firstPaths.sliced(2));
  EXPECT_EQ(started[QStringLiteral("properties")], pluginProperties());
  EXPECT_FALSE(KVPersister().objectForKey(identifiedKey_).isValid());
}

TEST_F(KelvarTest, UntrackedUsersStillGetMessages) {
  const Server server({Server::http("{}")});
  use(server, server);
  qputenv("DO_NOT_TRACK", "1");
  KVPersister().setObject(QStringLiteral("a@user.example"), emailKey_);
  const auto kelvar = std::make_shared<Kelvar>();
  qputenv("KELVAR_API_SERVER", server.url(QString()).toEncoded());
  kelvar->loadServerNotification();
  EXPECT_TRUE(runUntilReceived(server, 1));
  ASSERT_EQ(server.requests().size(), 1);
  EXPECT_TRUE(server.requests()[0].startsWith("GET /r/get_messages?"));
}

TEST_F(KelvarTest, OnlyFirstInstanceUpdatesMessages) {
  const Server server({Server::http(R"({"messages": [{"fields": {"ID": 7}}]})")});
  qputenv("KELVAR_API_SERVER", server.url(QString()).toEncoded());
  const QString key = QLatin1String(ServerMessages::kKey);
  for (const qsizetype stored : {1, 0}) {
    KVPersister().removeObjectForKey(key);
    auto kelvar = std::make_shared<Kelvar>();
    const std::weak_ptr<Kelvar> loading = kelvar;
    kelvar->loadServerNotification();
    kelvar.reset();
    EXPECT_TRUE(runUntil([&] { return loading.expired(); }));
    EXPECT_EQ(KVPersister().objectForKey(key).toList().size(), stored);
  }
}

TEST_F(KelvarTest, MergesThroughPersisterSetWhenMessagesArrive) {
  QTcpServer server;  // Of this thread, so that it answers after what is done here.
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  QObject::connect(&server, &QTcpServer::newConnection, [&] {
    server.nextPendingConnection()->write(Server::http(R"({"messages": [{"fields": {"ID": 7}}]})"));
  });
  qputenv("KELVAR_API_SERVER",
          QStringLiteral("http://127.0.0.1:%1").arg(server.serverPort()).toLatin1());
  const QString key = QLatin1String(ServerMessages::kKey);
  const std::pair<KVPersisterRef, qsizetype> cases[] = {{std::make_shared<KVPersister>(), 1},
                                                        {nullptr, 0}};
  for (const auto& [then, stored] : cases) {
    KVPersister().removeObjectForKey(key);
    auto kelvar = std::make_shared<Kelvar>();
    const std::weak_ptr<Kelvar> loading = kelvar;
    kelvar->setPersister(then ? nullptr : std::make_shared<KVPersister>());
    kelvar->loadServerNotification();
    kelvar->setPersister(then);
    kelvar.reset();
    EXPECT_TRUE(runUntil([&] { return loading.expired(); }));
    EXPECT_EQ(KVPersister().objectForKey(key).toList().size(), stored);
  }
}

TEST_F(KelvarTest, LivesUntilMessagesArrive) {
  const Server silent({QByteArray()});
  qputenv("KELVAR_API_SERVER", silent.url(QString()).toEncoded());
  auto kelvar = std::make_shared<Kelvar>();
  const std::weak_ptr<Kelvar> loading = kelvar;
  kelvar->loadServerNotification();
  kelvar.reset();
  EXPECT_TRUE(runUntilReceived(silent, 1));
  EXPECT_FALSE(loading.expired());
}

}  // namespace
}  // namespace kelvar
