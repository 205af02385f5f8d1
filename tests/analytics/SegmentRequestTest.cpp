#include <gtest/gtest.h>

#include <stdexcept>

#include "analytics/SegmentIOTracker.h"
#include "platform/Bundle.h"
#include "platform/SystemInfo.h"

namespace kelvar {
namespace {

const QString kA = QStringLiteral("a");
const QString kKey = QStringLiteral("Qx4mT8vLr2NcW9pZa6HsK1dYe3UbJ7fG");

class SegmentRequestTest : public testing::Test {
 protected:
  void SetUp() override {
    zone_ = qgetenv("TZ");
    qputenv("TZ", "Europe/Berlin");
    tzset();
  }
  void TearDown() override {
    zone_.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone_);
    tzset();
    Bundle::setHostInformation({});
  }

  static QByteArray bodyOf(const Properties& context, const Properties& properties) {
    const QDateTime date(QDate(2017, 3, 9), QTime(13, 5, 31, 207), Qt::UTC);
    return SegmentIOTracker::trackingRequestWithEvent(QStringLiteral("Started"), date, kKey, {},
                                                      QStringLiteral("U"), context, properties)
        .body;
  }

  QByteArray zone_;
};

TEST_F(SegmentRequestTest, MatchesExpectedBytes) {
  Bundle::setHostInformation(
      {{QStringLiteral("CFBundleShortVersionString"), QStringLiteral("52.1")},
       {QStringLiteral("CFBundleVersion"), QStringLiteral("812")},
       {QStringLiteral("CFBundleName"), QStringLiteral("Sketch")}});
  const QVariantMap place{{QStringLiteral("city"), QStringLiteral("Ulm")},
                          {QStringLiteral("lat"), 48.4},
                          {QStringLiteral("lon"), 10.0},
                          {QStringLiteral("isp"), QStringLiteral("not sent")},
                          {QStringLiteral("query"), QStringLiteral("192.0.2.1")}};
  const QVariantMap properties{
      {QStringLiteral("count"), 3.0f}, {kA, 0.5}, {QStringLiteral("on"), true}};
  const QByteArray version =
      Bundle::objectForInfoDictionaryKey(QStringLiteral("CFBundleShortVersionString"))
          .toByteArray();
  const QByteArray common = R"("device":{"manufacturer":"","model":")" +
                            SystemInfo::architecture().toUtf8() + R"(","name":")" +
                            SystemInfo::machineModel().toUtf8() + "\"},";
  const QByteArray rest = R"("mixpanelLibrary":"",)"
                          R"("network":{"bluetooth":"","carrier":"","cellular":"","wifi":""},)"
                          R"("os":{"name":"","version":")" +
                          SystemInfo::operatingSystemVersionString().toUtf8() +
                          R"("},"screen":{"density":0,"height":0,"width":0},)"
                          R"("timezone":"Europe/Berlin"},"event":"Started",)";
  const QByteArray library = R"("library":{"name":"Kelvar","version":")" + version +
                             R"("},"locale":")" + SystemInfo::locale().toUtf8() + "\",";
  const QByteArray date = R"("timestamp":"2017-03-09T14:05:31.207+0100"})";
  EXPECT_EQ(
      bodyOf(place, properties),
      R"({"anonymousId":"U","context":{"app":{"build":"812","name":"Sketch","version":"52.1"},)" +
          common + R"("ip":"192.0.2.1",)" + library +
          R"("location":{"city":"Ulm","country":"","latitude":48.4,"longitude":10,"region":""},)" +
          rest + R"("properties":{"a":0.5,"count":3,"on":true},)" + date);
  Bundle::setHostInformation({});
  const QByteArray none = R"("MSDocument not available")";
  EXPECT_EQ(bodyOf({}, {}), R"({"anonymousId":"U","context":{"app":{"build":)" + none +
                                R"(,"name":)" + none + R"(,"version":)" + none + "}," + common +
                                library + rest + date);
}

TEST_F(SegmentRequestTest, MissingBuildIsSentAsNull) {
  Bundle::setHostInformation(
      {{QStringLiteral("CFBundleShortVersionString"), QStringLiteral("52.1")},
       {QStringLiteral("CFBundleVersion"), QString()},
       {QStringLiteral("CFBundleName"), QStringLiteral("Sketch")}});
  const QByteArray body = bodyOf({}, {});
  EXPECT_TRUE(body.contains(R"("app":{"build":null,"name":"Sketch","version":"52.1"})"))
      << body.constData();
}

TEST_F(SegmentRequestTest, HostWithoutVersionIsAnError) {
  Bundle::setHostInformation({{QStringLiteral("CFBundleName"), QStringLiteral("Sketch")}});
  EXPECT_THROW(bodyOf({}, {}), std::invalid_argument);
}

TEST_F(SegmentRequestTest, DatesAreLocalWithOffset) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"UTC", "2020-07-01T00:00:00.000Z", "2020-07-01T00:00:00.000+0000"},
      {"America/St_Johns", "2020-01-01T00:00:00.050Z", "2019-12-31T20:30:00.050-0330"},
      {"Asia/Kathmandu", "2020-01-01T00:00:00.999Z", "2020-01-01T05:45:00.999+0545"}};
  for (const auto& [zone, date, text] : cases) {
    qputenv("TZ", zone);
    tzset();
    EXPECT_EQ(SegmentIOTracker::dateFormatter().stringFromDate(
                  QDateTime::fromString(QLatin1String(date), Qt::ISODateWithMs)),
              QLatin1String(text));
  }
}

TEST_F(SegmentRequestTest, CredentialsAreBase64OfNameAndPassword) {
  const std::tuple<QString, QString, const char*> cases[] = {
      {kKey, {}, "UXg0bVQ4dkxyMk5jVzlwWmE2SHNLMWRZZTNVYko3Zkc6"},
      {{}, {}, "Og=="},
      {QStringLiteral("ä"), QStringLiteral("b"), "w6Q6Yg=="}};
  for (const auto& [name, password, credential] : cases) {
    EXPECT_EQ(SegmentIOTracker::basicAuthValueForUsername(name, password),
              QLatin1String(credential));
  }
}

TEST_F(SegmentRequestTest, PropertiesMayReplaceEmail) {
  const URLRequest request = SegmentIOTracker::identifyRequestWithEmail(
      kA, kA, kKey, {{QStringLiteral("uuid"), 7}, {QStringLiteral("email"), QStringLiteral("X")}});
  EXPECT_EQ(request.body, R"({"anonymousId":7,"traits":{"email":"X","uuid":7},"userId":"a"})");
  EXPECT_EQ(SegmentIOTracker::bodyForRequest(request).toMap()[QStringLiteral("userId")], kA);
  URLRequest broken = request;
  broken.body = "7";
  EXPECT_FALSE(SegmentIOTracker::bodyForRequest(broken).isValid());
  EXPECT_FALSE(SegmentIOTracker::bodyForRequest({}).isValid());
}

}  // namespace
}  // namespace kelvar
