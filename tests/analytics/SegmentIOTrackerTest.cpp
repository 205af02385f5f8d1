#include "analytics/SegmentIOTracker.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <QTcpServer>
#include <stdexcept>

#include "analytics/LastPayload.h"
#include "analytics/SegmentServer.h"
#include "analytics/TrackerManager.h"
#include "platform/LogCapture.h"
#include "platform/URLSession.h"

namespace kelvar {
namespace {

const QString kKey = QStringLiteral("Qx4mT8vLr2NcW9pZa6HsK1dYe3UbJ7fG");
constexpr const char* kPlace =
    R"({"city": "Ulm", "country": "Germany", "lat": 48.4, "lon": 10, "regionName": "BW",
        "query": "192.0.2.1", "isp": "secret"})";

class Segment : public SegmentServer {
 protected:
  static std::shared_ptr<SegmentIOTracker> tracker() {
    const auto tracker = std::make_shared<SegmentIOTracker>(kKey);
    tracker->setUuid(QStringLiteral("U"));
    return tracker;
  }

  static QStringList eventsOf(const Server& server) {
    QStringList names;
    for (const QByteArray& request : server.wholeRequests()) {
      names.append(bodyOf(request)[QStringLiteral("event")].toString());
    }
    return names;
  }
  static QVariant contextOf(const QByteArray& request, const char* key) {
    return bodyOf(request)[QStringLiteral("context")].toMap().value(QLatin1String(key));
  }

  const QString a_ = QStringLiteral("a");
  const QString b_ = QStringLiteral("b");
};

TEST_F(Segment, LooksThePlaceUpOnceAndSendsWhatWaited) {
  const Server events({Server::http("{}")});
  const Server places({Server::http(kPlace)});
  use(events, places);
  const auto segment = tracker();
  const auto super = std::make_shared<QVariantMap>(QVariantMap{{a_, 1}, {b_, 1}});
  segment->track(QStringLiteral("first"), QVariantMap{{b_, 2}});
  const QDateTime tracked = segment->pendingEvents()[0][QStringLiteral("_date")].toDateTime();
  segment->track(QStringLiteral("second"), QVariantMap());
  segment->setSuperProperties(super);
  (*super)[QStringLiteral("late")] = true;
  EXPECT_EQ(segment->pendingEvents().size(), 2);
  ASSERT_TRUE(runUntilReceived(events, 2));
  EXPECT_TRUE(segment->pendingEvents().isEmpty());
  segment->addSuperProperties({{a_, 3}});
  EXPECT_EQ(super->value(a_), 3) << "shared with whoever set them";
  segment->track(QStringLiteral("third"), {});
  ASSERT_TRUE(runUntilReceived(events, 3));

  EXPECT_EQ(places.requests(), QList<QByteArray>{"GET /json/?key=Rk7pWm2QzT9bNc4 HTTP/1.1"});
  EXPECT_EQ(eventsOf(events), QStringList({QStringLiteral("first"), QStringLiteral("second"),
                                           QStringLiteral("third")}));
  const QVariantMap expected[] = {{{a_, 1}, {b_, 2}, {QStringLiteral("late"), true}},
                                  {{a_, 1}, {b_, 1}, {QStringLiteral("late"), true}},
                                  {{a_, 3}, {b_, 1}, {QStringLiteral("late"), true}}};
  const QList<QByteArray> requests = events.wholeRequests();
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(bodyOf(requests[i])[QStringLiteral("properties")].toMap(), expected[i]) << i;
    EXPECT_EQ(contextOf(requests[i], "ip"), QStringLiteral("192.0.2.1"));
    EXPECT_FALSE(requests[i].contains("secret"));
  }
  EXPECT_EQ(bodyOf(requests[0])[QStringLiteral("timestamp")],
            SegmentIOTracker::dateFormatter().stringFromDate(tracked))
      << "when it was tracked, not when it was sent";
}

