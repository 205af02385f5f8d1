#include "analytics/TrackerManager.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QRegularExpression>
#include <stdexcept>

#include "analytics/CounterTracker.h"
#include "analytics/DeferableTracker.h"
#include "analytics/ManualRunLoop.h"
#include "analytics/MockedTracker.h"
#include "analytics/SegmentIOTracker.h"
#include "analytics/SegmentServer.h"
#include "platform/LogCapture.h"
#include "runtime/ClassInfo.h"
#include "util/Each.h"

namespace kelvar {
namespace {

const QString kIdentifier = QStringLiteral("io.kelvarlabs.kelvar.tracker");
const QString kEmailKey = QStringLiteral("io.kelvarlabs.tracker.email");
const QString kA = QStringLiteral("a");

/// An in-memory store that counts writes.
struct Store : TrackerPersister {
  void setObject(const QVariant& value, const QString& key) override {
    values[key] = value;
    ++writes;
  }
  QVariant objectForKey(const QString& key) const override { return values.value(key); }
  QVariantMap values;
  int writes = 0;
};

/// Records its calls in a list that several trackers share.
struct Recorder : Tracker {
  explicit Recorder(QStringList* lines, const char* name)
      : lines(lines), name(QLatin1String(name)) {}
  void tell(const QString& what) { lines->append(name + u' ' + what); }
  void setUuid(const QString& uuid) override { tell(QStringLiteral("uuid ") + uuid); }
  void setEmail(const QString& email) override { tell(QStringLiteral("email ") + email); }
  void identifyEmail(const QString& email) override { tell(QStringLiteral("identify ") + email); }
  void aliasId(const QString& id, const QString&) override { tell(QStringLiteral("id ") + id); }
  void aliasFromUUIDTo(const QString& id) override { tell(QStringLiteral("alias ") + id); }
  QStringList* lines;
  const QString name;
};

class TrackerManagerTest : public testing::Test {
 protected:
  std::shared_ptr<TrackerManager> manager(const TrackerList& trackers) {
    return std::make_shared<TrackerManager>(trackers, store_, kIdentifier);
  }
  const std::shared_ptr<Store> store_ = std::make_shared<Store>();
};

TEST_F(TrackerManagerTest, KeepsOneIdentity) {
  const QString uuid = manager({})->uuid();
  static const QRegularExpression kForm(
      QStringLiteral("^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$"));
  EXPECT_TRUE(kForm.match(uuid).hasMatch()) << uuid.toStdString();
  EXPECT_EQ(store_->values, (QVariantMap{{kIdentifier + QStringLiteral(".uuid"), uuid}}));
  EXPECT_EQ(manager({})->uuid(), uuid);
  EXPECT_EQ(store_->writes, 1);
  EXPECT_NE(TrackerManager({}, std::make_shared<Store>(), kIdentifier).uuid(), uuid);
}

TEST_F(TrackerManagerTest, ReadsAndWritesEmailUnderDifferentKeys) {
  const auto first = manager({});
  first->setEmail({});
  EXPECT_FALSE(store_->values.contains(kEmailKey));
  first->setEmail(kA);
  EXPECT_EQ(store_->values[kEmailKey], kA);
  EXPECT_TRUE(manager({})->email().isNull());
  store_->values[kIdentifier + QStringLiteral(".email")] = QStringLiteral("b");
  EXPECT_EQ(manager({})->email(), QStringLiteral("b"));
  EXPECT_EQ(store_->values[kEmailKey], QStringLiteral("b"));
}

TEST_F(TrackerManagerTest, IdentifiesUserToTrackers) {
  store_->values[kIdentifier + QStringLiteral(".uuid")] = QStringLiteral("U");
  QStringList lines;
  const auto one = std::make_shared<Recorder>(&lines, "1");
  const auto two = std::make_shared<Recorder>(&lines, "2");
  const auto told = [&](const char* text) {
    return std::exchange(lines, {}).join(u", ") == QLatin1String(text);
  };
  const auto both = manager({one, two});
  EXPECT_TRUE(told("1 uuid U, 2 uuid U, 1 email , 2 email "));
  both->setUuid(QStringLiteral("V"));
  EXPECT_TRUE(told("1 uuid V, 2 uuid V, 1 email , 2 email "));
  EXPECT_EQ(store_->values[kIdentifier + QStringLiteral(".uuid")], QStringLiteral("U"));
  both->identifyEmail(kA);
  EXPECT_TRUE(told("1 identify a, 2 identify a"));
  EXPECT_TRUE(both->email().isNull());
  both->aliasId(kA, kA);
  EXPECT_TRUE(lines.isEmpty());
  both->aliasFromUUIDTo(kA);
  EXPECT_TRUE(told("1 alias a, 2 alias a"));
}

TEST_F(TrackerManagerTest, ForwardsEventsToImplementers) {
  const auto counter = std::make_shared<CounterTracker>();
  const auto mocked = std::make_shared<MockedTracker>();
  const auto segment = std::make_shared<SegmentIOTracker>(kA);
  segment->setPendingEvents({});
  segment->setIsObtainingLocation(true);  // It shall not ask.
  const auto all = manager({counter, DeferableTracker::deferredTracker(), mocked, segment});
  const auto loop = std::make_shared<ManualRunLoop>();
  all->setTimed(std::make_shared<TimedTracker>(loop));
  all->timed()->setDelegate(all);

  const auto super = std::make_shared<QVariantMap>(QVariantMap{{kA, 1}});
  all->setSuperProperties(super);
  all->addSuperProperties({{QStringLiteral("b"), 2}});
  EXPECT_EQ(segment->superProperties(), super);
  EXPECT_EQ(super->size(), 2);
  EXPECT_EQ(mocked->globalProperties(), (QVariantMap{{kA, 1}}));
  all->track(QStringLiteral("one"), QVariantMap());
  all->track(QStringLiteral("two"), QVariantMap{{kA, 3}});
  EXPECT_EQ(counter->tracksCount(), 2u);
  EXPECT_TRUE(
      counter->events()[0]->isEqual(Event::eventWithName(QStringLiteral("one"), QVariantMap())));
  EXPECT_EQ(mocked->properties(), (QVariantMap{{kA, 3}}));
  EXPECT_EQ(segment->pendingEvents().size(), 2);

  all->timedTrack(QStringLiteral("long"));
  all->event(QStringLiteral("long"), QStringLiteral("n"));
  loop->advance(4);
  EXPECT_EQ(mocked->startedEvent(), QStringLiteral("long"));
  all->timedFinish(QStringLiteral("long"), QVariantMap(), 5);
  EXPECT_EQ(counter->timesFinished(), 0u);
  loop->advance(5);
  EXPECT_EQ(counter->timesStarted(), 1u);
  EXPECT_EQ(counter->timesFinished(), 1u);
  EXPECT_EQ(mocked->name(), QStringLiteral("long"));
  EXPECT_EQ(mocked->sessionLength(), 4);
  EXPECT_EQ(mocked->properties(), (QVariantMap{{kA, 1}, {QStringLiteral("n"), 1.0f}}));
  EXPECT_EQ(segment->pendingEvents().size(), 2) << "timed events are not reported";
}

TEST_F(TrackerManagerTest, ThrowsIfNoTrackerImplements) {
  EXPECT_THROW(manager({})->track(kA, QVariantMap()), UnrecognizedOperation);
  EXPECT_THROW(manager({std::make_shared<CounterTracker>()})->addSuperProperties({}),
               UnrecognizedOperation);
}

TEST_F(TrackerManagerTest, ContainsTrackerExceptions) {
  struct Thrower : Tracker {
    void track(const QString&, const Properties&) override { throw std::invalid_argument("oops"); }
    void identifyEmail(const QString&) override { throw std::runtime_error("no uuid"); }
  };
  QStringList lines;
  const auto counter = std::make_shared<CounterTracker>();
  const auto recorder = std::make_shared<Recorder>(&lines, "1");
  const auto all = manager({std::make_shared<Thrower>(), manager({}), counter, recorder});
  const LogCapture log;
  all->track(kA, QVariantMap());
  EXPECT_EQ(counter->tracksCount(), 1u);
  all->identifyEmail(kA);
  EXPECT_EQ(lines.last(), QStringLiteral("1 identify a"));
  EXPECT_TRUE(log.lines().contains(QStringLiteral("TrackerManager: oops")));
  EXPECT_TRUE(log.lines().contains(QStringLiteral("TrackerManager: no uuid")));
}

TEST_F(TrackerManagerTest, CannotBeItsOwnTracker) {
  const auto counter = std::make_shared<CounterTracker>();
  const auto inner = manager({counter});
  const auto middle = manager({inner, inner});
  const auto outer = manager({middle, inner});
  const std::pair<TrackerList, bool> cases[] = {
      {{inner}, false},           {{counter, middle}, false},
      {{outer}, false},           {{manager({outer}), counter}, false},
      {{counter, counter}, true}, {{}, true}};
  for (const auto& [trackers, isTaken] : cases) {
    inner->setTrackers({counter});
    const LogCapture log;
    inner->setTrackers(trackers);
    EXPECT_EQ(inner->trackers(), isTaken ? trackers : TrackerList{counter});
    EXPECT_EQ(log.lines().size(), isTaken ? 0 : 1);
  }
  inner->setTrackers({counter});
  // Each level contains the one below twice.
  TrackerManagerRef top = inner;
  for (int level = 0; level < 60; ++level) {
    const auto next = manager({});
    next->setTrackers({top, top});
    top = next;
  }
  outer->track(kA, QVariantMap());
  EXPECT_EQ(counter->tracksCount(), 3u);
}

TEST(MockedTrackerTest, AddsSuperProperties) {
  MockedTracker tracker;
  tracker.setSuperProperties(std::make_shared<QVariantMap>(QVariantMap{{kA, 1}}));
  tracker.setSuperProperties(nullptr);
  tracker.setSuperProperties(std::make_shared<QVariantMap>(QVariantMap{{QStringLiteral("b"), 2}}));
  tracker.setStartedEvent(QStringLiteral("long"));
  tracker.setSessionLength(7);
  tracker.track(kA, {});
  EXPECT_EQ(tracker.properties(), (QVariantMap{{kA, 1}, {QStringLiteral("b"), 2}}));
  EXPECT_EQ(tracker.startedEvent(), QStringLiteral("long"));
  EXPECT_EQ(tracker.sessionLength(), 7);
  TimedTracker timed;
  tracker.timedTrackerEventFinished(
      timed, TimedEvent::timedEventWithName(QStringLiteral("long"), QVariantMap{{kA, 3}}, 4));
  EXPECT_EQ(tracker.properties(), (QVariantMap{{kA, 3}, {QStringLiteral("b"), 2}}))
      << "the event's own win";
  EXPECT_EQ(tracker.sessionLength(), 4);
}

TEST(DeferableTrackerTest, NotifiesOfEachSwitch) {
  struct Switch : DeferableTracker {
    void enableStateDidChange(bool enabled) override { states.append(enabled); }
    QList<bool> states;
  };
  const auto tracker = DeferableTracker::deferredTracker<Switch>();
  EXPECT_FALSE(tracker->enabled());
  for (const bool state : {false, true, true}) tracker->setEnabled(state);
  EXPECT_EQ(tracker->states, QList<bool>({false, true, true}));
}

class SharedTrackerManagerTest : public SegmentServer {};

TEST_F(SharedTrackerManagerTest, IsLastOneSet) {
  const TrackerManagerRef first = TrackerManager::sharedInstance();
  EXPECT_EQ(TrackerManager::sharedInstance(), first);
  const auto mine = std::make_shared<TrackerManager>(
      TrackerList{std::make_shared<CounterTracker>()}, kIdentifier);
  mine->setAsSharedInstance();
  mine->setAsSharedInstance();
  EXPECT_EQ(TrackerManager::sharedInstance(), mine);
  const QString key = kIdentifier + QStringLiteral(".uuid");
  EXPECT_EQ(TrackerPersister().objectForKey(key), mine->uuid()) << "kept in the user's settings";
  TrackerPersister().removeObjectForKey(key);
  EXPECT_FALSE(TrackerPersister().objectForKey(key).isValid());
}

TEST_F(SharedTrackerManagerTest, IsAccessibleToScripts) {
  const ClassInfo* const info = ClassInfo::find(QStringLiteral("TrackerManager"));
  ASSERT_TRUE(info);
  const auto make = [](const char* name) {
    return QVariant(QVariant::fromValue<ObjectRef>(
        ClassInfo::find(QLatin1String(name))->create(QStringLiteral("init"))));
  };
  const QVariant counter = make("CounterTracker");
  const auto made = [&](const QVariantList& trackers) {
    return info->create(QStringLiteral("initWithTrackers:identifier:"), {trackers, kIdentifier});
  };
  EXPECT_FALSE(made({counter, make("TrackerPersister")}));
  const ObjectRef manager = made({counter});
  ASSERT_TRUE(manager);
  const auto call = [&](const char* selector, const QVariantList& arguments = {}) {
    return info->call(*manager, QLatin1String(selector), arguments).has_value();
  };
  EXPECT_TRUE(call("setAsSharedInstance"));
  EXPECT_TRUE(call("track:properties:", {kA, QVariantMap{{kA, 1}}}));
  EXPECT_TRUE(call("setSuperProperties:", {QVariantMap{{kA, 1}}}));
  EXPECT_FALSE(call("track:properties:", {kA, 7}));
  EXPECT_TRUE(call("timedTrack:", {kA}));
  EXPECT_TRUE(call("timedFinish:properties:mergeFutureEventsWithinTimeInterval:", {kA, {}, 0}));
  const auto shared = info->callClass(QStringLiteral("sharedInstance"));
  EXPECT_EQ(shared->value<ObjectRef>(), manager);
  EXPECT_EQ(manager->valueForKey(QStringLiteral("identifier")), kIdentifier);
  const auto object = counter.value<ObjectRef>();
  EXPECT_EQ(object->valueForKey(QStringLiteral("tracksCount")), 1);
  EXPECT_EQ(object->valueForKey(QStringLiteral("timesFinished")), 1);
  EXPECT_EQ(valueForKeyPath(object->valueForKey(QStringLiteral("events")), QStringLiteral("name")),
            QVariantList{kA});
}

}  // namespace
}  // namespace kelvar
