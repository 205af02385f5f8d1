#include "analytics/TimedTracker.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <stdexcept>

#include "analytics/ManualRunLoop.h"
#include "analytics/Tracker.h"
#include "platform/LogCapture.h"
#include "platform/PendingTasks.h"

namespace kelvar {
namespace {

/// Records the calls that it gets.
struct Recorder : TimedTrackerDelegate {
  void timedTrackerEventStarted(TimedTracker&, const QString& name) override {
    lines.append(QStringLiteral("started ") + name);
  }
  void timedTrackerEventFinished(TimedTracker& tracker, const TimedEventRef& event) override {
    lines.append(
        QStringLiteral("finished %1 after %2").arg(event->name()).arg(event->sessionLength()));
    properties = event->properties().value_or(QVariantMap());
    wasStillGoingOn = tracker.timedEvents().contains(event->name());
  }
  QStringList lines;
  QVariantMap properties;
  bool wasStillGoingOn = false;
};

class TimedTrackerTest : public testing::Test {
 protected:
  void SetUp() override { tracker_->setDelegate(recorder_); }

  /// The calls since the last query.
  QStringList told() { return std::exchange(recorder_->lines, {}); }

  const QString a_ = QStringLiteral("a");
  const std::shared_ptr<ManualRunLoop> loop_ = std::make_shared<ManualRunLoop>();
  const TimedTrackerRef tracker_ = std::make_shared<TimedTracker>(loop_);
  const std::shared_ptr<Recorder> recorder_ = std::make_shared<Recorder>();
  const QString started_ = QStringLiteral("started a");
};

TEST_F(TimedTrackerTest, CountsWholeSeconds) {
  const std::tuple<double, double, const char*> cases[] = {{0, 1, "finished a after 1"},
                                                           {0.1, 0.8, "finished a after 0"},
                                                           {0.6, 0.5, "finished a after 1"}};
  for (const auto& [before, length, line] : cases) {
    loop_->advance(before - (loop_->mediaTime() - int(loop_->mediaTime())) + 1);
    tracker_->start(a_);
    loop_->advance(length);
    EXPECT_TRUE(tracker_->track(a_, QVariantMap{{a_, 1}}));
    EXPECT_EQ(told(), QStringList({started_, QLatin1String(line)})) << before;
    EXPECT_EQ(recorder_->properties, (QVariantMap{{a_, 1}}));
    EXPECT_TRUE(recorder_->wasStillGoingOn);
    EXPECT_TRUE(tracker_->timedEvents().isEmpty());
  }
}

TEST_F(TimedTrackerTest, RestartWithinDelayContinuesEvent) {
  const auto finish = [this](const char* key, double delay) {
    tracker_->track(a_, QVariantMap{{QLatin1String(key), 1}}, tracker_->currentTime(), delay);
  };
  tracker_->start(a_);
  loop_->advance(3);
  finish("first", 5);
  loop_->advance(2);
  tracker_->start(a_);
  loop_->advance(4);  // Past the first run's flush.
  EXPECT_EQ(told(), QStringList({started_, started_}));
  finish("second", 0);
  EXPECT_EQ(told(), QStringList(QStringLiteral("finished a after 7")));
  EXPECT_EQ(recorder_->properties.keys(),
            QStringList({QStringLiteral("first"), QStringLiteral("second")}));

  // Finished twice, the event waits for the second delay, and its length counts from the same start
  // again.
  tracker_->start(a_);
  loop_->advance(1);
  finish("first", 5);
  loop_->advance(1);
  finish("second", 9);
  loop_->advance(8);
  EXPECT_EQ(told(), QStringList(started_));
  loop_->advance(1);
  EXPECT_EQ(told(), QStringList(QStringLiteral("finished a after 3")));

  // Too late: two events.
  tracker_->start(a_);
  finish("first", 5);
  loop_->advance(6);
  tracker_->start(a_);
  const QString finished = QStringLiteral("finished a after 0");
  EXPECT_EQ(told(), QStringList({started_, finished, started_}));

  // After an early flush, nothing is reported when the delay ends.
  finish("first", 5);
  tracker_->flushEvent(a_);
  loop_->advance(10);
  EXPECT_EQ(told(), QStringList(finished));
}

TEST_F(TimedTrackerTest, NamesAreIndependent) {
  const QString b = QStringLiteral("b");
  tracker_->start(a_);
  tracker_->start(b);
  tracker_->track(a_, {}, tracker_->currentTime(), 5);
  tracker_->start(b);
  for (int i = 0; i < 3; ++i) tracker_->event(b, a_);
  tracker_->event(b, a_, 0.5);
  tracker_->event(QStringLiteral("unknown"), a_);
  loop_->advance(5);
  EXPECT_EQ(told().last(), QStringLiteral("finished a after 0"));
  EXPECT_EQ(tracker_->timedEvents().keys(), QStringList(b));
  tracker_->track(b, {});
  EXPECT_EQ(recorder_->properties[a_], 3.5f);
}

TEST_F(TimedTrackerTest, EventThatWasNotStartedIsNotFinished) {
  EXPECT_FALSE(tracker_->track(a_, {}, tracker_->currentTime(), 2.5));
  EXPECT_EQ(tracker_->delay(), 2.5);
  loop_->advance(3);
  EXPECT_TRUE(told().isEmpty());
  tracker_->start(a_, tracker_->currentTime() - 60);
  tracker_->start(a_, tracker_->currentTime() - 2);
  tracker_->track(a_, {});
  EXPECT_EQ(told(), QStringList({started_, started_, QStringLiteral("finished a after 2")}));
}

TEST_F(TimedTrackerTest, EventsEndWithoutDelegate) {
  tracker_->setDelegate(std::make_shared<Recorder>());
  tracker_->start(a_);
  tracker_->track(a_, {}, tracker_->currentTime(), 1);
  EXPECT_EQ(tracker_->timedEvents().size(), 1);
  loop_->advance(1);
  EXPECT_TRUE(tracker_->timedEvents().isEmpty());
}

TEST(TrackerTest, IsDelegateOfItsTimedTrackerWhileAlive) {
  struct Loud : Tracker {
    void timedTrackerEventStarted(TimedTracker&, const QString& name) override { started = name; }
    void timedTrackerEventFinished(TimedTracker&, const TimedEventRef& event) override {
      finished = event->name();
    }
    QString started, finished;
  };
  auto tracker = std::make_shared<Loud>();
  const TimedTrackerRef timed = tracker->timed();
  tracker->timedTrack(QStringLiteral("a"));
  tracker->event(QStringLiteral("a"), QStringLiteral("n"));
  EXPECT_EQ(tracker->started, QStringLiteral("a"));
  EXPECT_EQ(timed->timedEvents().first()->properties()->value(QStringLiteral("n")), 1.0f);
  tracker->timedFlush(QStringLiteral("a"));
  EXPECT_EQ(tracker->finished, QStringLiteral("a"));
  EXPECT_TRUE(timed->timedEvents().isEmpty());
  EXPECT_EQ(tracker->shared_from_this().use_count(), 2) << "owned by the test and this call";
  tracker.reset();
  timed->start(QStringLiteral("b"));
  EXPECT_TRUE(timed->delegate().expired());
}

TEST_F(TimedTrackerTest, LivesUntilLastFlush) {
  const auto loop = std::make_shared<ManualRunLoop>();
  const auto recorder = std::make_shared<Recorder>();
  auto timed = std::make_shared<TimedTracker>(loop);
  timed->setDelegate(recorder);
  timed->start(QStringLiteral("a"));
  timed->track(QStringLiteral("a"), {}, timed->currentTime(), 2);
  const std::weak_ptr<TimedTracker> weak = timed;
  timed.reset();
  loop->advance(3);
  EXPECT_EQ(recorder->lines.value(1), QStringLiteral("finished a after 0"));
  EXPECT_TRUE(weak.expired());
}

TEST(RunLoopTest, RunsDueTasksUnlessCanceled) {
  int count = 1;
  char name[] = "test";
  char* arguments[] = {name, nullptr};
  const QCoreApplication application(count, arguments);
  const LogCapture log;
  QStringList done;
  const RunLoopRef loop = RunLoop::current();
  RunLoop::Delayed second;
  const auto first = loop->performAfterDelay(-1, [&] {
    done.append(QStringLiteral("first"));
    throw std::runtime_error("oops");
  });
  second = loop->performAfterDelay(0.001, [&] {
    second.reset();
    done.append(QStringLiteral("second"));
  });
  const int before = PendingTasks::count();
  loop->performAfterDelay(0, [&] { done.append(QStringLiteral("dropped")); });
  EXPECT_EQ(PendingTasks::count(), before) << "what is dropped is not waited for";
  auto never = loop->performAfterDelay(1e300, [&] { done.append(QStringLiteral("late")); });
  const auto last = loop->performAfterDelay(0.02, [] { QCoreApplication::quit(); });
  QCoreApplication::exec();
  EXPECT_EQ(done, QStringList({QStringLiteral("first"), QStringLiteral("second")}));
  EXPECT_EQ(log.lines(), QStringList(QStringLiteral("RunLoop: oops")));
  EXPECT_EQ(PendingTasks::count(), before - 1) << "only what is late is waited for";
  never.reset();
  EXPECT_EQ(PendingTasks::count(), before - 2);
}

}  // namespace
}  // namespace kelvar
