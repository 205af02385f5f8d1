#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <thread>

#include "Panel.h"
#include "core/ServerMessages.h"
#include "platform/Browser.h"
#include "platform/LogCapture.h"
#include "ui/KVViewController.h"

namespace kelvar {
namespace {

QVariantMap record(int64_t id, bool read) {
  return {{text("id"), qlonglong(id)},
          {text("message"), text("Message %1").arg(id)},
          {text("action"), text("")},
          {text("read"), read}};
}

class KVSoftMessageTest : public testing::Test {
 protected:
  void SetUp() override {
    banner_ = KVViewController::initWithNibName(text("KVSoftMessage"));
    banner_->view()->setParent(&panel_.window());
    banner_->view()->resize(300, 10);
    banner_->setDelegate(delegate_);
    panel_.show();
    const auto hear = [this](const char* what) {
      return [this, what](KVViewController& banner, const QVariant& number) {
        heard_.append(text("%1 %2 read %3 opened %4 %5")
                          .arg(text(what), number.toString(), readIds(),
                               QString::number(browser_.opened.size()),
                               text(banner.view()->isVisible() ? "shown" : "hidden")));
      };
    };
    delegate_->controllerDidPressSoftBannerActionButton = hear("action");
    delegate_->controllerDidPressReadMessageButton = hear("close");
    store({record(3, false), record(5, false), record(9, false)});
  }

  void store(const QVariantList& list) { KVPersister().setObject(list, key_); }
  QVariantList stored() { return KVPersister().objectForKey(key_).toList(); }
  QString readIds() {
    QStringList ids;
    for (const QVariant& each : stored()) {
      const QVariantMap message = each.toMap();
      if (message[text("read")].toBool()) ids.append(message[text("id")].toString());
    }
    return ids.join(u'+');
  }

  void show(const QString& message, const char* action = "", int64_t id = 5) {
    banner_->showSoftMessage(message, text(action), id);
    QCoreApplication::processEvents();
  }
  void press(const char* name) {
    QTest::mouseClick(banner_->view()->findChild<QWidget*>(text(name)), Qt::LeftButton);
  }

