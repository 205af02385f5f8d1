#include "app/panel/VendorNews.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

#include "app/panel/PanelColumn.h"
#include "app/panel/visibleChild.h"
#include "core/ServerMessages.h"
#include "platform/Bundle.h"

namespace kelvar::app {
namespace {

QVariantMap message(int id, const char* text, bool read) {
  return {{QStringLiteral("id"), id},
          {QStringLiteral("message"), QString::fromLatin1(text)},
          {QStringLiteral("action"), QStringLiteral("")},
          {QStringLiteral("read"), read}};
}

/// A column with settings of its own; no server is set, so that nothing is sent.
class News : public testing::Test {
 protected:
  News() {
    qputenv("KELVAR_DEFAULTS", folder_.filePath(QStringLiteral("settings.sqlite")).toUtf8());
  }
  ~News() override { qunsetenv("KELVAR_DEFAULTS"); }

  template <class T>
  T* shown(const char* name) {
    return visibleChild<T>(column_, name);
  }

  bool bannerReads(const char* text) {
    return QTest::qWaitFor(
        [&] {
          const auto* const label = shown<QLabel>("softMessageLabel");
          return label && label->text() == QLatin1String(text);
        },
        kLongest);
  }

  static QVariantList stored() {
    return KVPersister().objectForKey(QLatin1String(ServerMessages::kKey)).toList();
  }

  QTemporaryDir folder_;
  PanelModel model_;
  PanelColumn column_{&model_};
};

TEST_F(News, ShowsOneUnreadMessageAfterTheOther) {
  KVPersister().setObject(QVariantList{message(3, "Old", true), message(5, "First", false),
                                       message(9, "Second", false)},
                          QLatin1String(ServerMessages::kKey));
  VendorNews news(&column_);
  column_.resize(320, 500);
  column_.show();
  news.start();
  ASSERT_TRUE(bannerReads("First"));
  QTest::mouseClick(shown<QAbstractButton>("softCloseButton"), Qt::LeftButton);
  ASSERT_TRUE(bannerReads("Second"));
  EXPECT_EQ(stored()[1].toMap().value(QStringLiteral("read")), true);
  EXPECT_EQ(stored()[2].toMap().value(QStringLiteral("read")), false);
  QTest::mouseClick(shown<QAbstractButton>("softCloseButton"), Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !shown<QLabel>("softMessageLabel"); }, kLongest));
}

TEST_F(News, MeasuresTheBannerAtTheWidthOfThePanel) {
  KVPersister().setObject(
      QVariantList{message(1,
                           "A text that is long enough for several lines in a narrow panel, and "
                           "for fewer of them in a wide one.",
                           false)},
      QLatin1String(ServerMessages::kKey));
  VendorNews news(&column_);
  column_.resize(320, 500);
  column_.show();
  news.start();
  ASSERT_TRUE(QTest::qWaitFor([&] { return shown<QLabel>("softMessageLabel"); }, kLongest));
  QTest::qWait(50);
  const int narrow = shown<QLabel>("softMessageLabel")->height();
  column_.resize(900, 500);
  EXPECT_TRUE(QTest::qWaitFor([&] { return shown<QLabel>("softMessageLabel")->height() < narrow; },
                              kLongest));
}

TEST_F(News, AVeryLongMessageLeavesTheWindowItsSize) {
  const QString text = QStringLiteral("word ").repeated(1000);
  KVPersister().setObject(QVariantList{message(1, text.toLatin1(), false)},
                          QLatin1String(ServerMessages::kKey));
  VendorNews news(&column_);
  column_.resize(320, 500);
  column_.show();
  news.start();
  ASSERT_TRUE(bannerReads(text.toLatin1()));
  const QLabel& label = *shown<QLabel>("softMessageLabel");
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return label.height() >= label.heightForWidth(label.width()) - 1; }, kLongest))
      << "all of it can be read";
  EXPECT_LT(column_.minimumSizeHint().height(), 300);
  EXPECT_EQ(column_.height(), 500);
}

TEST_F(News, OffersOnlyWhatOpensSomething) {
  const auto offers = [&](const char* name) {
    const auto* const button = shown<QAbstractButton>(name);
    return button && button->isEnabled();
  };
  QVariantMap withAddress = message(2, "With an address", false);
  withAddress[QStringLiteral("action")] = QStringLiteral("https://vendor.example/");
  KVPersister().setObject(QVariantList{message(1, "Without one", false), withAddress},
                          QLatin1String(ServerMessages::kKey));
  for (const bool hasSite : {false, true}) {
    if (hasSite) qputenv("KELVAR_WEB_SITE", "127.0.0.1:9");
    PanelColumn column(&model_);
    const VendorNews news(&column);
    for (const char* link : {"homepageButton", "feedbackButton", "supportButton", "storeButton"}) {
      const auto* const button = column.findChild<QAbstractButton*>(QLatin1String(link));
      EXPECT_EQ(button->isEnabled(), hasSite) << link;
      EXPECT_EQ(button->toolTip().contains(QStringLiteral("No web site")), !hasSite) << link;
    }
  }
  qunsetenv("KELVAR_WEB_SITE");
  VendorNews news(&column_);
  column_.resize(320, 500);
  column_.show();
  news.start();
  ASSERT_TRUE(bannerReads("Without one"));
  EXPECT_FALSE(offers("softActionButton"));
  QTest::mouseClick(shown<QAbstractButton>("softCloseButton"), Qt::LeftButton);
  ASSERT_TRUE(bannerReads("With an address"));
  EXPECT_TRUE(offers("softActionButton"));
}

TEST_F(News, TellsOfANewVersion) {
  const auto information = [](const char* key) {
    return Bundle::objectForInfoDictionaryKey(QLatin1String(key)).toString();
  };
  const auto checker = std::make_shared<KVVersionChecker>(
      information("CFBundleIdentifier"), information("CFBundleShortVersionString"));
  checker->setIsExpired(true);
  checker->setExpiredMessage(QStringLiteral("Too old"));
  checker->setActionTitle(QStringLiteral("Get it"));
  checker->persist();
  VendorNews news(&column_);
  column_.resize(400, 500);
  column_.show();
  news.start();
  ASSERT_TRUE(shown<QLabel>("messageLabel"));
  EXPECT_EQ(shown<QLabel>("messageLabel")->text(), QStringLiteral("Too old"));
  EXPECT_EQ(shown<QAbstractButton>("actionButton")->text(), QStringLiteral("Get it"));
}

}  // namespace
}  // namespace kelvar::app
