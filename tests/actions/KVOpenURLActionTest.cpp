#include "actions/KVOpenURLAction.h"

#include <gtest/gtest.h>

#include "platform/Browser.h"
#include "platform/LogCapture.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

TEST(KVOpenURLActionTest, OpensOnlyWebAndMailUrls) {
  Browser browser({"http", "https", "mailto", "file", "ftp", "javascript"});
  const std::pair<const char*, bool> cases[] = {
      {"http://vendor.example/a?b=c#d", true},
      {"HTTPS://vendor.example/", true},
      {"mailto:help@vendor.example?subject=Hi", true},
      {"mailto:help@vendor.example?subject=Hi&Attach=/etc/passwd", false},
      {"mailto:help@vendor.example?%61ttachment=/etc/passwd", false},
      {"file:///etc/passwd", false},
      {"ftp://vendor.example/", false},
      {"javascript:alert(1)", false},
      {"http:///path", false},
      {"vendor.example", false},
      {"http://vendor.example/a b", false},
      {"http://[vendor", false},
      {"", false}};
  for (const auto& [address, opens] : cases) {
    browser.opened.clear();
    EXPECT_EQ(KVOpenURLAction::openURL(QLatin1String(address))->exec(), opens) << address;
    EXPECT_EQ(browser.opened, opens ? QList<QUrl>{QUrl(QLatin1String(address))} : QList<QUrl>())
        << address;
  }
  EXPECT_FALSE(KVOpenURLAction().exec());
}

TEST(KVOpenURLActionTest, LogsRejectedUrls) {
  const LogCapture log;
  EXPECT_FALSE(KVOpenURLAction::openURL(QStringLiteral("file:///etc/passwd"))->exec());
  EXPECT_EQ(log.lines(),
            QStringList(QStringLiteral("Workspace: file:///etc/passwd is not opened")));
}

TEST(KVOpenURLActionTest, IsActionForScripts) {
  Browser browser({"https"});
  const ClassInfo* const info = ClassInfo::find(QStringLiteral("KVOpenURLAction"));
  ASSERT_TRUE(info);
  const QVariant made =
      *info->callClass(QStringLiteral("openURL:"), {QStringLiteral("https://vendor.example/")});
  const KVActionRef action = *fromVariant<KVActionRef>(made);
  EXPECT_EQ(action->classInfo().call(*action, QStringLiteral("exec")), QVariant(true));
  EXPECT_EQ(browser.opened.size(), 1);
}

}  // namespace
}  // namespace kelvar