TEST_F(Segment, WhatComesOfTheLookup) {
  QTcpServer refusing;
  ASSERT_TRUE(refusing.listen(QHostAddress::LocalHost));
  const QByteArray refused = "http://127.0.0.1:" + QByteArray::number(refusing.serverPort());
  refusing.close();
  const struct {
    const char* what;
    QByteArray answer;
    bool isKnown;
  } cases[] = {{"status 500", Server::http(kPlace, "500 Internal Server Error"), true},
               {"no values", Server::http("{}"), true},
               {"garbage", Server::http("<html>"), false},
               {"a list", Server::http("[1]"), false},
               {"an empty body", Server::http(""), false},
               {"half a body", Server::http(kPlace).chopped(20), false},
               {"no word", Server::kHangUp, false},
               {"refused", "", false}};
  for (const auto& [what, answer, isKnown] : cases) {
    const Server events({Server::http("{}")});
    const Server places({answer});
    use(events, places);
    if (answer.isEmpty()) qputenv("KELVAR_LOCATION_SERVER", refused);
    const auto segment = tracker();
    segment->track(QStringLiteral("first"), QVariantMap());
    ASSERT_TRUE(runUntilReceived(events, 1)) << what;
    EXPECT_EQ(contextOf(events.wholeRequests()[0], "location").isValid(), isKnown) << what;
    EXPECT_EQ(segment->context().has_value(), isKnown) << what;
    segment->track(QStringLiteral("second"), QVariantMap());
    EXPECT_EQ(segment->pendingEvents().size(), isKnown ? 0 : 1) << what;
    EXPECT_TRUE(segment->isObtainingLocation()) << "never asked again";
    if (!isKnown) continue;
    ASSERT_TRUE(runUntilReceived(events, 2)) << what;
  }
}

TEST_F(Segment, TenThousandEventsArriveInOrderOnce) {
  constexpr int kCount = 10'000;
  const Server events({Server::http("{}", "200 OK", "keep-alive")});
  const Server places({Server::http(kPlace)});
  use(events, places);
  const auto segment = tracker();
  QStringList names;
  for (int i = 0; i < kCount; ++i) {
    names.append(QString::number(i));
    segment->track(names.last(), QVariantMap{{a_, i}});
  }
  ASSERT_TRUE(runUntilReceived(events, kCount));
  EXPECT_TRUE(segment->pendingEvents().isEmpty());
  EXPECT_EQ(eventsOf(events), names);
  EXPECT_EQ(places.requests().size(), 1);
}

TEST_F(Segment, IsAliveUntilTheLookupIsAnswered) {
  const Server events({Server::http("{}")});
  const Server places({Server::http(kPlace)});
  use(events, places);
  std::weak_ptr<SegmentIOTracker> watched;
  {
    const auto segment = tracker();
    segment->track(a_, QVariantMap());
    watched = segment;
  }
  EXPECT_FALSE(watched.expired());
  EXPECT_TRUE(runUntilReceived(events, 1));
  EXPECT_TRUE(runUntil([&] { return watched.expired(); }));
}

TEST_F(Segment, FailuresAreLoggedAndNothingIsRetried) {
  const struct {
    QByteArray answer;
    QStringList lines;
  } cases[] = {{Server::http("{\"ok\": 1}", "500 Internal Server Error"),
                {QStringLiteral("data {\"ok\": 1}"), QStringLiteral("response 500"),
                 QStringLiteral("error (null)"),
                 QStringLiteral("Segment: response {\"ok\":1} error (null)")}},
               {Server::http("<html>"),
                {QStringLiteral("data <html>"), QStringLiteral("response 200"),
                 QStringLiteral("error (null)"),
                 QStringLiteral("Segment: response (null) error it is not JSON from byte 1 on")}},
               {Server::http("{\"ok\": 1}").chopped(4),
                {QStringLiteral("data {\"ok\""), QStringLiteral("response 200"),
                 QStringLiteral("error Connection closed")}},
               {Server::kHangUp,
                {QStringLiteral("data (null)"), QStringLiteral("response (null)"),
                 QStringLiteral("Segment: response (null) error Connection closed")}}};
  for (const auto& [answer, lines] : cases) {
    const LogCapture log;
    const Server events({answer});
    const Server places({Server::http(kPlace)});
    use(events, places);
    const auto segment = tracker();
    segment->track(QStringLiteral("one"), QVariantMap());
    segment->track(QStringLiteral("two"), QVariantMap());
    ASSERT_TRUE(runUntil([&] {
      return log.lines().filter(QStringLiteral("Segment: response")).size() == 2;
    })) << answer.toStdString();
    EXPECT_EQ(eventsOf(events), QStringList({QStringLiteral("one"), QStringLiteral("two")}));
    for (const QString& line : lines) {
      EXPECT_TRUE(log.lines().contains(line)) << line.toStdString() << " is not in\n"
                                              << log.lines().join(u'\n').toStdString();
    }
  }
}

}  // namespace
}  // namespace kelvar
