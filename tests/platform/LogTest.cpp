#include "platform/Log.h"

#include <gtest/gtest.h>

#include "platform/LogCapture.h"

namespace kelvar {
namespace {

TEST(LogTest, FormatsArguments) {
  LogCapture log;
  logLine(u"from %@ to %@", {QStringLiteral("%@"), QStringLiteral("b")});
  logLine(u"%@ and %@", {QStringLiteral("a")});
  logLine(u"%@, %@", {QString(), QStringLiteral("")});
  logLine(u"100 % plain");
  EXPECT_EQ(log.lines(),
            (QStringList{QStringLiteral("from %@ to b"), QStringLiteral("a and (null)"),
                         QStringLiteral("(null), "), QStringLiteral("100 % plain")}));
}

TEST(LogTest, IsSilentByDefault) {
  static bool spoke;
  spoke = false;
  const auto previous = qInstallMessageHandler(
      [](QtMsgType, const QMessageLogContext&, const QString&) { spoke = true; });
  logLine(u"into the void");
  qInstallMessageHandler(previous);
  EXPECT_FALSE(spoke);
}

}  // namespace
}  // namespace kelvar