  const QString key_ = QLatin1String(ServerMessages::kKey);
  QStringList heard_;
  Browser browser_{"https"};
  std::shared_ptr<KVViewControllerDelegate> delegate_ =
      std::make_shared<KVViewControllerDelegate>();
  Panel panel_;
  KVViewControllerRef banner_;
};

TEST_F(KVSoftMessageTest, HeightIsTextPlusTwentyPoints) {
  int layouts = 0;
  delegate_->controllerNeedToUpdateLayout = [&](KVViewController& banner) {
    ++layouts;
    EXPECT_TRUE(layouts > 1 || banner.view()->isHidden()) << "shown after that";
  };
  EXPECT_TRUE(banner_->view()->isHidden());
  const QString line = text("Hello");
  show(line);
  EXPECT_TRUE(banner_->view()->isVisible());
  const QLabel& label = *banner_->softMessageLabel();
  const QFontMetricsF font(label.font());
  const auto expectLines = [&](int count, const char* what) {
    // Lines start at whole points, so each may be a fraction of a point higher.
    EXPECT_NEAR(banner_->view()->height(), count * font.lineSpacing() + 20, 1 + 0.05 * count)
        << what;
  };
  expectLines(1, "one line");

  const double width = label.width() - 10;
  QString word = text("a");
  while (font.horizontalAdvance(word + word) < width * 0.6) word += word;
  word.append(text("bc").repeated(4));
  ASSERT_TRUE(font.horizontalAdvance(word + text(" ") + word) > width);
  // Narrower than the label, but wider than the width that is measured with.
  QString wide = text("i");
  while (font.horizontalAdvance(wide + text(" i")) < width + 6) wide += text(" i");
  ASSERT_GT(font.horizontalAdvance(wide), width + 1);
  const QString long5000 = text("word ").repeated(1000);
  const int perLine =
      int((width + font.horizontalAdvance(u' ')) / font.horizontalAdvance(text("word ")));
  const struct {
    QString message;
    int lines;
  } cases[] = {{word + text(" ") + word + text(" ") + word, 3},
               {wide, 2},
               {text("a\nb\nc"), 3},
               {text(""), 1},
               {QString(), 1},
               {long5000, (1000 + perLine - 1) / perLine},
               {line, 1}};
  for (const auto& [message, lines] : cases) {
    show(message);
    expectLines(lines, qPrintable(message.left(20)));
    EXPECT_EQ(banner_->view()->width(), 300);
    EXPECT_EQ(label.height(), banner_->view()->height() - 10) << "the label fills it";
  }
  EXPECT_EQ(layouts, 8);
  // A word wider than a line is wrapped, not clipped.
  show(text("x").repeated(5000));
  EXPECT_GT(banner_->view()->height(), 50 * font.lineSpacing());
  show(text("a\n").repeated(2000));
  EXPECT_EQ(banner_->view()->height(), 10020) << "the maximum";
}

TEST_F(KVSoftMessageTest, ShowsMessageFromAnyThread) {
  std::thread([this] {
    banner_->showSoftMessage(text("<a href='https://x.example'>x</a>"), text("https://y.example/"),
                             int64_t(1) << 40);
  }).join();
  EXPECT_TRUE(banner_->view()->isHidden());
  EXPECT_FALSE(banner_->messageId().isValid());
  QCoreApplication::processEvents();
  EXPECT_EQ(banner_->softMessageLabel()->text(), u"<a href='https://x.example'>x</a>");
  EXPECT_EQ(banner_->softMessageLabel()->textFormat(), Qt::PlainText);
  EXPECT_EQ(banner_->messageId(), QVariant(qlonglong(1) << 40));
  EXPECT_EQ(banner_->softActionUrlString(), u"https://y.example/");
}

TEST_F(KVSoftMessageTest, ActionMarksAsReadAndOpensUrl) {
  show(text("Hello"), "https://vendor.example/a");
  press("softActionButton");
  EXPECT_EQ(heard_, QStringList(text("action 5 read 5 opened 1 shown")));
  EXPECT_TRUE(banner_->view()->isVisible());
  EXPECT_EQ(stored(), QVariantList({record(3, false), record(5, true), record(9, false)}));
}

TEST_F(KVSoftMessageTest, OpensOnlyUrls) {
  for (const char* url : {"", "file:///etc/passwd", "not a URL"}) {
    show(text("Hello"), url, 3);
    heard_.clear();
    press("softActionButton");
    EXPECT_EQ(heard_, QStringList(text("action 3 read 3 opened 0 shown"))) << url;
  }
}

TEST_F(KVSoftMessageTest, ClosingMarksAsReadAndHides) {
  show(text("Hello"), "https://vendor.example/a", 9);
  press("softCloseButton");
  EXPECT_EQ(heard_, QStringList(text("close 9 read 9 opened 0 shown")));
  EXPECT_TRUE(banner_->view()->isHidden());
  EXPECT_EQ(stored(), QVariantList({record(3, false), record(5, false), record(9, true)}));
}

TEST_F(KVSoftMessageTest, StaysUnreadWithoutDelegateOperation) {
  show(text("Hello"), "https://vendor.example/a");
  *delegate_ = {};
  press("softActionButton");
  press("softCloseButton");
  EXPECT_EQ(readIds(), u"");
  EXPECT_TRUE(browser_.opened.isEmpty());
  EXPECT_TRUE(banner_->view()->isVisible());
}

TEST_F(KVSoftMessageTest, AlwaysWritesList) {
  const auto writes = [&](const QVariant& before, int64_t id) {
    before.isValid() ? KVPersister().setObject(before, key_)
                     : KVPersister().removeObjectForKey(key_);
    banner_->setMessageId(qlonglong(id));
    banner_->setMessageRead();
    return KVPersister().objectForKey(key_);
  };
  EXPECT_EQ(writes({}, 5), QVariant(QVariantList()));
  const QVariantList list{record(3, true), record(5, false)};
  EXPECT_EQ(writes(list, 4), QVariant(list));
}

TEST_F(KVSoftMessageTest, DoesNotMarkMessageWithoutTexts) {
  QVariantMap bare = record(5, false);
  bare.remove(text("action"));
  store({bare});
  show(text("Hello"));
  banner_->setMessageRead();
  const LogCapture log;
  press("softActionButton");
  press("softCloseButton");
  EXPECT_EQ(stored(), QVariantList({bare}));
  EXPECT_TRUE(heard_.isEmpty());
  EXPECT_TRUE(banner_->view()->isVisible());
  EXPECT_EQ(log.lines().size(), 2);
}

}  // namespace
}  // namespace kelvar
