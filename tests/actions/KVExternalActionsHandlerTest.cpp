#include "actions/KVExternalActionsHandler.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QUrlQuery>

#include "analytics/CounterTracker.h"
#include "analytics/TrackerManager.h"
#include "platform/Browser.h"
#include "platform/Bundle.h"
#include "platform/LogCapture.h"
#include "platform/SystemInfo.h"
#include "platform/store/UserDefaults.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

class KVExternalActionsHandlerTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(dir_.isValid());
    qputenv("KELVAR_DEFAULTS", dir_.filePath(QStringLiteral("s.sqlite")).toUtf8());
    qputenv("KELVAR_WEB_SITE", "vendor.example/");
    share({counter_});
  }
  void TearDown() override {
    share({});
    qunsetenv("KELVAR_WEB_SITE");
    qunsetenv("KELVAR_DEFAULTS");
    Bundle::setHostInformation({});
  }

  static void share(const TrackerList& trackers) {
    std::make_shared<TrackerManager>(trackers, QStringLiteral("test"))->setAsSharedInstance();
  }

  /// Presses as a script would.
  void press(const char* button) {
    const ClassInfo* const info = ClassInfo::find(QStringLiteral("KVExternalActionsHandler"));
    ASSERT_TRUE(info);
    const auto handler = info->create(QStringLiteral("init"));
    EXPECT_TRUE(info->call(*handler, QLatin1String(button) + u':', {QVariant()})) << button;
  }

  QTemporaryDir dir_;
  Browser browser_{"http", "https"};
  std::shared_ptr<CounterTracker> counter_ = std::make_shared<CounterTracker>();
};

TEST_F(KVExternalActionsHandlerTest, ButtonsLogTrackAndOpen) {
  const struct {
    const char* button;
    const char* event;
    const char* page;
  } cases[] = {{"homepageButtonDidPress", "Clicked HomepageButton", "/kelvar/"},
               {"feedbackForumButtonDidPress", "Clicked FeedbackButton", "/kelvar/feedback"},
               {"supportButtonDidPress", "Clicked SupportButton", "/kelvar/support"},
               {"visitStoreButtonDidPress", "Clicked VisitStoreButton", "/kelvar/pro"}};
  for (const auto& [button, event, page] : cases) {
    const LogCapture log;
    press(button);
    EXPECT_EQ(log.lines(), QStringList(QLatin1String(button)));
    ASSERT_FALSE(counter_->events().isEmpty() || browser_.opened.isEmpty());
    EXPECT_EQ(counter_->events().last()->name(), QLatin1String(event));
    EXPECT_TRUE(counter_->events().last()->properties().value_or(QVariantMap()).isEmpty());
    const QUrl url = browser_.opened.last();
    EXPECT_EQ(url.adjusted(QUrl::RemoveQuery),
              QUrl(QStringLiteral("http://vendor.example") + QLatin1String(page)));
    EXPECT_TRUE(url.hasQuery());
  }
  EXPECT_EQ(counter_->tracksCount(), std::size(cases));
  EXPECT_EQ(browser_.opened.size(), qsizetype(std::size(cases)));
}

TEST_F(KVExternalActionsHandlerTest, SiteIsHostOrUrl) {
  const std::pair<const char*, const char*> cases[] = {
      {"vendor.example:8080", "http://vendor.example:8080/kelvar/support"},
      {"http://vendor.example", "http://vendor.example/kelvar/support"},
      {"https://vendor.example/", "https://vendor.example/kelvar/support"},
      {"https://vendor.example/shop//", "https://vendor.example/shop/kelvar/support"}};
  for (const auto& [site, page] : cases) {
    qputenv("KELVAR_WEB_SITE", site);
    press("supportButtonDidPress");
    ASSERT_FALSE(browser_.opened.isEmpty());
    EXPECT_EQ(browser_.opened.takeLast().adjusted(QUrl::RemoveQuery), QUrl(QLatin1String(page)));
  }
}

TEST_F(KVExternalActionsHandlerTest, WorksWithoutTrackerOrSite) {
  share({});
  press("supportButtonDidPress");
  EXPECT_EQ(browser_.opened.size(), 1);
  qunsetenv("KELVAR_WEB_SITE");
  press("supportButtonDidPress");
  EXPECT_EQ(browser_.opened.size(), 1);
}

TEST_F(KVExternalActionsHandlerTest, UrlsDescribeSetup) {
  Bundle::setHostInformation(
      {{QStringLiteral("CFBundleShortVersionString"), QStringLiteral("52.1")},
       {QStringLiteral("CFBundleVersion"), QStringLiteral("8&2=#%1")}});
  UserDefaults::standard().setObject(QStringLiteral("a+b@user.example"),
                                     QStringLiteral("io.kelvarlabs.kelvar.email"));
  const QUrl url = KVExternalActionsHandler().urlWithPath(
      QStringLiteral("http://vendor.example/kelvar/support?old=1"));
  EXPECT_EQ(url.path(), QStringLiteral("/kelvar/support"));
  const QByteArray system =
      QUrl::toPercentEncoding(SystemInfo::operatingSystemVersionString(), "!$&'*+,/:;=?@");
  EXPECT_TRUE(system.startsWith("Version%20") && system.endsWith("%29")) << system.constData();
  EXPECT_EQ(url.query(QUrl::FullyEncoded).toLatin1(),
            "code=kelvar&osVersion=" + system +
                "&sketchVersion=52.1&sketchBuild=8&2=%23%251&pluginName=Kelvar&pluginVersion=1.0.0"
                "&pluginBuild=1&pluginEnv=production&email=a+b@user.example");
}

TEST_F(KVExternalActionsHandlerTest, UnknownValuesAreNull) {
  const KVExternalActionsHandler handler;
  const QString key = QStringLiteral("io.kelvarlabs.kelvar.email");
  for (const QVariant& email : {QVariant(), QVariant(QStringLiteral("")), QVariant(5)}) {
    UserDefaults::standard().setObject(email, key);
    const QUrl url = handler.urlWithPath(QStringLiteral("http://vendor.example/"));
    EXPECT_EQ(QUrlQuery(url).queryItems().size(), 9);
    EXPECT_TRUE(url.toEncoded().endsWith("&email=%28null%29")) << url.toEncoded().constData();
    EXPECT_TRUE(url.toEncoded().contains("&sketchBuild=%28null%29&"));
  }
  for (const QString& path : {QString(), QStringLiteral(""), QStringLiteral("http://[vendor/")}) {
    EXPECT_TRUE(handler.urlWithPath(path).isEmpty()) << path.toStdString();
  }
}

}  // namespace
}  // namespace kelvar
