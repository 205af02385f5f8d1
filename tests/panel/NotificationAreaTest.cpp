#include "panel/NotificationArea.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

#include "core/ServerMessages.h"
#include "panel/InspectorPanel.h"
#include "panel/visibleChild.h"
#include "platform/Bundle.h"

namespace kelvar::cli {
namespace {

QVariantMap message(int id, const char* text, bool read) {
  return {{QStringLiteral("id"), id},
          {QStringLiteral("message"), QString::fromLatin1(text)},
          {QStringLiteral("action"), QStringLiteral("")},
          {QStringLiteral("read"), read}};
}

/// A panel with its own settings. No server is set, so nothing is sent.
class NotificationAreaTest : public testing::Test {
 protected:
  NotificationAreaTest() {
    qputenv("KELVAR_DEFAULTS", folder_.filePath(QStringLiteral("settings.sqlite")).toUtf8());
  }
  ~NotificationAreaTest() override { qunsetenv("KELVAR_DEFAULTS"); }

  template <class T>
  T* shown(const char* name) {
    return visibleChild<T>(panel_, name);
  }

  bool bannerReads(const char* text) {
    return QTest::qWaitFor(
        [&] {
          const auto* const label = shown<QLabel>("softMessageLabel");
          return label && label->text() == QLatin1String(text);
        },
        kMaxWait);
  }

  static QVariantList stored() {
    return KVPersister().objectForKey(QLatin1String(ServerMessages::kKey)).toList();
  }

  QTemporaryDir folder_;
  PanelModel model_;
  InspectorPanel panel_{&model_};
};

TEST_F(NotificationAreaTest, ShowsUnreadMessagesInTurn) {
  KVPersister().setObject(QVariantList{message(3, "Old", true), message(5, "First", false),
                                       message(9, "Second", false)},
                          QLatin1String(ServerMessages::kKey));
  NotificationArea area(&panel_);
  panel_.resize(320, 500);
  panel_.show();
  area.start();
  ASSERT_TRUE(bannerReads("First"));
  QTest::mouseClick(shown<QAbstractButton>("softCloseButton"), Qt::LeftButton);
  ASSERT_TRUE(bannerReads("Second"));
  EXPECT_EQ(stored()[1].toMap().value(QStringLiteral("read")), true);
  EXPECT_EQ(stored()[2].toMap().value(QStringLiteral("read")), false);
  QTest::mouseClick(shown<QAbstractButton>("softCloseButton"), Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !shown<QLabel>("softMessageLabel"); }, kMaxWait));
}

TEST_F(NotificationAreaTest, AdaptsBannerHeightToWidth) {
  KVPersister().setObject(
      QVariantList{message(1,
                           "A text that is long enough for several lines in a narrow panel, and "
                           "for fewer of them in a wide one.",
                           false)},
      QLatin1String(ServerMessages::kKey));
  NotificationArea area(&panel_);
  panel_.resize(320, 500);
  panel_.show();
  area.start();
  ASSERT_TRUE(QTest::qWaitFor([&] { return shown<QLabel>("softMessageLabel"); }, kMaxWait));
  QTest::qWait(50);
  const int narrow = shown<QLabel>("softMessageLabel")->height();
  panel_.resize(900, 500);
  EXPECT_TRUE(QTest::qWaitFor([&] { return shown<QLabel>("softMessageLabel")->height() < narrow; },
                              kMaxWait));
}

TEST_F(NotificationAreaTest, LongMessageDoesNotResizeWindow) {
  const QString text = QStringLiteral("word ").repeated(1000);
  KVPersister().setObject(QVariantList{message(1, text.toLatin1(), false)},
                          QLatin1String(ServerMessages::kKey));
  NotificationArea area(&panel_);
  panel_.resize(320, 500);
  panel_.show();
  area.start();
  ASSERT_TRUE(bannerReads(text.toLatin1()));
  const QLabel& label = *shown<QLabel>("softMessageLabel");
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return label.height() >= label.heightForWidth(label.width()) - 1; }, kMaxWait))
      << "the whole text is visible";
  EXPECT_LT(panel_.minimumSizeHint().height(), 300);
  EXPECT_EQ(panel_.height(), 500);
}

TEST_F(NotificationAreaTest, DisablesActionsWithoutUrl) {
  const auto offers = [&](const char* name) {
    const auto* const button = shown<QAbstractButton>(name);
    return button && button->isEnabled();
  };
  QVariantMap withUrl = message(2, "With a URL", false);
  withUrl[QStringLiteral("action")] = QStringLiteral("https://vendor.example/");
  KVPersister().setObject(QVariantList{message(1, "Without a URL", false), withUrl},
                          QLatin1String(ServerMessages::kKey));
  for (const bool hasSite : {false, true}) {
    if (hasSite) qputenv("KELVAR_WEB_SITE", "127.0.0.1:9");
    InspectorPanel panel(&model_);
    const NotificationArea area(&panel);
    for (const char* link : {"homepageButton", "feedbackButton", "supportButton", "storeButton"}) {
      const auto* const button = panel.findChild<QAbstractButton*>(QLatin1String(link));
      EXPECT_EQ(button->isEnabled(), hasSite) << link;
      EXPECT_EQ(button->toolTip().contains(QStringLiteral("No website")), !hasSite) << link;
    }
  }
  qunsetenv("KELVAR_WEB_SITE");
  NotificationArea area(&panel_);
  panel_.resize(320, 500);
  panel_.show();
  area.start();
  ASSERT_TRUE(bannerReads("Without a URL"));
  EXPECT_FALSE(offers("softActionButton"));
  QTest::mouseClick(shown<QAbstractButton>("softCloseButton"), Qt::LeftButton);
  ASSERT_TRUE(bannerReads("With a URL"));
  EXPECT_TRUE(offers("softActionButton"));
}

TEST_F(NotificationAreaTest, ShowsExpiredVersion) {
  const auto information = [](const char* key) {
    return Bundle::objectForInfoDictionaryKey(QLatin1String(key)).toString();
  };
  const auto checker = std::make_shared<KVVersionChecker>(
      information("CFBundleIdentifier"), information("CFBundleShortVersionString"));
  checker->setIsExpired(true);
  checker->setExpiredMessage(QStringLiteral("Too old"));
  checker->setActionTitle(QStringLiteral("Get it"));
  checker->persist();
  NotificationArea area(&panel_);
  panel_.resize(400, 500);
  panel_.show();
  area.start();
  ASSERT_TRUE(shown<QLabel>("messageLabel"));
  EXPECT_EQ(shown<QLabel>("messageLabel")->text(), QStringLiteral("Too old"));
  EXPECT_EQ(shown<QAbstractButton>("actionButton")->text(), QStringLiteral("Get it"));
}

}  // namespace
}  // namespace kelvar::cli
