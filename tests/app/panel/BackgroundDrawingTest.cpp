#include "app/panel/BackgroundDrawing.h"

#include <gtest/gtest.h>

#include <QTest>
#include <atomic>
#include <thread>

#include "app/panel/visibleChild.h"

namespace kelvar::app {
namespace {

/// Draws the arrangement's photo "endless" until it is stopped, anything else at once.
class EndlessMockup : public Mockup {
 public:
  explicit EndlessMockup(bool canChangeShapes) : canChangeShapes_(canChangeShapes) {}

  Arrangement arrangement() const override { return {}; }
  bool canChangeShapes() const override { return canChangeShapes_; }
  void refresh(const Arrangement::Design&) override {}
  bool save(const Arrangement&, const QString&, QString*) override { return false; }

  std::atomic<bool> isDrawing = false;
  /// Lets a drawing end as if it were done.
  std::atomic<bool> isDone = false;

 private:
  Drawing makeDrawing(const Arrangement& arrangement, Purpose,
                      const std::stop_token& stop) override {
    isDrawing = true;
    while (arrangement.photo == u"endless" && !stop.stop_requested() && !isDone) {
      std::this_thread::yield();
    }
    return {};
  }
  ImageRef makeDesignPicture(const Arrangement::Design&, int, QString*,
                             const std::stop_token&) override {
    return nullptr;
  }

  bool canChangeShapes_;
};

Arrangement of(const char* photo) {
  Arrangement arrangement;
  arrangement.photo = QString::fromLatin1(photo);
  return arrangement;
}

class Background : public testing::Test {
 protected:
  void SetUp() override {
    drawing_.didDraw = [this](const BackgroundDrawing::Result& result) {
      drawn_.append(result.arrangement.photo);
    };
  }

  bool wait(const std::function<bool()>& until) { return QTest::qWaitFor(until, kLongest); }

  /// Its first drawing is under way.
  std::shared_ptr<EndlessMockup> drawingMockup(bool canChangeShapes) {
    auto mockup = std::make_shared<EndlessMockup>(canChangeShapes);
    drawing_.draw(mockup, of("endless"));
    EXPECT_TRUE(wait([&] { return mockup->isDrawing.load(); }));
    return mockup;
  }

  QStringList drawn_;
  BackgroundDrawing drawing_;
};

TEST_F(Background, StopsWhatIsNoLongerWanted) {
  const auto document = drawingMockup(false);
  drawing_.draw(document, of("next"));
  ASSERT_TRUE(wait([&] { return !drawing_.isBusy(); }));
  EXPECT_EQ(drawn_, QStringList({QStringLiteral("next")}));

  const auto photo = drawingMockup(true);
  drawing_.draw(std::make_shared<EndlessMockup>(true), of("another"));
  ASSERT_TRUE(wait([&] { return !drawing_.isBusy(); }));
  EXPECT_EQ(drawn_.mid(1), QStringList({QStringLiteral("another")}));
}

TEST_F(Background, FinishesWhatMovesUnderTheHand) {
  const auto photo = drawingMockup(true);
  for (const char* step : {"left out", "last"}) {
    drawing_.draw(photo, of(step));
  }
  photo->isDone = true;
  ASSERT_TRUE(wait([&] { return !drawing_.isBusy(); }));
  EXPECT_EQ(drawn_, QStringList({QStringLiteral("endless"), QStringLiteral("last")}));
}

TEST_F(Background, GivesUpAtTheEnd) {
  const auto photo = drawingMockup(true);
  int ran = 0;
  drawing_.run([&] { return ++ran; }, [](int) {});
  EXPECT_TRUE(drawing_.stop(kLongest));
  EXPECT_EQ(ran, 0) << "what waited is dropped";

  BackgroundDrawing stuck;
  std::atomic<bool> isOver = false;
  stuck.run(
      [&] {
        while (!isOver) std::this_thread::yield();
        return 0;
      },
      [](int) {});
  EXPECT_FALSE(stuck.stop(1));
  isOver = true;
}

}  // namespace
}  // namespace kelvar::app
