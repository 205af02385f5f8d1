#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <functional>

#include "analytics/AnalyticsSettings.h"
#include "platform/LoopbackServer.h"
#include "platform/plist/Json.h"

namespace kelvar {

/// A fixture with a main thread, its own settings, and a server each for events and locations.
class SegmentServer : public testing::Test {
 protected:
  using Server = LoopbackServer;

  void SetUp() override {
    ASSERT_TRUE(dir_.isValid());
    for (const char* proxy : {"http_proxy", "https_proxy", "all_proxy", "DO_NOT_TRACK"}) {
      qunsetenv(proxy);
    }
    qputenv("KELVAR_DEFAULTS", dir_.filePath(QStringLiteral("s.sqlite")).toUtf8());
  }
  void TearDown() override {
    for (const char* name :
         {"KELVAR_DEFAULTS", "KELVAR_ANALYTICS_SERVER", "KELVAR_LOCATION_SERVER", "DO_NOT_TRACK"}) {
      qunsetenv(name);
    }
  }

  static void use(const Server& events, const Server& locations) {
    qputenv("KELVAR_ANALYTICS_SERVER", events.url(QString()).toEncoded());
    qputenv("KELVAR_LOCATION_SERVER", locations.url(QString()).toEncoded());
  }

  /// Runs the event loop until `done`; false if that takes a minute.
  static bool runUntil(const std::function<bool()>& done) {
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
      if (timer.elapsed() > 60'000) return false;
      QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
  }
  /// False if nothing more arrives for a minute.
  static bool runUntilReceived(const Server& server, qsizetype count) {
    qsizetype received = server.requestCount();
    while (received < count) {
      const qsizetype last = received;
      const bool more = runUntil([&] { return (received = server.requestCount()) > last; });
      if (!more) return false;
    }
    return true;
  }

  static QVariantMap bodyOf(const QByteArray& request) {
    return Json::read(request.mid(request.indexOf("\r\n\r\n") + 4)).value().toMap();
  }

  int count_ = 1;
  char name_[5] = "test";
  char* arguments_[2] = {name_, nullptr};
  QCoreApplication application_{count_, arguments_};
  QTemporaryDir dir_;
};

}  // namespace kelvar
