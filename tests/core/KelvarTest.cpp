#include "core/Kelvar.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include "analytics/CounterTracker.h"
#include "analytics/SegmentIOTracker.h"
#include "core/ServerMessages.h"
#include "platform/Bundle.h"
#include "platform/Json.h"
#include "platform/LoopbackServer.h"
#include "runtime/ClassInfo.h"

namespace kelvar {

using Server = LoopbackServer;

/// Each test is a process in which no Kelvar was made yet.
class KelvarTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(dir_.isValid());
    for (const char* proxy : {"http_proxy", "https_proxy", "all_proxy"}) qunsetenv(proxy);
    qputenv("KELVAR_DEFAULTS", dir_.filePath(QStringLiteral("s.sqlite")).toUtf8());
    nextProcess();
  }
  void TearDown() override {
    std::make_shared<TrackerManager>(TrackerList(), QString())->setAsSharedInstance();
    for (const char* variable : {"KELVAR_DEFAULTS", "KELVAR_API_SERVER", "KELVAR_ANALYTICS_SERVER",
                                 "KELVAR_LOCATION_SERVER"}) {
      qunsetenv(variable);
    }
  }

  static void nextProcess() { Kelvar::activateCount_ = 0; }

  static void sendTo(const Server& server) {
    qputenv("KELVAR_ANALYTICS_SERVER", server.url(QString()).toEncoded());
    qputenv("KELVAR_LOCATION_SERVER", server.url(QString()).toEncoded());
  }

  static std::shared_ptr<SegmentIOTracker> client(const Kelvar& kelvar) {
    const TrackerList trackers = kelvar.tracker()->allTrackers();
    EXPECT_EQ(trackers.size(), 1);
    return std::dynamic_pointer_cast<SegmentIOTracker>(trackers.value(0));
  }

  int count_ = 1;
  char name_[5] = "test";
  char* arguments_[2] = {name_, nullptr};
  QCoreApplication application_{count_, arguments_};
  QTemporaryDir dir_;
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

TEST_F(KelvarTest, TheFirstStartsAnalytics) {
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

TEST_F(KelvarTest, LaterOnesOnlyTakeTheTracker) {
  const auto first = std::make_shared<Kelvar>();
  const auto tracker = first->tracker();
  const auto second = std::make_shared<Kelvar>();
  EXPECT_EQ(second->tracker(), tracker);
  EXPECT_TRUE(second->env().isNull() && second->pluginName().isNull());
  EXPECT_FALSE(second->persister());
  EXPECT_EQ(client(*second)->pendingEvents().size(), 1) << "no second Started";
  EXPECT_EQ(Kelvar::activateCount(), 2);
}

TEST_F(KelvarTest, EventsGoToTheTracker) {
  const auto kelvar = std::make_shared<Kelvar>();
  const auto counter = std::make_shared<CounterTracker>();
  kelvar->setTracker(std::make_shared<TrackerManager>(TrackerList{counter}, QString()));
  const QString name = QStringLiteral("Mapped");
  const QVariantMap properties{{QStringLiteral("scale"), 2}};
  EXPECT_EQ(kelvar->trackForEvent(name, properties), name);
  ASSERT_EQ(counter->tracksCount(), 1u);
  EXPECT_EQ(counter->events()[0]->properties(), properties);
  kelvar->setTracker(nullptr);
  EXPECT_EQ(kelvar->trackForEvent(name, properties), name);
}

TEST_F(KelvarTest, IsReachedByNameAndIsAStore) {
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

TEST_F(KelvarTest, OnlyTheFirstUpdatesTheMessages) {
  const Server server({Server::http(R"({"messages": [{"fields": {"ID": 7}}]})")});
  qputenv("KELVAR_API_SERVER", server.url(QString()).toEncoded());
  const QString key = QLatin1String(ServerMessages::kKey);
  for (const qsizetype stored : {1, 0}) {
    KVPersister().removeObjectForKey(key);
    std::weak_ptr<Kelvar> loading;
    {
      const auto kelvar = std::make_shared<Kelvar>();
      kelvar->loadServerNotification();
      loading = kelvar;
    }
    EXPECT_FALSE(loading.expired()) << "it lives until the answer was handled";
    while (!loading.expired()) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(KVPersister().objectForKey(key).toList().size(), stored);
  }
}

}  // namespace
}  // namespace kelvar
